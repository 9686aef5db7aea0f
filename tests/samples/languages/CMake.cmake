# The library and its tests.
#[[ Options come
    first. ]]
cmake_minimum_required(VERSION 3.25)
project(demo LANGUAGES CXX)

option(DEMO_TESTS "Build the \"tests\"" ON)
add_library(demo STATIC demo.cpp)
target_include_directories(demo PUBLIC ${CMAKE_SOURCE_DIR})

if(DEMO_TESTS AND NOT WIN32)
    foreach(name IN LISTS names)
        message(STATUS "test ${name}") # one each
    endforeach()
endif()
set(names a b CACHE STRING "all" FORCE)
if(a IN_LIST names AND "1.2" VERSION_GREATER_EQUAL 1.1 AND IS_DIRECTORY $ENV{HOME} OR POLICY CMP0074)
    foreach(one two IN ZIP_LISTS names others)
        set(found ${one} PARENT_SCOPE) # both
    endforeach()
endif()
add_library(demo_alias ALIAS demo)
#[=[ only its first line
is a comment ]=]
