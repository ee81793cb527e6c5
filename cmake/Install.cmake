# SPDX-License-Identifier: Apache-2.0

# plexo_install(<target>...)
#
# Installs the programs and libraries as they lie in the build's bin/, with the install tree and the translations
# beside them, into a private folder (lib/plexo): all are found by the place of the running program. The programs
# have links in bin/. What a desktop wants to know of the desktop program goes where desktops look.
include(GNUInstallDirs)

function(plexo_install)
  set(private ${CMAKE_INSTALL_LIBDIR}/plexo)
  file(RELATIVE_PATH fromBin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/plexo)
  foreach(target IN LISTS ARGN)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} RUNTIME DESTINATION ${private} LIBRARY DESTINATION ${private})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
      # A relative link: the installed tree may be moved.
      install(CODE "
        file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        file(CREATE_LINK ${fromBin}/${target}
             \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/${target}\" SYMBOLIC)")
    endif()
  endforeach()
  set(bin ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  install(FILES ${bin}/sequencer.wasm DESTINATION ${private})
  install(DIRECTORY ${bin}/Templates ${bin}/translations DESTINATION ${private})
  plexo_install_desktop_files()
endfunction()

function(plexo_install_desktop_files)
  set(desktop ${CMAKE_SOURCE_DIR}/packaging/desktop)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES ${desktop}/plexo-desktop.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${desktop}/plexo.desktop.plexo.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${desktop}/plexo-course.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${desktop}/plexo.svg DESTINATION ${icons}/scalable/apps)
  find_program(RSVG_CONVERT rsvg-convert)
  if(NOT RSVG_CONVERT)
    install(CODE "message(STATUS \"icons: rsvg-convert is missing: only the scalable icon is installed\")")
    return()
  endif()
  foreach(size 16 22 24 32 48 64 128 256 512)
    set(folder "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${icons}/${size}x${size}/apps")
    install(CODE "
      file(MAKE_DIRECTORY \"${folder}\")
      execute_process(COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} ${desktop}/plexo.svg
                              --output \"${folder}/plexo.png\" COMMAND_ERROR_IS_FATAL ANY)")
  endforeach()
endfunction()
