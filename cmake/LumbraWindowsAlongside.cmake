# The Windows programs built and tested beside the Linux ones, in one tree: a plain configure on a
# machine with MinGW-w64, Wine and GoogleTest's sources gets both, so that one `cmake --build` and
# one `ctest` judge a change to a file only the Windows build compiles (platform/win32/, the
# serial control over the Windows API, the Windows window) as they judge any other. The presets
# keep the two apart (LUMBRA_WITH_WINDOWS OFF): scripts/test-windows.sh builds the windows preset
# on its own.
find_program(LUMBRA_MINGW_CXX x86_64-w64-mingw32-g++-posix)
find_program(LUMBRA_WINE64 NAMES wine64 wine PATHS /usr/lib/wine NO_DEFAULT_PATH)
find_program(LUMBRA_WINE64 NAMES wine64)
set(windows_default OFF)
if(LUMBRA_MINGW_CXX AND LUMBRA_WINE64 AND EXISTS /usr/src/googletest/CMakeLists.txt)
  set(windows_default ${LUMBRA_BUILD_TESTS})
endif()
option(LUMBRA_WITH_WINDOWS "Build and test the 64-bit Windows programs in <build>/windows too"
       ${windows_default})

# Where the Windows programs that the Linux-side Wine tests drive are built.
if(LUMBRA_WITH_WINDOWS)
  set(LUMBRA_WINDOWS_TREE ${CMAKE_BINARY_DIR}/windows)
else()
  set(LUMBRA_WINDOWS_TREE ${PROJECT_SOURCE_DIR}/build/windows)
endif()

if(NOT LUMBRA_WITH_WINDOWS)
  return()
endif()

include(ExternalProject)
# Built at every build of this tree (its own ninja decides, in a fraction of a second, that nothing
# changed), with this tree's build type.
ExternalProject_Add(lumbra_windows
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${LUMBRA_WINDOWS_TREE}
  CMAKE_GENERATOR Ninja
  CMAKE_ARGS -DCMAKE_TOOLCHAIN_FILE=${PROJECT_SOURCE_DIR}/cmake/toolchains/mingw-x86_64.cmake
             -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DLUMBRA_BUILD_TESTS=ON
             -DLUMBRA_BUILD_BENCH=OFF
  BUILD_ALWAYS ON
  INSTALL_COMMAND "")

# The Windows tree's own tests, under Wine in a prefix of its own whose COM ports point at nothing
# until a test maps one to its pseudo-terminal; not run again while no Windows program and no
# script they run has changed since they last passed.
set(wine_support ${PROJECT_SOURCE_DIR}/tests/support/wine)
file(GLOB wine_scripts ${wine_support}/*.sh ${PROJECT_SOURCE_DIR}/tests/app/win32/*.sh
     ${PROJECT_SOURCE_DIR}/scripts/private_display.sh)
add_test(NAME windows_tests
  COMMAND bash ${wine_support}/unless_unchanged.sh ${CMAKE_BINARY_DIR}/windows_tests.passed
          ${LUMBRA_WINDOWS_TREE} ${wine_scripts} --
          bash -c "bash '${wine_support}/wine_prefix.sh' \"$1\" && ctest --test-dir \"$2\" -j2 --stop-on-failure --output-on-failure --timeout 300"
          windows_tests ${LUMBRA_WINDOWS_TREE}/wine/prefix ${LUMBRA_WINDOWS_TREE})
# tools_wine_tests maps COM ports of the same prefix: the two never run at once.
set_tests_properties(windows_tests PROPERTIES LABELS wine TIMEOUT 1200 RESOURCE_LOCK wine_prefix)

# The Wine runs come after every Linux test: most faults show in a Linux test in seconds, and
# `ctest --stop-on-failure` (what a mutation run uses) then ends before the Wine runs start.
function(lumbra_tests_below dir out)
  get_property(tests DIRECTORY ${dir} PROPERTY TESTS)
  get_property(subdirs DIRECTORY ${dir} PROPERTY SUBDIRECTORIES)
  foreach(sub ${subdirs})
    lumbra_tests_below(${sub} more)
    list(APPEND tests ${more})
  endforeach()
  set(${out} ${tests} PARENT_SCOPE)
endfunction()
function(lumbra_wine_tests_last)
  lumbra_tests_below(${PROJECT_SOURCE_DIR} linux_tests)
  list(REMOVE_ITEM linux_tests windows_tests tools_wine_tests)
  set_tests_properties(windows_tests PROPERTIES DEPENDS "${linux_tests}")
endfunction()
cmake_language(DEFER CALL lumbra_wine_tests_last)
