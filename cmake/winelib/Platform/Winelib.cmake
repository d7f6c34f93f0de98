# What CMake has to know of a system that it does not know: see cmake/winelib.cmake.
include(Platform/Linux)
set(WIN32 1)
set(CMAKE_EXECUTABLE_SUFFIX .exe)
# wineg++ takes resources in the system's own format, among the objects.
set(CMAKE_RC_OUTPUT_EXTENSION .res)
set(CMAKE_RC_COMPILE_OBJECT
  "<CMAKE_RC_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -O res <SOURCE> <OBJECT>")
set(WINELIB 1)
