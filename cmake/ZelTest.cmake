# SPDX-License-Identifier: MIT

set(ZEL_TEST_ENVIRONMENT
    QT_QPA_PLATFORM=offscreen
    QT_QPA_PLATFORMTHEME=
    LC_ALL=C.UTF-8
    LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1
)

# zel_register_test(NAME [ARGUMENTS...]) registers a test program with CTest; it runs offscreen.
function(zel_register_test name)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
    add_test(NAME ${name} COMMAND ${name} ${ARGN})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${ZEL_TEST_ENVIRONMENT}")
endfunction()

# zel_register_on_demand(NAME...) registers test programs once more: their drawings get graphics items on demand.
function(zel_register_on_demand)
    foreach(name IN LISTS ARGN)
        add_test(NAME ${name}_itemsondemand COMMAND ${name})
        set_tests_properties(${name}_itemsondemand PROPERTIES TIMEOUT 300 ENVIRONMENT
            "${ZEL_TEST_ENVIRONMENT};ZEL_TEST_ITEMS_ON_DEMAND=1")
    endforeach()
endfunction()

# zel_add_test(NAME SOURCES... [LIBS ...]) adds a Qt Test program.
function(zel_add_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE zel_options zel_testsupport Qt::Test ${arg_LIBS})
    zel_register_test(${name})
endfunction()
