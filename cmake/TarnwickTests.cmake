# How the tests' own code is compiled: it shall be built soon rather than run soon, the layers under it stay as they are. As
# code of libraries, so that it shares the helpers' precompiled headers.
add_library(tarnwick_test_code INTERFACE)
target_compile_options(tarnwick_test_code INTERFACE $<$<CONFIG:Release>:-O0> -fPIC)

# tarnwick_tests(<folder> MAIN <plain|gui|widgets> [LINK <library>...])
#
# The test binary <folder>_tests made of the folder's *_test.cpp files (in its folders too) and its layer's library, with one
# of the test mains of tests/support, registered as one test. Its results are also written as JSON into tests/outcomes/.
function(tarnwick_tests folder)
    cmake_parse_arguments(PARSE_ARGV 1 test "" "MAIN" "LINK")
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*_test.cpp")
    if(NOT sources)
        return()
    endif()
    file(GLOB_RECURSE helpers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    list(REMOVE_ITEM helpers ${sources})

    set(target ${folder}_tests)
    add_executable(${target} ${sources} ${helpers})
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}") # helpers beside the tests
    target_link_libraries(${target} PRIVATE ${test_LINK} tarnwick_test_main_${test_MAIN} tarnwick_test_code GTest::gmock)
    tarnwick_precompile(${target} test_${test_MAIN})
    tarnwick_together(${target})
    add_test(NAME ${target}
             COMMAND ${target} --gtest_brief=1
                     --gtest_output=json:${CMAKE_BINARY_DIR}/tests/outcomes/${target}.json)
    set_tests_properties(${target} PROPERTIES TIMEOUT 600)
    if(test_MAIN STREQUAL "widgets")
        # They share the display's clipboard: what one copies another would paste.
        set_tests_properties(${target} PROPERTIES RESOURCE_LOCK clipboard)
    endif()
endfunction()
