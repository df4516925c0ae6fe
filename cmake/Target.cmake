# KORM_TARGET: the instruction set and calling convention to build for.
#
# A parent project that has already enabled its languages decides by what it compiles for.

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(defaultTarget ia32)
else()
    set(defaultTarget x86_64)
endif()
set(KORM_TARGET ${defaultTarget} CACHE STRING "Target: x86_64 or ia32")
set_property(CACHE KORM_TARGET PROPERTY STRINGS x86_64 ia32)
if(NOT KORM_TARGET MATCHES "^(x86_64|ia32)$")
    message(FATAL_ERROR "KORM_TARGET is '${KORM_TARGET}': it must be x86_64 or ia32.")
endif()

# project() starts CMAKE_<LANG>_FLAGS from the _INIT variable, unless the user gave flags.
if(KORM_TARGET STREQUAL "ia32" AND NOT CMAKE_SIZEOF_VOID_P)
    foreach(language C CXX ASM)
        string(APPEND CMAKE_${language}_FLAGS_INIT " -m32")
        if(DEFINED CACHE{CMAKE_${language}_FLAGS} AND NOT "${CMAKE_${language}_FLAGS}" MATCHES "-m32")
            set(CMAKE_${language}_FLAGS "-m32 ${CMAKE_${language}_FLAGS}" CACHE STRING "Flags for ${language}" FORCE)
        endif()
    endforeach()
endif()
