# Runs a port of vcpkg with stand-ins for vcpkg's functions:
# cmake -DPORT=NAME -DSOURCE=TREE -DBUILD=BUILD -DWORK=FOLDER -DGENERATOR=GENERATOR -DLIBDIR=LIBDIR -P vcpkg.cmake
#
# The port's options are configured with, in a folder of its own; what is installed comes from BUILD, which saves compiling.
cmake_minimum_required(VERSION 3.25)

set(CURRENT_PORT_DIR ${SOURCE}/packaging/vcpkg/${PORT})
set(CURRENT_PACKAGES_DIR ${WORK}/packages)
set(VCPKG_TARGET_ARCHITECTURE x64)

function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0 OR output MATCHES "Manually-specified variables")
        message(FATAL_ERROR "FAILED: ${ARGV}\n${output}")
    endif()
endfunction()

function(vcpkg_check_linkage)
    if(NOT "${ARGV}" STREQUAL "ONLY_DYNAMIC_LIBRARY")
        message(FATAL_ERROR "FAILED: korm is a dynamic library alone")
    endif()
endfunction()

function(vcpkg_find_acquire_program name)
    find_program(${name} python3 REQUIRED)
    set(${name} ${${name}} PARENT_SCOPE)
endfunction()

function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 port "" "SOURCE_PATH" "OPTIONS")
    if(DEFINED port_UNPARSED_ARGUMENTS OR NOT EXISTS ${port_SOURCE_PATH}/CMakeLists.txt)
        message(FATAL_ERROR "FAILED: the port configures '${port_SOURCE_PATH}' with ${ARGV}")
    endif()
    run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${port_SOURCE_PATH} -B ${WORK}/build -DCMAKE_BUILD_TYPE=Release ${port_OPTIONS})
    file(STRINGS ${WORK}/build/CMakeCache.txt developer REGEX "^KORM_DEVELOPER:BOOL=OFF$")
    if(NOT developer)
        message(FATAL_ERROR "FAILED: the port builds tests as well")
    endif()
endfunction()

function(vcpkg_cmake_install)
    run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${CURRENT_PACKAGES_DIR})
endfunction()

function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 port "" "CONFIG_PATH" "")
    string(REGEX REPLACE "^lib/" "${LIBDIR}/" folder ${port_CONFIG_PATH})
    if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/${folder}/kormConfig.cmake)
        message(FATAL_ERROR "FAILED: there is no kormConfig.cmake in ${folder}")
    endif()
endfunction()

function(vcpkg_fixup_pkgconfig)
endfunction()

function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 port "" "" "FILE_LIST")
    file(INSTALL ${port_FILE_LIST} DESTINATION ${CURRENT_PACKAGES_DIR}/share/${PORT} RENAME copyright)
endfunction()

# In a port this is the port's own folder.
set(CMAKE_CURRENT_LIST_DIR ${CURRENT_PORT_DIR})
include(${CURRENT_PORT_DIR}/portfile.cmake)
