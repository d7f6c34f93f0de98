# What the file manager shows about a program or library: the version of the project, the same everywhere.
include_guard()

# write_version_resource(PATH FILE_NAME DESCRIPTION): writes a resource script for a script of the target to
# include.
function(write_version_resource path file_name description)
  cmake_path(GET file_name STEM internal_name)
  if(file_name MATCHES "\\.exe$")
    set(file_type VFT_APP)
  else()
    set(file_type VFT_DLL)
  endif()
  file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE copyright REGEX "^Copyright " LIMIT_COUNT 1)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${path} @ONLY)
endfunction()

# add_version_resource(TARGET FILE_NAME DESCRIPTION): for a target that has no resource script of its own.
function(add_version_resource target file_name description)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  write_version_resource(${script} ${file_name} ${description})
  target_sources(${target} PRIVATE ${script})
endfunction()
