# How every source of the project is compiled: the language, the warnings and the sanitizers.
include_guard()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

set(BEAMLINE_SANITIZER "" CACHE STRING "Sanitizer of a native build: empty, address or thread")
option(BEAMLINE_COVERAGE "Count executed lines and branches" OFF)
option(BEAMLINE_RELEASE "The files of a release: with lines for a debugger, without tests" OFF)
option(BEAMLINE_WINDOWS_UBSAN "Stop a Windows build at undefined behaviour" OFF)

# A release takes no compiled file from a cache, where it might come from another folder or compiler.
find_program(BEAMLINE_CCACHE ccache)
if(BEAMLINE_CCACHE AND NOT BEAMLINE_RELEASE)
  # ccache serves sources that use a precompiled header only if it ignores these differences.
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
  # Each function gets a section of its own, so that the linker can leave out unused ones. Not with the
  # sanitizer or with counters: their data would get so many sections that linking takes a minute.
  if(NOT BEAMLINE_WINDOWS_UBSAN AND NOT BEAMLINE_COVERAGE)
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(-Wl,--gc-sections)
  endif()
endif()

# Lines for debuggers and names of sources come without the folders of the machine that builds.
if(BEAMLINE_RELEASE)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include/c++
    OUTPUT_VARIABLE library_headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  cmake_path(GET library_headers PARENT_PATH library_headers)
  cmake_path(GET library_headers PARENT_PATH compiler_folder)
  add_compile_options(-g1 -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${compiler_folder}=compiler)
  # The maps say which run-time libraries are linked in; the release lists them.
  add_link_options(-Wl,-Map,$<TARGET_PROPERTY:NAME>.map)
endif()

# The warnings for our own sources. Code that we only build, such as GoogleTest, has its own settings. The
# presets make warnings errors and this file does not: somebody who builds without a preset, with a newer
# compiler, is not stopped by a new warning.
add_library(project_warnings INTERFACE)
target_compile_options(project_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wsign-conversion -Wold-style-cast -Wcast-qual
  -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wimplicit-fallthrough)
# clang also checks the annotations of arbor/thread_annotations.h: guarded data is used under its lock only.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(project_warnings INTERFACE -Wthread-safety)
endif()

# add_layer(NAME SOURCES...): adds the library of one layer. The caller links the layers that it uses with
# target_link_libraries(NAME PUBLIC ...).
function(add_layer name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE project_warnings)
  if(BEAMLINE_SANITIZER STREQUAL "address" AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Fuzzers need this instrumentation to see which code an input reaches.
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# compile_for_speed(SOURCES...): for sources that work for every message. All others are compiled for size, or
# the program would be larger than its limit. The preset "host", which the benchmarks use, compiles everything
# as these are compiled here, except that the starts of functions and loops are not aligned here: that saves
# 4 KiB and costs no instructions.
function(compile_for_speed)
  set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_OPTIONS
    "$<$<CONFIG:MinSizeRel>:-O2;-fno-align-functions;-fno-align-jumps;-fno-align-loops;-fno-align-labels>")
endfunction()

# mingw-w64 has no run-time library for this sanitizer, so every program links our own.
if(WIN32 AND BEAMLINE_WINDOWS_UBSAN)
  add_compile_options(-g -fsanitize=undefined -fno-sanitize=vptr)
  add_library(ubsan_windows STATIC ${PROJECT_SOURCE_DIR}/tests/support/ubsan_windows.cpp)
  target_compile_options(ubsan_windows PRIVATE -fno-sanitize=all)
  link_libraries(ubsan_windows)
endif()
