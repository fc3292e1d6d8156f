# Debian packages. `./dev package` makes and checks them; the preset `package` sets the prefix /usr.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The Vortel Workbench Makers")
set(CPACK_PACKAGE_CONTACT "The Vortel Workbench Makers <bugs@vortel.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://vortel.example/)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL ${editor_package} ${workbench_package} ${dev_package})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE ${editor_package})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where the libraries of the first package are while the second's needs are looked up.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# A macro, for CPack reads variables of this scope, their names in capitals.
macro(vortel_package name section summary description)
  string(TOUPPER ${name} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${description}")
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${ARGN}")
  string(REPLACE ";" ", " CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${ARGN}")
endmacro()

# Greek letters in texts, and PostScript.
vortel_package(${editor_package} libs "schematic editor as a plug-in"
"A canvas that draws a circuit model and turns what the user does into
calls on the model, for applications that host it, and a stand-in for
the component framework that joins the two."
  fonts-urw-base35 poppler-utils)
# Pictures of elements and icons are SVG.
set(svg_icons libqt5svg5)
set(dev_needs qtbase5-dev libqt5svg5-dev)
if(VORTEL_QT EQUAL 6)
  set(svg_icons libqt6svg6)
  set(dev_needs qt6-base-dev qt6-svg-dev)
endif()
vortel_package(${workbench_package} electronics "draw and simulate circuits"
"Draws schematics of electronic circuits: a palette of elements, wires
that route themselves and stay connected, names and values beside the
elements, annotations, and pictures as SVG, PDF, PostScript, PNG and
JPEG. With ngspice it simulates what is drawn and shows the curves.
All that can be exported can be exported from the command line, too."
  "${editor_package} ${same_version}" ${svg_icons})
string(TOUPPER ${workbench_package} key)
set(CPACK_DEBIAN_${key}_PACKAGE_RECOMMENDS ngspice)
vortel_package(${dev_package} libdevel "schematic editor as a plug-in, for building hosts"
"The interfaces between the schematic editor and the application that
hosts it, the headers of the component framework, files for CMake, a
guide and a minimal host to start from."
  "${editor_package} ${same_version}" ${dev_needs})

include(CPack)
