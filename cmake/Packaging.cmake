# What makes an installed tree an application of the desktop, and a Debian package of it: cpack, in the build's folder.
set(desktop_id app.pelgo.nolfa)
set(desktop_files ${CMAKE_SOURCE_DIR}/Resources/Desktop)
set(metainfo ${CMAKE_BINARY_DIR}/share/metainfo/${desktop_id}.metainfo.xml)
configure_file(${desktop_files}/${desktop_id}.metainfo.xml.in ${metainfo} @ONLY)

# The icon in the sizes that menus ask for.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(icon ${CMAKE_SOURCE_DIR}/Resources/NolfaIcon.svg)
foreach(size 16 22 24 32 48 64 128 256 512)
  set(folder ${CMAKE_BINARY_DIR}/share/icons/hicolor/${size}x${size}/apps)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${folder}/${desktop_id}.png
    COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${folder}/${desktop_id}.png ${icon}
    DEPENDS ${icon} VERBATIM)
  list(APPEND pictures ${folder}/${desktop_id}.png)
endforeach()
add_custom_target(nolfa-icons ALL DEPENDS ${pictures})

install(FILES ${desktop_files}/${desktop_id}.desktop DESTINATION share/applications)
install(FILES ${metainfo} DESTINATION share/metainfo)
install(DIRECTORY ${CMAKE_BINARY_DIR}/share/icons DESTINATION share)
install(FILES ${icon} DESTINATION share/icons/hicolor/scalable/apps RENAME ${desktop_id}.svg)
install(FILES ${desktop_files}/${desktop_id}-symbolic.svg DESTINATION share/icons/hicolor/symbolic/apps)
install(FILES LICENSE DESTINATION share/doc/nolfa RENAME copyright)
install(FILES CHANGELOG.md DESTINATION share/doc/nolfa)

# Whoever installs has built; tests needn't be.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nolfa)
set(CPACK_PACKAGE_VENDOR "The Nolfa developers")
set(CPACK_PACKAGE_CONTACT "The Nolfa developers <developers@nolfa.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converts documents from and to Markdown")
set(CPACK_PACKAGE_DESCRIPTION "Nolfa converts Word, PDF, PowerPoint, Excel, Markdown and pictures into one another,
on the user's own machine, from a window or from the command line (nolfa-cli).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
configure_file(${CMAKE_SOURCE_DIR}/cmake/PackageDependencies.cmake.in ${CMAKE_BINARY_DIR}/PackageDependencies.cmake @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_BINARY_DIR}/PackageDependencies.cmake)
include(CPack)
