# Read by ctest whenever it starts: makes a test of each suite that `program` lists, so that none can be left out.
# Large suites are cut into shards, which run side by side. Tests are labelled with their program's name.
#
# Given by kormTests(): program, prefix (of the tests' names), threads (a regular expression: suites with that label).

cmake_policy(VERSION 3.25)
set(shardSize 500)  # tests; a few seconds, where each is about one form

get_filename_component(programName ${program} NAME)
if(NOT EXISTS ${program})
    add_test(${programName}.not_built ${program})  # fails, as it should
    return()
endif()
execute_process(COMMAND ${program} --gtest_list_tests OUTPUT_VARIABLE list RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    add_test(${programName}.not_listed ${program} --gtest_list_tests)
    return()
endif()

# "Forms/Results." and "Results/0." are instances of one suite; tests of a suite are indented below it.
string(REGEX REPLACE "[[;]|]" "" list "${list}")
string(REPLACE "\n" ";" lines "${list}")
set(suites)
foreach(line IN LISTS lines)
    if(line MATCHES "^([A-Za-z0-9_]+/)?([A-Za-z_][A-Za-z0-9_]*)(/[0-9]+)?\\.")
        set(suite ${CMAKE_MATCH_2})
        if(NOT suite IN_LIST suites)
            list(APPEND suites ${suite})
            set(${suite}_tests 0)
            set(${suite}_filter)
        endif()
        string(APPEND ${suite}_filter ":${CMAKE_MATCH_0}*")
    elseif(line MATCHES "^  ")
        math(EXPR ${suite}_tests "${${suite}_tests} + 1")
    elseif(NOT line STREQUAL "")
        add_test("${programName}.not_understood: ${line}" ${CMAKE_COMMAND} -E false)
    endif()
endforeach()

foreach(suite IN LISTS suites)
    string(SUBSTRING "${${suite}_filter}" 1 -1 filter)
    math(EXPR shards "(${${suite}_tests} + ${shardSize} - 1) / ${shardSize}")
    foreach(shard RANGE 1 ${shards})
        set(name ${prefix}${suite})
        if(shards GREATER 1)
            string(APPEND name .${shard}of${shards})
        endif()
        math(EXPR index "${shard} - 1")
        add_test(${name} ${program} --gtest_brief=1 --gtest_filter=${filter})
        set(labels ${programName})
        if(suite MATCHES "${threads}")
            list(APPEND labels threads)
        endif()
        set_tests_properties(${name} PROPERTIES LABELS "${labels}"
                             ENVIRONMENT "GTEST_TOTAL_SHARDS=${shards};GTEST_SHARD_INDEX=${index}")
    endforeach()
endforeach()
