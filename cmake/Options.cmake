# The options, and the flags that every file of the library and of its tests is compiled with.

option(KORM_DEVELOPER "Build tests, benchmarks and examples as well" ${PROJECT_IS_TOP_LEVEL})
option(KORM_WERROR "Treat compiler warnings as errors" OFF)
set(KORM_OPENMP llvm CACHE STRING "OpenMP runtime: llvm or gnu")
set_property(CACHE KORM_OPENMP PROPERTY STRINGS llvm gnu)
set(KORM_SANITIZE "" CACHE STRING "Sanitizers for everything built, as -fsanitize= takes them")
option(KORM_COVERAGE "Count executed lines and branches (gcov)" OFF)

if(NOT KORM_OPENMP MATCHES "^(llvm|gnu)$")
    message(FATAL_ERROR "KORM_OPENMP is '${KORM_OPENMP}': it must be llvm or gnu.")
endif()
if(KORM_TARGET STREQUAL "ia32" AND NOT CMAKE_SIZEOF_VOID_P EQUAL 4)
    message(FATAL_ERROR "KORM_TARGET=ia32, but the compiler makes 64-bit code here: add -m32 to its flags.")
elseif(KORM_TARGET STREQUAL "x86_64" AND NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    message(FATAL_ERROR "KORM_TARGET=x86_64, but the compiler makes 32-bit code here.")
endif()

get_property(hasManyConfigurations GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT hasManyConfigurations)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# Results must be the same to the bit on both targets, for both compilers and at every level of
# optimisation: SSE arithmetic (32-bit code would use x87 registers otherwise), no fused multiply and
# add. The instruction set ends with SSSE3 on purpose.
add_library(kormFlags INTERFACE)
target_compile_features(kormFlags INTERFACE cxx_std_20)
target_compile_options(kormFlags INTERFACE -mssse3 -ffp-contract=off -fno-math-errno -Wall -Wextra -Wconversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" OR KORM_TARGET STREQUAL "ia32")
    target_compile_options(kormFlags INTERFACE -mfpmath=sse)
endif()
if(KORM_TARGET STREQUAL "ia32")
    # A parent project that compiles with -m32 need not have enabled the assembler.
    target_compile_options(kormFlags INTERFACE $<$<COMPILE_LANGUAGE:ASM>:-m32>)
endif()
if(KORM_WERROR)
    target_compile_options(kormFlags INTERFACE -Werror)
endif()
if(KORM_SANITIZE OR KORM_COVERAGE)
    # Kernels are inlined deep into their callers for speed alone. Checked and counted builds keep them as functions:
    # a hundredth of the code to instrument, and each line is counted once. Compilers' own headers spell it with underscores.
    target_compile_definitions(kormFlags INTERFACE always_inline=unused flatten=unused)
endif()
if(KORM_SANITIZE)
    # (ThreadSanitizer needs some optimisation: without it the kernels' accesses are small copies by function, and of
    # functions called from a shared library it is told to look away, for the OpenMP runtime's sake.)
    # An undefined value that goes unnoticed would be a pass, so every finding ends the program.
    target_compile_options(kormFlags INTERFACE -g -fno-omit-frame-pointer -fsanitize=${KORM_SANITIZE}
                                               -fno-sanitize-recover=all)
    target_link_options(kormFlags INTERFACE -fsanitize=${KORM_SANITIZE})
endif()
if(KORM_COVERAGE)
    target_compile_options(kormFlags INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(kormFlags INTERFACE --coverage)
endif()
