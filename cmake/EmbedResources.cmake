# SPDX-License-Identifier: Apache-2.0

# plexo_embed_resources(<target>)
#
# Adds the static library that holds the files under resources/ and the table by which they are found
# (resources/PlexoResources.h). The source it is made of is generated: the assembler takes the files in as
# they are, so that nothing has to turn them into code.
#
#   sheets/121-name.property.yaml   ->  "121", "adm"
#   sheets/122-name.layout.yaml     ->  "122", "eve"
#   images/MoveUp.png               ->  "MOVEUP", "png"
#   images/MoveUp@2x.png            ->  "MOVEUP_AT_2X", "png"
#   images/101-icon.png             ->  "101", "png"
#   images/101-icon@2x.png          ->  "101_AT_2X", "png"
function(plexo_embed_resources target)
  set(folder ${CMAKE_SOURCE_DIR}/resources)
  file(GLOB files CONFIGURE_DEPENDS ${folder}/sheets/*.yaml ${folder}/images/*.png)

  set(blocks)
  set(rows)
  set(taken)
  foreach(file IN LISTS files)
    cmake_path(GET file FILENAME fileName)
    plexo_resource_name(${fileName} name type)
    if("${name}.${type}" IN_LIST taken)
      message(FATAL_ERROR "resources: ${fileName} has the name of another: ${name}, ${type}")
    endif()
    list(APPEND taken "${name}.${type}")
    string(MAKE_C_IDENTIFIER "plexo_resource_${name}_${type}" symbol)
    string(APPEND blocks "PLEXO_RESOURCE(${symbol}, \"${file}\")\n")
    string(APPEND rows "    {\"${name}\", \"${type}\", \"${fileName}\", Bytes(${symbol}, ${symbol}_end)},\n")
  endforeach()

  set(source ${CMAKE_BINARY_DIR}/generated/PlexoResources.cpp)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/PlexoResources.cpp.in ${source} @ONLY)
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${files}")
  add_library(${target} STATIC ${source})
  plexo_own_include_path(${target} ${target})
  target_link_libraries(${target} PUBLIC host PRIVATE plexo_options)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden OUTPUT_NAME plexo-${target})
endfunction()

# The name and type under which a file is found.
function(plexo_resource_name fileName nameResult typeResult)
  if(fileName MATCHES "^([0-9]+)-.*\\.property\\.yaml$")
    set(name ${CMAKE_MATCH_1})
    set(type adm)
  elseif(fileName MATCHES "^([0-9]+)-.*\\.layout\\.yaml$")
    set(name ${CMAKE_MATCH_1})
    set(type eve)
  elseif(fileName MATCHES "^([0-9]+)-[A-Za-z0-9_]+(@2x)?\\.png$")
    set(name ${CMAKE_MATCH_1})
    set(type png)
  elseif(fileName MATCHES "^([A-Za-z0-9_]+)(@2x)?\\.png$")
    string(TOUPPER ${CMAKE_MATCH_1} name)
    set(type png)
  else()
    message(FATAL_ERROR "resources: '${fileName}' isn't named as a resource; see cmake/EmbedResources.cmake")
  endif()
  if(fileName MATCHES "@2x")
    string(APPEND name _AT_2X)
  endif()
  set(${nameResult} ${name} PARENT_SCOPE)
  set(${typeResult} ${type} PARENT_SCOPE)
endfunction()
