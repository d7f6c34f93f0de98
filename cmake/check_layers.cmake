# Fails when a source includes a header of a layer above its own, or a header of Windows although it
# should use platform/. Run: cmake -DROOT=<source folder> -P check_layers.cmake
#
# Each row is a layer: its folder, then the folders whose headers it may include.
cmake_minimum_required(VERSION 3.25)
set(may_include
  "platform|platform"
  "arbor|arbor,platform"
  "tern|tern,arbor,platform"
  "device|device,platform"
  "printer|printer,strings,device,platform"
  "ui|ui,printer,strings,device,tern,arbor,platform"
  "monitor|monitor,ui,printer,strings,device,tern,arbor,platform"
  "app|app,monitor,ui,printer,strings,device,tern,arbor,platform")
# These sources are written for Windows. All others use the system through platform/ only.
set(windows_code "^(platform/windows/|app/|ui/windows/)")

set(found 0)
foreach(row IN LISTS may_include)
  string(REGEX MATCH "^([^|]+)[|](.*)$" ignored "${row}")
  set(layer "${CMAKE_MATCH_1}")
  string(REPLACE "," ";" allowed "${CMAKE_MATCH_2}")
  file(GLOB_RECURSE sources RELATIVE ${ROOT} ${ROOT}/${layer}/*.h ${ROOT}/${layer}/*.cpp)
  foreach(source IN LISTS sources)
    file(STRINGS ${ROOT}/${source} includes REGEX "^[ \t]*#[ \t]*include")
    foreach(line IN LISTS includes)
      if(line MATCHES "\"(.+)/[^/\"]+\"")
        set(folder "${CMAKE_MATCH_1}")
        string(REGEX REPLACE "/(windows|simulated)$" "" folder "${folder}")
        if(NOT folder IN_LIST allowed)
          message("${source}: '${layer}' may not include from '${folder}'")
          set(found 1)
        endif()
      elseif(line MATCHES "<(windows|winspool|shellapi|shlobj|commctrl|objbase|msxml[0-9]*)\\.h>"
             AND NOT source MATCHES "${windows_code}")
        message("${source}: ${CMAKE_MATCH_0} belongs behind platform/")
        set(found 1)
      endif()
    endforeach()
  endforeach()
endforeach()
if(found)
  message(FATAL_ERROR "Includes go down the layers only; see docs/architecture.md.")
endif()
