# SPDX-License-Identifier: Apache-2.0

# plexo_assemble_install_tree(<target>)
#
# Adds a target that lays the install tree beside the built programs, so that they run in place:
# everything under templates/, its movies compiled, the published schema documents that
# packaging/fetch-schemas has put into build/schemas, the players that packaging/fetch-players has put into
# build/players, and the translations. The tree is laid anew, whole, whenever a source of it changed, came or
# went.
function(plexo_assemble_install_tree target)
  set(schemas ${CMAKE_SOURCE_DIR}/build/schemas)
  if(NOT EXISTS ${schemas}/1_2 OR NOT EXISTS ${schemas}/2004)
    message(FATAL_ERROR "schemas: ${schemas} is missing: run packaging/fetch-schemas")
  endif()

  set(players ${CMAKE_SOURCE_DIR}/build/players)
  if(NOT EXISTS ${players}/ruffle OR NOT EXISTS ${players}/pdfjs)
    message(FATAL_ERROR "players: ${players} is missing: run packaging/fetch-players")
  endif()

  set(tree ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/Templates)
  set(scorm ${tree}/Publish/LMS/Standard/SCORM/Default)
  set(scormPages ${tree}/Publish/Plexo/SCORM)
  set(translations ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/translations)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/templates/* ${schemas}/* ${players}/*
                                              ${CMAKE_SOURCE_DIR}/resources/translations/*)
  set(supportMovie ${CMAKE_BINARY_DIR}/movies/scorm_support.swf)
  plexo_movie(${supportMovie} ${CMAKE_SOURCE_DIR}/templates/Movies/ScormSupport.hx)

  # A source that went leaves no newer file behind, so the list itself is a source too.
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}.list)
  file(CONFIGURE OUTPUT ${list} CONTENT "${sources}")

  # The output is a file of the tree itself: a tree that someone deleted is laid anew.
  set(output ${scorm}/2004/static/3rd/lom.xsd)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${tree} ${translations}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/resources/translations ${translations}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/templates ${tree}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${tree}/Movies
    COMMAND ${CMAKE_COMMAND} -E make_directory ${scormPages}/1_2/SCORM_support ${scormPages}/2004/SCORM_support
    COMMAND ${CMAKE_COMMAND} -E copy ${supportMovie} ${scormPages}/1_2/SCORM_support
    COMMAND ${CMAKE_COMMAND} -E copy ${supportMovie} ${scormPages}/2004/SCORM_support
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${schemas}/1_2 ${scorm}/1_2/static
    # A 2004 package carries the documents of both versions.
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${schemas}/1_2 ${scorm}/2004/static/3rd
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${schemas}/2004 ${scorm}/2004/static/3rd
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${players} ${tree}/Publish/Plexo/Players
    COMMAND ${CMAKE_COMMAND} -E touch ${output}
    DEPENDS ${sources} ${list} ${supportMovie}
    COMMENT "Assembling the install tree"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
