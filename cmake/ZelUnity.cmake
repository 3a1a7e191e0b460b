# SPDX-License-Identifier: MIT

# Parsing Qt's headers is most of the work of a first build. With ZEL_UNITY the sources of a library are compiled several
# at a time, which takes a third of the processor time; a change of one source then compiles its neighbours as well.
# Without it, each source shows whether it includes what it uses.
option(ZEL_UNITY "Compile the sources of the libraries several at a time" OFF)

# zel_unity(TARGET...): compiles the sources of these targets eight at a time, if ZEL_UNITY is set.
function(zel_unity)
    if(ZEL_UNITY)
        set_target_properties(${ARGN} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    endif()
endfunction()
