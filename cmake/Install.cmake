# Header, libraries, CMake package and pkg-config file.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# As a subproject, installing is the parent's business.
option(KORM_INSTALL "Install korm with the project it is built in" ${PROJECT_IS_TOP_LEVEL})
if(NOT KORM_INSTALL)
    return()
endif()

set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/korm)
install(TARGETS korm korcore EXPORT kormTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/korm.h ${PROJECT_SOURCE_DIR}/core/korcore.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${kormGeneratedFolder}/korm.json ${PROJECT_SOURCE_DIR}/tools/formgen/korm.schema.json
        DESTINATION ${CMAKE_INSTALL_DATADIR}/korm)
install(DIRECTORY ${kormGeneratedFolder}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR})
install(EXPORT kormTargets NAMESPACE korm:: DESTINATION ${packageFolder})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/kormConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/kormConfig.cmake INSTALL_DESTINATION ${packageFolder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kormConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kormConfig.cmake ${PROJECT_BINARY_DIR}/kormConfigVersion.cmake
        DESTINATION ${packageFolder})

# The prefix follows from the file's own place, so the installed tree can be moved.
file(RELATIVE_PATH upToPrefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/korm.pc.in ${PROJECT_BINARY_DIR}/korm.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/korm.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
