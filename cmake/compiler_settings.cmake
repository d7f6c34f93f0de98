# How every source of the project is compiled: the language, the warnings, the sanitizers.
include_guard()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

set(BEAMLINE_SANITIZER "" CACHE STRING "Sanitizer of a native build: empty, address or thread")
option(BEAMLINE_COVERAGE "Count executed lines and branches" OFF)
option(BEAMLINE_WINDOWS_UBSAN "Stop a Windows build at undefined behaviour" OFF)

find_program(BEAMLINE_CCACHE ccache)
if(BEAMLINE_CCACHE)
  # What ccache must overlook in order to serve sources that use a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${BEAMLINE_CCACHE})
endif()

if(BEAMLINE_SANITIZER STREQUAL "address")
  add_compile_options(-O1 -g -fno-omit-frame-pointer -fsanitize=address,undefined,float-cast-overflow
                      -fno-sanitize-recover=all)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=address,undefined)
elseif(BEAMLINE_SANITIZER STREQUAL "thread")
  add_compile_options(-O1 -g -fsanitize=thread)
  add_link_options(-fsanitize=thread)
elseif(NOT BEAMLINE_SANITIZER STREQUAL "")
  message(FATAL_ERROR "BEAMLINE_SANITIZER is '${BEAMLINE_SANITIZER}'; use address, thread or nothing")
endif()

if(BEAMLINE_COVERAGE)
  add_compile_options(-O0 -g --coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(WIN32)
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT _WIN32_WINNT=0x0601
                          _GLIBCXX_ASSERTIONS)
  add_link_options(-Wl,--no-insert-timestamp)
  # A section for each of the many descriptions of places, or counters, would keep the linker busy for
  # a minute a program.
  if(NOT BEAMLINE_WINDOWS_UBSAN AND NOT BEAMLINE_COVERAGE)
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(-Wl,--gc-sections)
  endif()
endif()

# The warnings of our own sources; code that we only build, such as GoogleTest, keeps its own. The presets
# make them errors: whoever builds with a newer compiler by other means is not stopped by a new warning.
add_library(project_warnings INTERFACE)
target_compile_options(project_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wsign-conversion -Wold-style-cast -Wcast-qual
  -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wimplicit-fallthrough)
# clang also checks arbor/thread_annotations.h: what is guarded is touched with its lock only.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(project_warnings INTERFACE -Wthread-safety)
endif()

# A library target of one folder. Sources follow the name; link what lies below with
# target_link_libraries(<name> PUBLIC ...).
function(add_layer name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE project_warnings)
  if(BEAMLINE_SANITIZER STREQUAL "address" AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)  # shows fuzzers their way
  endif()
endfunction()

# mingw-w64 has no run-time library for this sanitizer, so everything links ours.
if(WIN32 AND BEAMLINE_WINDOWS_UBSAN)
  add_compile_options(-g -fsanitize=undefined -fno-sanitize=vptr)
  add_library(ubsan_windows STATIC ${PROJECT_SOURCE_DIR}/tests/support/ubsan_windows.cpp)
  target_compile_options(ubsan_windows PRIVATE -fno-sanitize=all)
  link_libraries(ubsan_windows)
endif()
