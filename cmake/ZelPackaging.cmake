# SPDX-License-Identifier: MIT

# CPack makes a Debian package of each component of the installation, and a source archive:
#     cpack -G DEB                                  in the build directory
#     cmake --build . --target package_source
set(maintainer "The zelchipgui maintainers <maintainers@zelchipgui.mirn.org>")
set(description "The floorplan of a programmable device and the resources of a design, as a
widget that other programs embed. Resources are dragged onto sites while the
probable ones light up; the changes go to the program as Tcl commands.
Drawings are SVG. This build is for Qt ${QT_VERSION_MAJOR}.")

set(debian ${CMAKE_CURRENT_BINARY_DIR}/debian) # files generated for the packages
set(soname "${ZEL_SOVERSION}")
if(ZEL_SUFFIX)
    set(soname "${ZEL_SUFFIX}-${ZEL_SOVERSION}")
endif()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzelchipgui${soname})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzelchipgui${ZEL_SUFFIX}-dev)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME zelchip${ZEL_SUFFIX})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION electronics)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chip-planning view")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${description}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${description}

This package has what a program needs to be built with it.")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "zelchip shows the floorplan of a programmable device and the resources of a
design, which are dragged onto sites. It has a Tcl console, a journal that
brings the work back after a crash, and a sample device to begin with. This
build is for Qt ${QT_VERSION_MAJOR}.")

# A development package requires exactly the libraries of its build; the headers of Qt come with Qt's own package, and
# the static engine needs the reader of tables.
set(CPACK_COMPONENTS_ALL runtime development program)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_PROGRAM_DEPENDS runtime)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(qt_headers_5 qtbase5-dev)
set(qt_headers_6 qt6-base-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${qt_headers_${QT_VERSION_MAJOR}} (>= ${QT_VERSION_MAJOR}.${QT_VERSION_MINOR}), libcsv-dev"
)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian}/shlibs ${debian}/triggers)

set(CPACK_PACKAGE_NAME zelchipgui${ZEL_SUFFIX})
set(CPACK_PACKAGE_CONTACT ${maintainer})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_GENERATOR DEB)

# The files that every Debian package needs, and what differs for Debian only.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${debian}/changelog.Debian
    "zelchipgui${ZEL_SUFFIX} (${PROJECT_VERSION}-1) unstable; urgency=medium\n\n"
    "  * Release ${PROJECT_VERSION}.\n\n"
    " -- ${maintainer}  ${date}\n"
)
file(WRITE ${debian}/triggers "activate-noawait ldconfig\n")
file(WRITE ${debian}/shlibs "")
foreach(library zelplatform zelchipgui)
    file(APPEND ${debian}/shlibs "lib${library}${ZEL_SUFFIX} ${ZEL_SOVERSION} "
        "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (>= ${PROJECT_VERSION})\n")
endforeach()
configure_file(LICENSE ${debian}/copyright COPYONLY)
configure_file(cmake/debian.cmake.in debian.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_BINARY_DIR}/debian.cmake)

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME zelchipgui-${PROJECT_VERSION})
string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" source "${PROJECT_SOURCE_DIR}")
set(CPACK_SOURCE_IGNORE_FILES
    "^${source}/\\.git$"
    "^${source}/\\.git/"
    "^${source}/build/"
    "^${source}/(zelchip|out)\\.png$"
    "\\.user$"
    "/zelsvg\\.temp$"
)
include(CPack)
