# SPDX-License-Identifier: MIT

# `cmake --install` has three components: the runtime libraries, the development files for hosts, and the program
# zelchip. All paths in the installed files are relative to the files themselves, so that the prefix can be moved.
include(CMakePackageConfigHelpers)

set(zel_headers ${CMAKE_INSTALL_INCLUDEDIR}/zelchipgui${ZEL_SUFFIX})
set(zel_package ZelChipGui${ZEL_SUFFIX})
set(zel_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/${zel_package})

# The libraries and the program find the libraries relative to themselves, wherever the prefix is.
file(RELATIVE_PATH zel_libraries_from_program ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(zelplatform zelchipgui PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(zelchip PROPERTIES INSTALL_RPATH "$ORIGIN/${zel_libraries_from_program}")

install(TARGETS zelplatform zelchipgui zelengine
    EXPORT ${zel_package}
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    FILE_SET HEADERS DESTINATION ${zel_headers} COMPONENT development
    FILE_SET generated_headers DESTINATION ${zel_headers} COMPONENT development
    INCLUDES DESTINATION ${zel_headers} # for hosts whose CMake does not know file sets
)
install(TARGETS zelchip RUNTIME COMPONENT program)
install(EXPORT ${zel_package}
    NAMESPACE ZelChipGui::
    FILE ${zel_package}Targets.cmake
    DESTINATION ${zel_package_folder}
    COMPONENT development
)
configure_package_config_file(cmake/ZelChipGuiConfig.cmake.in ${zel_package}Config.cmake
    INSTALL_DESTINATION ${zel_package_folder}
    NO_SET_AND_CHECK_MACRO
)
# Before 1.0 every minor version may change the programming interface.
set(compatibility SameMajorVersion)
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(compatibility SameMinorVersion)
endif()
write_basic_package_version_file(${zel_package}ConfigVersion.cmake COMPATIBILITY ${compatibility})
install(
    FILES
        ${CMAKE_CURRENT_BINARY_DIR}/${zel_package}Config.cmake
        ${CMAKE_CURRENT_BINARY_DIR}/${zel_package}ConfigVersion.cmake
    DESTINATION ${zel_package_folder}
    COMPONENT development
)

# zel_install_pkgconfig(LIBRARY DESCRIPTION REQUIRED-MODULE... [LIBS LINKER-OPTION...]) installs the pkg-config file of
# a library.
function(zel_install_pkgconfig library description)
    cmake_parse_arguments(arg "" "" "LIBS" ${ARGN})
    set(name ${library}${ZEL_SUFFIX})
    list(JOIN arg_UNPARSED_ARGUMENTS ", " requires)
    list(JOIN arg_LIBS " " libs)
    file(RELATIVE_PATH prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
    string(REGEX REPLACE "/$" "" prefix ${prefix})
    set(headers zelchipgui${ZEL_SUFFIX})
    configure_file(cmake/zel.pc.in ${name}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development
    )
endfunction()
set(platform_module "zelplatform${ZEL_SUFFIX} = ${PROJECT_VERSION}")
zel_install_pkgconfig(zelplatform "Platform services of the chip-planning view"
    "${ZEL_QT}Widgets >= ${QT_VERSION_MAJOR}.${QT_VERSION_MINOR}"
)
zel_install_pkgconfig(zelchipgui "${PROJECT_DESCRIPTION}" ${platform_module})
zel_install_pkgconfig(zelengine "Reference engine of the chip-planning view" ${platform_module} LIBS -lcsv) # static
