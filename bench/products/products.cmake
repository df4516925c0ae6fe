# korm_bench_products: products against Eigen, and against GLM, cglm and OpenBLAS where they are installed. It needs
# no benchmark library, so that it runs on every target.

if(NOT Eigen3_FOUND)
    message(STATUS "korm_bench_products is left out: it needs Eigen (Debian: libeigen3-dev)")
    return()
endif()

add_executable(korm_bench_products EXCLUDE_FROM_ALL
    products/main.cpp products/problem.cpp products/results.cpp products/arrays.cpp products/streams.cpp
    products/singles.cpp products/vectors.cpp products/threads.cpp)
target_link_libraries(korm_bench_products PRIVATE kormFlags korm Eigen3::Eigen ${KORM_OPENMP_LIBRARY})
set_source_files_properties(products/threads.cpp PROPERTIES COMPILE_OPTIONS -fopenmp)
set_target_properties(korm_bench_products PROPERTIES ENABLE_EXPORTS ON)
set_source_files_properties(products/main.cpp PROPERTIES COMPILE_DEFINITIONS "${buildFacts}")

include(CheckCXXSourceCompiles)
function(productsPeer name library code package)
    set(CMAKE_REQUIRED_LIBRARIES ${library})
    if(NOT KORM_BENCH_HAS_${name})
        unset(KORM_BENCH_HAS_${name} CACHE)  # it may have been installed since
    endif()
    check_cxx_source_compiles("${code}" KORM_BENCH_HAS_${name})
    if(KORM_BENCH_HAS_${name})
        target_compile_definitions(korm_bench_products PRIVATE KORM_BENCH_${name})
        target_link_libraries(korm_bench_products PRIVATE ${library})
    else()
        message(STATUS "korm_bench_products goes without ${name}: not found for ${KORM_TARGET} (Debian: ${package})")
    endif()
endfunction()
productsPeer(GLM "" "#include <glm/glm.hpp>\nint main() { return static_cast<int>(glm::mat3(1)[0][1]);}" libglm-dev)
productsPeer(CGLM "" "#include <cglm/cglm.h>\nint main() { mat3 m; glm_mat3_identity(m); return 0;}" libcglm-dev)
productsPeer(OPENBLAS openblas
    "#include <cblas.h>\nextern \"C\" char* openblas_get_corename(void);\nint main() { return openblas_get_corename()[0];}"
    libopenblas-dev)
