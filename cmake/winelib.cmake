# Build of the Windows sources as Winelib programs: Linux code that calls Wine's Win32, where g++'s
# address sanitizer works on the Windows-only sources. For checking, never for users.
set(CMAKE_SYSTEM_NAME Winelib)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER winegcc)
set(CMAKE_CXX_COMPILER wineg++)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_RC_FLAGS_INIT "-c 65001")
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/winelib)
