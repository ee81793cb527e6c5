# SPDX-License-Identifier: Apache-2.0
# clang-tidy over our sources, as the target "lint". Each source has a stamp that hangs on the source and its own
# header. What a change of a header does to the sources of others is left to a clean build, which checks them all:
# otherwise a word in a header that everybody includes would cost minutes.
add_custom_target(lint)
find_program(CLANG_TIDY NAMES clang-tidy-14 clang-tidy)
if(PLEXO_TESTS AND NOT PLEXO_SANITIZE AND NOT CLANG_TIDY)
  message(FATAL_ERROR "clang-tidy is missing: it is part of the tests")
endif()

function(plexo_lint target)
  if(NOT CLANG_TIDY)
    return()
  endif()
  set(stamps)
  foreach(source IN LISTS ARGN)
    file(RELATIVE_PATH name ${CMAKE_SOURCE_DIR} ${source})
    string(REGEX REPLACE "cpp$" "h" header ${source})
    if(NOT EXISTS ${header})
      set(header)
    endif()
    set(stamp ${CMAKE_BINARY_DIR}/lint/${name}.stamp)
    get_filename_component(stampFolder ${stamp} DIRECTORY)
    file(MAKE_DIRECTORY ${stampFolder})
    add_custom_command(
      OUTPUT ${stamp}
      # It counts the warnings of system headers on standard error, which matters only when it fails.
      COMMAND ${CLANG_TIDY} --quiet -p ${CMAKE_BINARY_DIR} ${source} 2>${stamp}.log || (cat ${stamp}.log && false)
      COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
      DEPENDS ${source} ${header} ${CMAKE_SOURCE_DIR}/.clang-tidy
      COMMENT "clang-tidy ${name}")
    list(APPEND stamps ${stamp})
  endforeach()
  add_custom_target(lint-${target} DEPENDS ${stamps})
  add_dependencies(lint lint-${target})
endfunction()
