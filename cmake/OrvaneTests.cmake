# GoogleTest is built from Debian's source package, natively and for Windows alike, with the flags of
# the program (no exceptions, no run-time types).
enable_testing()
set(INSTALL_GTEST OFF CACHE INTERNAL "")
set(BUILD_GMOCK OFF CACHE INTERNAL "")
set(gtest_disable_pthreads OFF CACHE INTERNAL "")
add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
target_compile_options(gtest PRIVATE -fno-rtti)
target_compile_options(gtest_main PRIVATE -fno-rtti)

# core_NAME_tests from tests/core/NAME: the portable half, on every platform.
foreach(name base settings syntax document view binary app)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/core/${name}/*.cpp")
    if(sources)
        orvane_test(core_${name}_tests "${sources}" orvane_${name} orvane_${name}_platform)
    endif()
endforeach()

if(WIN32)
    # In-process tests of windows, and tests that drive the built program.
    file(GLOB view_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/view/*.cpp")
    file(GLOB app_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/app/*.cpp")
    if(view_sources)
        orvane_test(view_tests "${view_sources};$<TARGET_OBJECTS:orvane_resources>" orvane_app orvane_app_platform)
        target_include_directories(view_tests PRIVATE "${CMAKE_SOURCE_DIR}/res")
    endif()
    if(app_sources)
        orvane_test(app_tests "${app_sources}" orvane_base orvane_base_platform)
        target_include_directories(app_tests PRIVATE "${CMAKE_SOURCE_DIR}/res")
        add_dependencies(app_tests orvane)
    endif()
endif()
