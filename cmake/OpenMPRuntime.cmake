# The OpenMP runtime: LLVM's, for g++ builds as well, and exactly one.
#
# Why LLVM's: its allocator pair serves the per-thread scratch, a parallel call after fork() works in
# the child, and its threads follow the caller's rounding and flush modes. GNU's hangs after a fork and
# keeps the modes of the moment its threads were made; -DKORM_OPENMP=gnu is for those who have nothing else.
#
# Sets KORM_OPENMP_USED (llvm or gnu) and KORM_OPENMP_LIBRARY (what to link).
#
# The library is named by its full path and -fopenmp is kept from the linker: that switch would add GNU's
# runtime beside it. In LLVM's folder libgomp.so is a link to libomp.so, so that folder isn't searched either.

set(KORM_OPENMP_USED ${KORM_OPENMP})

set(gnuLosses "a child process after fork() must not make a parallel call, worker threads keep old rounding and \
flush modes, and ThreadSanitizer reports races that aren't there")

function(kormUseGnuOpenMP reason)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        message(FATAL_ERROR "${reason}\nGNU's runtime is no way out: ${CMAKE_CXX_COMPILER_ID} needs LLVM's.")
    endif()
    message(WARNING "${reason}\n*** Building on GNU's OpenMP runtime (libgomp) instead. "
                    "What is lost: ${gnuLosses}. ***")
    set(KORM_OPENMP_USED gnu PARENT_SCOPE)
endfunction()

if(KORM_OPENMP STREQUAL "llvm" AND KORM_TARGET STREQUAL "x86_64")
    file(GLOB llvmFolders /usr/lib/llvm-*/lib)
    list(SORT llvmFolders COMPARE NATURAL ORDER DESCENDING)
    find_library(KORM_LIBOMP NAMES libomp.so.5 omp PATHS ${llvmFolders} DOC "LLVM's OpenMP runtime")
    if(NOT KORM_LIBOMP)
        kormUseGnuOpenMP("LLVM's OpenMP runtime (libomp.so.5) isn't here: install libomp-dev.")
    endif()
elseif(KORM_OPENMP STREQUAL "llvm")
    # A 64-bit Debian can't install the 32-bit package beside its own (both claim one path), so it is
    # unpacked in the build folder.
    set(KORM_IA32_PACKAGES ${PROJECT_BINARY_DIR}/deps/ia32 CACHE PATH "Where 32-bit packages are unpacked")
    find_library(KORM_LIBOMP NAMES libomp.so.5 NO_DEFAULT_PATH DOC "LLVM's OpenMP runtime, 32 bits"
                 PATHS ${KORM_IA32_PACKAGES}/usr/lib/i386-linux-gnu /usr/lib/i386-linux-gnu)
    if(NOT KORM_LIBOMP)
        message(STATUS "Fetching LLVM's 32-bit OpenMP runtime")
        execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/fetch-omp-ia32 ${KORM_IA32_PACKAGES}
                        RESULT_VARIABLE fetched)
        find_library(KORM_LIBOMP NAMES libomp.so.5 NO_DEFAULT_PATH
                     PATHS ${KORM_IA32_PACKAGES}/usr/lib/i386-linux-gnu)
    endif()
    if(NOT KORM_LIBOMP)
        kormUseGnuOpenMP("LLVM's 32-bit OpenMP runtime couldn't be fetched (scripts/fetch-omp-ia32 says why).")
    endif()
endif()

if(KORM_OPENMP_USED STREQUAL "llvm")
    set(KORM_OPENMP_LIBRARY ${KORM_LIBOMP})
else()
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        message(FATAL_ERROR "KORM_OPENMP=gnu needs g++: ${CMAKE_CXX_COMPILER_ID} makes calls of LLVM's runtime.")
    endif()
    set(KORM_OPENMP_LIBRARY gomp)
    if(KORM_OPENMP STREQUAL "gnu")
        message(STATUS "GNU's OpenMP runtime: ${gnuLosses}.")
    endif()
endif()
message(STATUS "OpenMP runtime: ${KORM_OPENMP_USED} (${KORM_OPENMP_LIBRARY})")
