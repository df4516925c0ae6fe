# libkorm.so, from generated sources and the few that are written by hand.
#
# The objects are a target of their own, so that a test can link them and reach what the library hides.

file(GLOB handWritten CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*/*.cpp)

add_library(kormObjects OBJECT ${kormGenerated} ${kormGeneratedStamp} ${handWritten})
target_link_libraries(kormObjects PRIVATE kormFlags)
target_include_directories(kormObjects PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src
                                               ${PROJECT_SOURCE_DIR}/core ${kormGeneratedFolder})
target_compile_definitions(kormObjects PRIVATE $<$<STREQUAL:${KORM_OPENMP_USED},gnu>:KORM_GNU_OPENMP>)
target_compile_options(kormObjects PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>)
set_target_properties(kormObjects PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_EXTENSIONS OFF
                      CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A chain of tests stays one of branches. Turned into arithmetic it needs registers that an entry function
    # would have to save first: four instructions in the way to the first element of a 3 by 3 matrix.
    target_compile_options(kormObjects PRIVATE
                           $<$<COMPILE_LANGUAGE:CXX>:--param=logical-op-non-short-circuit=0>)
    # No second copies of the triangular loops of eigenproblems, cut where they meet the diagonal: an eighth of their code
    # that gains no time.
    set(eigenproblems ${kormGenerated})
    list(FILTER eigenproblems INCLUDE REGEX "/(general|symmetric)_")
    set_source_files_properties(${eigenproblems} PROPERTIES COMPILE_OPTIONS -fno-split-loops)
endif()
if(KORM_TARGET STREQUAL "ia32")
    # Callers may come with a stack that is aligned to 4 bytes only.
    target_compile_options(kormObjects PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-mstackrealign>)
endif()
# The one file with OpenMP directives: the driver of every form goes through it.
set_source_files_properties(${PROJECT_SOURCE_DIR}/src/entry/parallel.cpp PROPERTIES COMPILE_OPTIONS -fopenmp)

# The project's version has one place, CMakeLists.txt.
set_source_files_properties(${PROJECT_SOURCE_DIR}/src/entry/version.cpp PROPERTIES COMPILE_DEFINITIONS
    "KORM_VERSION=\"${PROJECT_VERSION}\";KORM_VERSION_MAJOR=${PROJECT_VERSION_MAJOR};\
KORM_VERSION_MINOR=${PROJECT_VERSION_MINOR};KORM_VERSION_PATCH=${PROJECT_VERSION_PATCH}")

set(exportsMap ${PROJECT_SOURCE_DIR}/src/entry/exports.map)
add_library(korm SHARED $<TARGET_OBJECTS:kormObjects>)
add_library(korm::korm ALIAS korm)
target_include_directories(korm INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                          $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
# Not $<LINK_ONLY:kormFlags>: an installed library knows nothing of the flags of this build.
target_link_libraries(korm PRIVATE korcore ${KORM_OPENMP_LIBRARY})
kormSharedLibrary(korm ${exportsMap})
