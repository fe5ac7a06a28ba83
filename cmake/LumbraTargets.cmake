# Shared settings for the project's own targets: warnings as errors, sanitizers on request.

set(LUMBRA_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Werror)
# GCC 12 reports impossible overlaps and sizes inside std::string concatenation at -O2 and above
# (known false positives of its -Wrestrict, -Wstringop-overflow and -Warray-bounds); later releases
# fixed them.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  list(APPEND LUMBRA_WARNINGS -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()

# Windows programs run on Windows 7 (POSReady 7 terminals) and later, and speak to the API in UTF-16
# (the W functions) only.
if(WIN32)
  add_compile_definitions(_WIN32_WINNT=0x0601 WINVER=0x0601 UNICODE _UNICODE NOMINMAX
                          WIN32_LEAN_AND_MEAN)
endif()

if(LUMBRA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer
                      -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Coverage feedback for libFuzzer in every library a fuzz target links; the targets themselves
# link the fuzzer's own main.
if(LUMBRA_BUILD_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Applies the project's warning set to one of its own targets.
function(lumbra_target_options target)
  target_compile_options(${target} PRIVATE ${LUMBRA_WARNINGS})
  # Debug builds check every standard-library index, so a position one past the end fails loudly
  # in the tests instead of reading a neighbour.
  target_compile_definitions(${target} PRIVATE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
endfunction()

# A static library made of every .cpp of the calling folder (optionally filtered), so that adding a
# file to a folder needs no edit here.
function(lumbra_folder_library target)
  cmake_parse_arguments(ARG "" "" "EXCLUDE;LIBS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  foreach(pattern ${ARG_EXCLUDE})
    list(FILTER sources EXCLUDE REGEX "${pattern}")
  endforeach()
  if(NOT sources)
    # Headers only, for now.
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${PROJECT_SOURCE_DIR})
    if(ARG_LIBS)
      target_link_libraries(${target} INTERFACE ${ARG_LIBS})
    endif()
    return()
  endif()
  add_library(${target} STATIC ${sources})
  lumbra_target_options(${target})
  if(ARG_LIBS)
    target_link_libraries(${target} PUBLIC ${ARG_LIBS})
  endif()
endfunction()
