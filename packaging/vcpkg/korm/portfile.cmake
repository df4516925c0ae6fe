# Builds the tree that this file stands in: vcpkg install korm --overlay-ports=packaging/vcpkg
#
# LLVM's OpenMP runtime comes from the system (Debian: libomp-dev); vcpkg has none.

vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
vcpkg_find_acquire_program(PYTHON3)

cmake_path(ABSOLUTE_PATH CURRENT_PORT_DIR NORMALIZE OUTPUT_VARIABLE portFolder)
cmake_path(SET SOURCE_PATH NORMALIZE "${portFolder}/../../..")
set(target x86_64)
if(VCPKG_TARGET_ARCHITECTURE STREQUAL "x86")
    set(target ia32)
endif()

vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DKORM_DEVELOPER=OFF
        -DKORM_PYTHON=OFF
        -DKORM_TARGET=${target}
        -DPython3_EXECUTABLE=${PYTHON3}
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/korm)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENCE.md")
