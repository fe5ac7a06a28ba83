; The Windows installer of Lumbra, for the current user and without administrator rights.
; scripts/package-windows.sh runs it once per architecture:
;   makensis -INPUTCHARSET UTF8 -WX -DVERSION=0.1.0 -DARCH=x64|x86 -DSTAGE=folder -DOUTFILE=x.exe
;            -DICON=lumbra.ico lumbra.nsi
; STAGE holds lumbra.exe, lumbractl.exe, Lumbra.par and LEIA-ME.txt as the zip ships them.
;
; The program reads Lumbra.par from its own folder and "Configuração" edits it there, so the
; folder is the user's own ($LOCALAPPDATA\Programs). Lumbra.par is the technician's file, kept
; like a Debian conffile: the sample that was shipped stays beside it as Lumbra-exemplo.par, and an
; upgrade replaces Lumbra.par only while it is byte-identical to that sample; uninstalling removes
; it only then too.

Unicode true
!if ${ARCH} == x64
  ; A 64-bit installer: Windows itself will not start it on 32-bit Windows.
  Target amd64-unicode
!else if ${ARCH} != x86
  !error "ARCH is x64 or x86"
!endif

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include x64.nsh

!define UNINST_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Lumbra"
!define UNINSTALLER "desinstalar.exe"
!define SETTINGS_LINK "$SMPROGRAMS\Lumbra - Configuração (Lumbra.par).lnk"

Name "Lumbra"
OutFile "${OUTFILE}"
InstallDir "$LOCALAPPDATA\Programs\Lumbra"
InstallDirRegKey HKCU "${UNINST_KEY}" "InstallLocation"
RequestExecutionLevel user
SetCompressor /SOLID lzma
BrandingText "Lumbra ${VERSION}"

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=2070 "ProductName" "Lumbra"
VIAddVersionKey /LANG=2070 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=2070 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=2070 "FileDescription" "Instalação do Lumbra (${ARCH})"
VIAddVersionKey /LANG=2070 "CompanyName" "The Lumbra developers"
VIAddVersionKey /LANG=2070 "LegalCopyright" "2026 The Lumbra developers (Expat)"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\lumbra.exe"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\LEIA-ME.txt"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Portuguese"

; $R2 = 1 when the files $R0 and $R1 hold the same bytes, else 0 (also when one cannot be read).
; Parameter files are a few kilobytes: a byte loop is enough.
!macro SameBytesFunction prefix
  Function ${prefix}SameBytes
    StrCpy $R2 0
    ClearErrors
    FileOpen $0 $R0 r
    IfErrors done
    FileOpen $1 $R1 r
    IfErrors close_first
    next:
      ClearErrors
      FileReadByte $0 $2
      IfErrors first_ended
      FileReadByte $1 $3
      IfErrors close_both
      StrCmp $2 $3 next close_both
    first_ended:
      ClearErrors
      FileReadByte $1 $3
      IfErrors 0 close_both
      StrCpy $R2 1
    close_both:
      FileClose $1
    close_first:
      FileClose $0
    done:
  FunctionEnd
!macroend
!insertmacro SameBytesFunction ""
!insertmacro SameBytesFunction "un."

!if ${ARCH} == x64
  Function .onInit
    ${IfNot} ${RunningX64}
      MessageBox MB_ICONSTOP "Este instalador é para o Windows de 64 bits. Neste Windows de 32 bits, use lumbra-${VERSION}-setup-x86.exe." /SD IDOK
      Abort
    ${EndIf}
  FunctionEnd
!endif

Section "Lumbra"
  SetOutPath "$INSTDIR"
  File "${STAGE}\lumbra.exe"
  File "${STAGE}\lumbractl.exe"
  File "${STAGE}\LEIA-ME.txt"

  ; Lumbra.par: new, or still the sample an earlier installer shipped, takes this sample;
  ; anything else is the technician's and stays.
  StrCpy $R2 1
  ${If} ${FileExists} "$INSTDIR\Lumbra.par"
    StrCpy $R0 "$INSTDIR\Lumbra.par"
    StrCpy $R1 "$INSTDIR\Lumbra-exemplo.par"
    Call SameBytes
  ${EndIf}
  ${If} $R2 == 1
    File "${STAGE}\Lumbra.par"
  ${Else}
    DetailPrint "Lumbra.par foi alterado e fica como está; o novo exemplo é Lumbra-exemplo.par."
  ${EndIf}
  File "/oname=Lumbra-exemplo.par" "${STAGE}\Lumbra.par"

  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  CreateShortCut "$SMPROGRAMS\Lumbra.lnk" "$INSTDIR\lumbra.exe" "" "$INSTDIR\lumbra.exe" 0 \
    SW_SHOWNORMAL "" "Configuração para POS"
  CreateShortCut "${SETTINGS_LINK}" "$WINDIR\notepad.exe" '"$INSTDIR\Lumbra.par"' \
    "$INSTDIR\lumbra.exe" 0 SW_SHOWNORMAL "" "O ficheiro de parâmetros do Lumbra"

  WriteRegStr HKCU "${UNINST_KEY}" "DisplayName" "Lumbra"
  WriteRegStr HKCU "${UNINST_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINST_KEY}" "Publisher" "The Lumbra developers"
  WriteRegStr HKCU "${UNINST_KEY}" "DisplayIcon" "$INSTDIR\lumbra.exe,0"
  WriteRegStr HKCU "${UNINST_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINST_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKCU "${UNINST_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKCU "${UNINST_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINST_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINST_KEY}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  Delete "$INSTDIR\lumbra.exe"
  Delete "$INSTDIR\lumbractl.exe"
  Delete "$INSTDIR\LEIA-ME.txt"
  StrCpy $R0 "$INSTDIR\Lumbra.par"
  StrCpy $R1 "$INSTDIR\Lumbra-exemplo.par"
  Call un.SameBytes
  ${If} $R2 == 1
    Delete "$INSTDIR\Lumbra.par"
  ${EndIf}
  Delete "$INSTDIR\Lumbra-exemplo.par"
  Delete "$INSTDIR\${UNINSTALLER}"
  ; Only an empty folder goes: an edited Lumbra.par keeps it.
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Lumbra.lnk"
  Delete "${SETTINGS_LINK}"
  DeleteRegKey HKCU "${UNINST_KEY}"
SectionEnd
