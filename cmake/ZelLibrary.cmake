# SPDX-License-Identifier: MIT

# zel_shared_library(NAME) sets the properties that all shared libraries have. The libraries for each major version of
# Qt have their own names, so that both can be installed. CMake reports an error to a host that mixes the two.
function(zel_shared_library name)
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${name}${ZEL_SUFFIX}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${ZEL_SOVERSION}
    )
    set_property(TARGET ${name} PROPERTY INTERFACE_QT_MAJOR_VERSION ${QT_VERSION_MAJOR})
    target_compile_features(${name} PUBLIC cxx_std_17)
    add_library(ZelChipGui::${name} ALIAS ${name})
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    target_link_options(${name} PRIVATE LINKER:--version-script=${exports})
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${exports})
endfunction()
