# lumbra_windows_resources(<target> <description>): gives a Windows program the icon, version and
# manifest of lumbra.rc.in. The description is Windows-1252, with octal escapes for what is not
# ASCII ("\\347" is "ç"). The resource compiler's object is made by a command of its own, so the
# project needs no RC language.
function(lumbra_windows_resources target description)
  set(LUMBRA_RC_NAME ${target})
  set(LUMBRA_RC_DESCRIPTION "${description}")
  set(LUMBRA_RC_ICON ${PROJECT_SOURCE_DIR}/packaging/windows/lumbra.ico)
  set(LUMBRA_RC_MANIFEST ${PROJECT_SOURCE_DIR}/packaging/windows/lumbra.manifest)
  set(rc ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  set(obj ${CMAKE_CURRENT_BINARY_DIR}/${target}.res.o)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/lumbra.rc.in ${rc} @ONLY)
  add_custom_command(OUTPUT ${obj}
    COMMAND ${CMAKE_RC_COMPILER} -O coff -i ${rc} -o ${obj}
    DEPENDS ${rc} ${LUMBRA_RC_ICON} ${LUMBRA_RC_MANIFEST}
    COMMENT "Windows resources of ${target}" VERBATIM)
  set_source_files_properties(${obj} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
  target_sources(${target} PRIVATE ${obj})
endfunction()
