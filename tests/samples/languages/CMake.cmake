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
