# How every source of a Winelib build is compiled and linked: see cmake/winelib.cmake.

# The undefined-behaviour runtime cannot follow the type information of a standard library of our own.
add_compile_options(-O1 -g -fno-omit-frame-pointer -fsanitize=address,undefined,float-cast-overflow
                    -fno-sanitize-recover=all -fvisibility=hidden -fno-sanitize=vptr
                    -Wno-ignored-attributes)
link_libraries(-Wl,--no-as-needed -lasan -lubsan)

# Windows' wchar_t has 16 bits and the C library's has 32. So the templates of the standard library
# are compiled here and not taken from its binary, that binary is linked into each program, and what
# both call of the C library comes from tests/winelib/, which the visibility keeps to our own code.
add_compile_definitions(_GLIBCXX_EXTERN_TEMPLATE=0)
add_link_options(-Wl,-Bsymbolic -static-libstdc++)

# Two calls of the system take a way through tests/winelib/, which says why.
add_compile_definitions(ReadFile=readFileIntoAnyMemory CreateThread=createThreadWithKnownStack)

# add_companion(TARGET FILE): a program or a library that tests need beside them and that is not
# checked itself comes from the Windows build, to the same place in this one.
function(add_companion target file)
  get_filename_component(folder ${CMAKE_BINARY_DIR}/${file} DIRECTORY)
  add_custom_target(${target}
    COMMAND sh tools/build-quietly.sh windows ${target}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different build/windows/${file} ${folder}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  # One after the other: they share a build folder.
  get_property(before GLOBAL PROPERTY companion)
  if(before)
    add_dependencies(${target} ${before})
  endif()
  set_property(GLOBAL PROPERTY companion ${target})
endfunction()
