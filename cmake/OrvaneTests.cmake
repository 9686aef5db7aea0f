# GoogleTest is built from Debian's source package, natively and for Windows alike, with the flags of
# the program (no exceptions, no run-time types).
enable_testing()
set(INSTALL_GTEST OFF CACHE INTERNAL "")
set(BUILD_GMOCK OFF CACHE INTERNAL "")
set(gtest_disable_pthreads OFF CACHE INTERNAL "")
add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
target_compile_options(gtest PRIVATE -fno-rtti)
target_compile_options(gtest_main PRIVATE -fno-rtti)

# The command that the tests run.
add_executable(speaker tests/program/Speaker.cpp)
target_link_options(speaker PRIVATE $<$<BOOL:${WIN32}>:-static>)
set_target_properties(speaker PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")

# What the tests share. One of its files alone knows the path of that command: all others compile to the
# same object in every checkout, so that one build cache serves them all.
file(GLOB support CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/support/*.cpp")
add_library(orvane_test_support STATIC ${support})
target_include_directories(orvane_test_support PRIVATE "${CMAKE_SOURCE_DIR}/tests")
target_link_libraries(orvane_test_support PUBLIC orvane_base orvane_base_platform)
set_source_files_properties(tests/support/Speaker.cpp PROPERTIES
    COMPILE_DEFINITIONS ORVANE_SPEAKER="$<TARGET_FILE:speaker>")

function(orvane_use_speaker name)
    add_dependencies(${name} speaker)
endfunction()

# core_NAME_tests from tests/core/NAME: the portable half, on every platform.
foreach(name base settings syntax document viewbase view binary app faults)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/core/${name}/*.cpp")
    # The faults are made in all of the program, on a disk of their own.
    string(REPLACE faults app half ${name})
    if(sources)
        orvane_test(core_${name}_tests "${sources}" orvane_${half} orvane_${half}_platform)
    endif()
endforeach()
orvane_use_speaker(core_document_tests)
orvane_use_speaker(core_app_tests)
# So that EditLineOpeningTests can count them.
target_link_options(core_view_tests PRIVATE LINKER:--wrap=_ZN8EditLine4OpenER9TextStorej)
# These read what ships with the program, and the samples.
foreach(name syntax app)
    target_compile_definitions(core_${name}_tests PRIVATE ORVANE_SOURCE="${CMAKE_SOURCE_DIR}")
endforeach()
set_source_files_properties("${CMAKE_SOURCE_DIR}/tests/core/view/ScriptTests.cpp"
                            "${CMAKE_SOURCE_DIR}/tests/app/ScriptTests.cpp"
                            "${CMAKE_SOURCE_DIR}/tests/view/ScriptPaintTests.cpp"
                            PROPERTIES COMPILE_DEFINITIONS "ORVANE_SOURCE=\"${CMAKE_SOURCE_DIR}\"")

if(WIN32)
    # In-process tests of windows, and tests that drive the built program.
    file(GLOB view_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/view/*.cpp")
    file(GLOB app_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/app/*.cpp")
    if(view_sources)
        orvane_test(view_tests "${view_sources};$<TARGET_OBJECTS:orvane_resources>" orvane_app orvane_app_platform)
        target_include_directories(view_tests PRIVATE "${CMAKE_SOURCE_DIR}/res")
        target_link_libraries(view_tests PRIVATE oleaut32)
        # So that OptionsTest can record them.
        target_link_options(view_tests PRIVATE LINKER:--wrap=_Z14RebuildDrawing15DrawingResource)
        orvane_use_speaker(view_tests)
    endif()
    if(app_sources)
        orvane_test(app_tests "${app_sources}" orvane_base orvane_base_platform ntdll)
        target_include_directories(app_tests PRIVATE "${CMAKE_SOURCE_DIR}/res")
        target_link_libraries(app_tests PRIVATE oleaut32)
        add_dependencies(app_tests orvane)
        orvane_use_speaker(app_tests)
    endif()
endif()
