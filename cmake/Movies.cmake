# SPDX-License-Identifier: Apache-2.0
find_program(HAXE haxe)
if(NOT HAXE)
  message(FATAL_ERROR "movies: haxe is missing, which compiles them: install the package haxe")
endif()

# plexo_movie(<output.swf> <Source.hx> [<option>...])
#
# Compiles a movie of ActionScript 3 from a source whose class bears the file's name. Options are haxe's, such
# as "-D name=value".
function(plexo_movie output source)
  get_filename_component(folder ${source} DIRECTORY)
  get_filename_component(class ${source} NAME_WE)
  get_filename_component(outputFolder ${output} DIRECTORY)
  file(MAKE_DIRECTORY ${outputFolder})
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${HAXE} -cp ${folder} -main ${class} -swf ${output} --swf-version 11 --swf-header 640:480:24:FFFFFF
            --no-traces -dce full ${ARGN}
    DEPENDS ${source}
    COMMENT "Compiling ${class} as a movie"
    VERBATIM)
endfunction()
