#!/usr/bin/env bash
# Builds the Windows downloads (scripts/package-windows.sh) and checks what a technician receives:
# the zips' files, LEIA-ME.txt in Windows-1252 with CR LF, the programs' and installers' kinds,
# then the 64-bit installer under Wine in a fresh prefix of its own (its COM ports point at
# nothing): silent install, lumbractl.exe finding the Lumbra.par of its own folder, the Start-menu
# shortcuts and the entry of the installed programs, upgrades that keep an edited Lumbra.par and
# silent uninstalls. The 32-bit installer is not run: the 64-bit Wine here cannot start it.
#   windows_package_test.sh [BUILD_DIR_X64 BUILD_DIR_X86]   (passed to package-windows.sh)
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$root/scripts/package-windows.sh" "$@" >"$work/built" ||
    { echo "package-windows: the build failed" >&2; exit 1; }
mapfile -t built <"$work/built"
version=$(sed -n 's/^project(Lumbra VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
dir64=$(realpath -m "${1:-$root/build/windows}")

failures=0
fail() { echo "FAIL: $*" >&2; ((failures++)); }

# What ships is the sample with Windows names: no Linux path is left in it.
sample=$work/windows-sample.par
LC_ALL=C sed -f "$root/packaging/windows/Lumbra.par.sed" "$root/examples/Lumbra.par" >"$sample"
! LC_ALL=C grep -q '/tmp/\|/dev/' "$sample" && LC_ALL=C grep -q '^Impressora paralela \[LPT\]=LPT1' "$sample" ||
    fail "the Windows sample still names Linux paths"

want=$(printf "$root/build/lumbra-$version-%s\n" windows-x64.zip setup-x64.exe windows-x86.zip \
    setup-x86.exe)
[[ $(printf '%s\n' "${built[@]}") == "$want" ]] || fail "paths written: ${built[*]}"

# The zips, and what `file` says of each program: the window is a GUI program, the tool a
# console one, the installers GUI programs of their architecture.
while read -r arch kind; do
    zip=$root/build/lumbra-$version-windows-$arch.zip
    out=$work/zip-$arch
    mkdir -p "$out"
    (cd "$out" && cmake -E tar xf "$zip") || { fail "$zip does not unpack"; continue; }
    names=$(cd "$out" && find . -type f | sort | tr '\n' ' ')
    [[ $names == "./LEIA-ME.txt ./Lumbra.par ./lumbra.exe ./lumbractl.exe " ]] ||
        fail "$arch zip holds $names"
    cmp -s "$out/Lumbra.par" "$sample" || fail "$arch zip: Lumbra.par is not the Windows sample"
    readme=$out/LEIA-ME.txt
    LC_ALL=C grep -q $'\xE7' "$readme" || fail "$arch zip: LEIA-ME.txt has no Windows-1252 ç"
    [[ $(LC_ALL=C grep -c -v $'\r$' "$readme") -eq 0 && $(tail -c 2 "$readme" | od -An -tx1) == " 0d 0a" ]] ||
        fail "$arch zip: a line of LEIA-ME.txt does not end with CR LF"
    iconv -f WINDOWS-1252 -t UTF-8 "$readme" | sed 's/\r$//' | cmp -s - "$root/packaging/windows/LEIA-ME.txt" ||
        fail "$arch zip: LEIA-ME.txt is not the source's text"
    for exe in lumbra:GUI lumbractl:console; do
        file -b "$out/${exe%:*}.exe" | grep -q "^$kind (${exe#*:})" ||
            fail "$arch ${exe%:*}.exe: $(file -b "$out/${exe%:*}.exe")"
    done
    setup=$root/build/lumbra-$version-setup-$arch.exe
    file -b "$setup" | grep -q "^$kind (GUI)" || fail "$arch installer: $(file -b "$setup")"
done <<'EOF'
x64 PE32+ executable
x86 PE32 executable
EOF

# The 64-bit installer under Wine, in a prefix made afresh for this run.
export WINEPREFIX=$dir64/wine/installer-test WINEDEBUG=-all
. "$root/tests/support/wine/wine_env.sh"
rm -rf "$WINEPREFIX" "$WINEPREFIX.lock"
bash "$root/tests/support/wine/wine_prefix.sh" "$WINEPREFIX" || { echo "no Wine prefix" >&2; exit 1; }
trap '"$WINESERVER" -k >/dev/null 2>&1; rm -rf "$work"' EXIT
win() { "$WINE" "$@" 2>/dev/null </dev/null; }
setup=$root/build/lumbra-$version-setup-x64.exe
unix_of() { win winepath -u "$1" | tr -d '\r'; }
inst_win="$(win cmd /c echo %LOCALAPPDATA% | tr -d '\r')\\Programs\\Lumbra"
inst=$(unix_of "$inst_win")
menu=$(unix_of "$(win cmd /c echo %APPDATA% | tr -d '\r')\\Microsoft\\Windows\\Start Menu\\Programs")
key='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Lumbra'

win "$setup" /S || fail "silent install: status $?"
for f in lumbra.exe lumbractl.exe LEIA-ME.txt Lumbra.par Lumbra-exemplo.par desinstalar.exe; do
    [[ -f $inst/$f ]] || fail "not installed: $f"
done
cmp -s "$inst/Lumbra.par" "$sample" || fail "the installed Lumbra.par is not the sample"

# Without -FP the tool reads the Lumbra.par of its own folder, whatever the current folder holds.
printf '#LIG Portas\r\nOutra porta [SER]=COM5,9600,n,8,1\r\n##\r\n' >"$work/Lumbra.par"
first_row=$'LIG\t1\tImpressora s\xC3\xA9rie\tSER\tCOM1,9600,n,8,1'
for cwd in "$inst" "$work"; do
    row=$(cd "$cwd" && win "$inst_win\\lumbractl.exe" listar | tr -d '\r' | head -n1)
    [[ $row == "$first_row" ]] || fail "lumbractl listar run from $cwd: $row"
done

# A shortcut's target and arguments are UTF-16 strings inside the .lnk.
links=("$menu/Lumbra.lnk" "$inst_win\\lumbra.exe"
    "$menu/Lumbra - Configuração (Lumbra.par).lnk" "notepad.exe"
    "$menu/Lumbra - Configuração (Lumbra.par).lnk" "\"$inst_win\\Lumbra.par\"")
for ((i = 0; i < ${#links[@]}; i += 2)); do
    strings -el "${links[i]}" 2>/dev/null | grep -qF "${links[i + 1]}" ||
        fail "Start-menu shortcut ${links[i]} lacks ${links[i + 1]}"
done
link=${links[2]}

entry=$(win reg query "$key" | tr -d '\r')
while read -r name pattern; do
    grep -qE "^ +$name +REG_[A-Z]+ +$pattern\$" <<<"$entry" || fail "uninstall entry $name: $entry"
done <<EOF
DisplayName Lumbra
DisplayVersion ${version//./\\.}
Publisher .+
DisplayIcon .*\\\\lumbra\\.exe(,0)?
InstallLocation ${inst_win//\\/\\\\}
UninstallString "${inst_win//\\/\\\\}\\\\desinstalar\\.exe"
QuietUninstallString "${inst_win//\\/\\\\}\\\\desinstalar\\.exe" /S
NoModify 0x1
NoRepair 0x1
EstimatedSize 0x[0-9a-f]*[1-9a-f][0-9a-f]*
EOF

# Upgrades: Lumbra.par takes the new sample only while it is the sample an earlier installer
# shipped (Lumbra-exemplo.par), byte for byte.
head -n -1 "$sample" >"$work/old"
cp "$work/old" "$work/old-edited" && printf 'x\r\n' >>"$work/old-edited"
head -c -1 "$work/old" >"$work/old-cut"
while read -r par shipped after; do
    cp "$work/$par" "$inst/Lumbra.par"
    if [[ $shipped == none ]]; then rm -f "$inst/Lumbra-exemplo.par"; else cp "$work/$shipped" "$inst/Lumbra-exemplo.par"; fi
    win "$setup" /S || fail "reinstall over $par/$shipped: status $?"
    [[ $after == new ]] && expected=$sample || expected=$work/$par
    cmp -s "$inst/Lumbra.par" "$expected" || fail "reinstall over Lumbra.par $par, sample $shipped: not $after"
    cmp -s "$inst/Lumbra-exemplo.par" "$sample" || fail "reinstall: Lumbra-exemplo.par is not the sample"
done <<'EOF'
old old new
old-edited old kept
old-cut old kept
old old-cut kept
old none kept
EOF

# Uninstalling keeps an edited Lumbra.par and the folder that holds it; an unedited one goes with
# the rest. `_?=` makes the uninstaller run in place and wait (it cannot delete itself then).
uninstall() { win "$inst_win\\desinstalar.exe" /S "_?=$inst_win" || fail "uninstall: status $?"; }
cp "$work/old-edited" "$inst/Lumbra.par"
uninstall
left=$(cd "$inst" && find . -type f | sort | tr '\n' ' ')
[[ $left == "./Lumbra.par ./desinstalar.exe " ]] || fail "after the uninstall the folder holds: $left"
cmp -s "$inst/Lumbra.par" "$work/old-edited" || fail "the uninstall changed the edited Lumbra.par"
[[ ! -e $menu/Lumbra.lnk && ! -e $link ]] || fail "the uninstall left Start-menu shortcuts"
win reg query "$key" >/dev/null && fail "the uninstall left the registry entry"
rm -f "$inst/Lumbra.par"
win "$setup" /S
uninstall
left=$(cd "$inst" && find . -type f | sort | tr '\n' ' ')
[[ $left == "./desinstalar.exe " ]] || fail "after uninstalling an unedited sample the folder holds: $left"

[[ $failures -eq 0 ]] && echo "package-windows: ${built[*]} passed every check"
exit $((failures > 0))
