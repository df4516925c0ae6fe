# The site of the documentation: the target korm_docs makes it in <build>/docs/html, the component "docs" installs it.

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()
find_program(KORM_DOXYGEN NAMES doxygen)
find_file(KORM_DOXYGEN_THEME doxygen-awesome.css PATHS /usr/share/doxygen-awesome-css NO_DEFAULT_PATH)
if(NOT KORM_DOXYGEN OR NOT KORM_DOXYGEN_THEME)
    message(STATUS "Docs: no target korm_docs, it needs Doxygen and a theme (Debian: doxygen, doxygen-awesome-css)")
    return()
endif()
add_custom_target(korm_docs COMMAND ${Python3_EXECUTABLE} -B tools/docs site ${PROJECT_BINARY_DIR}/docs
                  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMENT "Making the site of the documentation" VERBATIM)
if(KORM_INSTALL)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs EXCLUDE_FROM_ALL)
endif()
