# The sources that tools/formgen makes from the tables of forms, in <build>/generated.
#
# Sets kormGenerated (every file) and kormGeneratedStamp; the target kormSources makes them.

find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)

set(kormGeneratedFolder ${PROJECT_BINARY_DIR}/generated)
set(formgen ${Python3_EXECUTABLE} -B tools/formgen)

# A new table or row can add a source file: then the list is asked for again.
file(GLOB formgenInputs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/formgen/*.py
     ${PROJECT_SOURCE_DIR}/src/*/forms.py)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${formgenInputs})

execute_process(COMMAND ${formgen} sources WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                OUTPUT_VARIABLE kormGenerated RESULT_VARIABLE formgenResult)
if(NOT formgenResult EQUAL 0)
    message(FATAL_ERROR "tools/formgen couldn't list the generated sources; its message stands above.")
endif()
string(STRIP "${kormGenerated}" kormGenerated)
string(REPLACE "\n" ";" kormGenerated "${kormGenerated}")
list(TRANSFORM kormGenerated PREPEND ${kormGeneratedFolder}/)

# formgen leaves a file alone whose content would be the same, so the stamp, and not the files, tells
# that it has run; a change to one table then compiles that table's sources only.
set(kormGeneratedStamp ${kormGeneratedFolder}/formgen.stamp)
add_custom_command(
    OUTPUT ${kormGeneratedStamp}
    BYPRODUCTS ${kormGenerated}
    COMMAND ${formgen} generate ${kormGeneratedFolder}
    COMMAND ${CMAKE_COMMAND} -E touch ${kormGeneratedStamp}
    DEPENDS ${formgenInputs}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Generating sources from the tables of forms"
    VERBATIM)
add_custom_target(kormSources DEPENDS ${kormGeneratedStamp})
