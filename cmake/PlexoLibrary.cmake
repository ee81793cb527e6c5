# SPDX-License-Identifier: Apache-2.0
# Compiler settings that hold for every target of ours.
add_library(plexo_options INTERFACE)
target_compile_options(plexo_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(PLEXO_FUZZ)
  # Another compiler warns of other things; what the usual one thinks is what counts.
  target_compile_options(plexo_options INTERFACE -Wno-error -fsanitize=fuzzer-no-link)
  target_link_options(plexo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(PLEXO_SANITIZE)
  target_compile_options(plexo_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
  target_link_options(plexo_options INTERFACE -fsanitize=address,undefined)
endif()

# Lets a target include the headers of one top-level folder, and of no other, as "folder/.../Name.h": the
# include path is a folder of the build tree that holds nothing but a link to that one folder.
function(plexo_own_include_path target folder)
  set(root ${CMAKE_BINARY_DIR}/include/${folder})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${root})
endfunction()

# A library of the architecture: the target, its folder and its include path share one name, and every source
# below the folder belongs to it, but not those of a folder that is a target of its own.
function(plexo_library name kind)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${name}/*.cpp)
  file(GLOB targetsBelow ${CMAKE_SOURCE_DIR}/${name}/*/CMakeLists.txt)
  foreach(listFile IN LISTS targetsBelow)
    get_filename_component(folder ${listFile} DIRECTORY)
    list(FILTER sources EXCLUDE REGEX "^${folder}/")
  endforeach()
  add_library(${name} ${kind} ${sources})
  plexo_own_include_path(${name} ${name})
  target_link_libraries(${name} PRIVATE plexo_options)
  if(kind STREQUAL "STATIC")
    set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
                                             OUTPUT_NAME plexo-${name})
  endif()
  plexo_lint(${name} ${sources})
endfunction()
