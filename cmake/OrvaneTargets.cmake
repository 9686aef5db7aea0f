# How the parts of the program are built: one library for the portable half of a folder
# (src/NAME/*.cpp) and one for its platform half (src/NAME/win32 or src/NAME/posix).

if(WIN32)
    set(ORVANE_PLATFORM win32)
else()
    set(ORVANE_PLATFORM posix)
endif()

add_library(orvane_options INTERFACE)
target_include_directories(orvane_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(orvane_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -fno-exceptions -fno-rtti)
if(ORVANE_WERROR)
    target_compile_options(orvane_options INTERFACE -Werror)
endif()
if(WIN32)
    # What nothing calls is left out of the program. Not -fdata-sections as well: g++ then puts globals that begin as
    # zeros into the file, and hardly any table is unused.
    target_compile_options(orvane_options INTERFACE -ffunction-sections)
    target_link_options(orvane_options INTERFACE LINKER:--gc-sections)
    target_compile_definitions(orvane_options INTERFACE UNICODE _UNICODE WINVER=0x0A00 _WIN32_WINNT=0x0A00)
    # The library of the stack protector, which the product is compiled with (orvane_protect).
    target_link_options(orvane_options INTERFACE -static -fstack-protector-strong)
    set(ORVANE_SYSTEM_LIBRARIES user32 gdi32 comctl32 comdlg32 shell32 shlwapi ole32)
else()
    set(ORVANE_SYSTEM_LIBRARIES)
endif()
if(ORVANE_SANITIZE OR ORVANE_FUZZ)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(orvane_options INTERFACE ${sanitizers})
    target_link_options(orvane_options INTERFACE ${sanitizers})
endif()
# ORVANE_ASSERT (base/Assert.h) costs nothing in a release.
set(checked $<OR:$<CONFIG:Debug>,$<BOOL:${ORVANE_SANITIZE}>,$<BOOL:${ORVANE_FUZZ}>>)
target_compile_definitions(orvane_options INTERFACE $<${checked}:ORVANE_ASSERTIONS>)
if(ORVANE_FUZZ)
    target_compile_options(orvane_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(ORVANE_COVERAGE)
    target_compile_definitions(orvane_options INTERFACE ORVANE_COVERAGE)
    target_compile_options(orvane_options INTERFACE -fprofile-instr-generate -fcoverage-mapping)
    target_link_options(orvane_options INTERFACE -fprofile-instr-generate)
endif()

# Adds orvane_NAME (portable) and orvane_NAME_platform. The portable half is linked with the platform
# half, which answers the seams that it declares.
function(orvane_library name)
    file(GLOB portable CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${name}/*.cpp")
    file(GLOB platform CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${name}/${ORVANE_PLATFORM}/*.cpp")
    # The main entry belongs to the program, not to a library.
    list(FILTER platform EXCLUDE REGEX "/Main\\.cpp$")
    set(below orvane_options)
    foreach(dependency ${ARGN})
        list(APPEND below orvane_${dependency} orvane_${dependency}_platform)
    endforeach()
    orvane_half(orvane_${name} "${portable}" "${below}")
    orvane_half(orvane_${name}_platform "${platform}" "${below};orvane_${name}")
    if(platform)
        # The identifiers of menus, dialogs and controls (resource.h).
        target_include_directories(orvane_${name}_platform PRIVATE "${CMAKE_SOURCE_DIR}/res")
    endif()
    if(portable AND platform)
        target_link_libraries(orvane_${name} PUBLIC orvane_${name}_platform)
    endif()
endfunction()

# A function of the product that holds an array notices when something was written past its end.
function(orvane_protect target)
    if(WIN32)
        target_compile_options(${target} PRIVATE -fstack-protector-strong)
    endif()
endfunction()

# How these halves are optimised in a release.
function(orvane_optimise option)
    foreach(name ${ARGN})
        target_compile_options(orvane_${name} PRIVATE $<$<CONFIG:Release>:${option}>)
    endforeach()
endfunction()

function(orvane_half target sources below)
    if(sources)
        add_library(${target} STATIC ${sources})
        orvane_protect(${target})
        target_link_libraries(${target} PUBLIC ${below} ${ORVANE_SYSTEM_LIBRARIES})
    else()
        add_library(${target} INTERFACE)
        target_link_libraries(${target} INTERFACE ${below} ${ORVANE_SYSTEM_LIBRARIES})
    endif()
endfunction()

# The compiled resources, an object file for every program that shows the editor's menus and dialogs.
function(orvane_resources)
    file(GLOB inputs CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/res/*")
    set(manifest "${CMAKE_BINARY_DIR}/res/orvane.manifest")
    configure_file("${CMAKE_SOURCE_DIR}/res/orvane.manifest.in" "${manifest}" @ONLY)
    add_library(orvane_resources OBJECT "${CMAKE_SOURCE_DIR}/res/orvane.rc")
    set_source_files_properties("${CMAKE_SOURCE_DIR}/res/orvane.rc" PROPERTIES OBJECT_DEPENDS "${inputs};${manifest}")
    target_include_directories(orvane_resources PRIVATE "${CMAKE_SOURCE_DIR}/res" "${CMAKE_BINARY_DIR}/res")
    target_compile_definitions(orvane_resources PRIVATE ORVANE_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
        ORVANE_VERSION_MINOR=${PROJECT_VERSION_MINOR} ORVANE_VERSION_PATCH=${PROJECT_VERSION_PATCH})
endfunction()

# Libraries of the system that the program needs for some of its work only: each is loaded when one of the functions
# that res/delay/NAME.def lists is called first. The libraries are named without their folder: their symbols are made of
# the name, the linker sorts the imports by it, and the program must be the same wherever it is built. This is of the
# program's own link only: tests replace what they import.
function(orvane_load_late target)
    foreach(name ${ARGN})
        set(library "${CMAKE_BINARY_DIR}/libdelay_${name}.a")
        add_custom_command(OUTPUT "${library}" DEPENDS "${CMAKE_SOURCE_DIR}/res/delay/${name}.def"
            COMMAND ${CMAKE_DLLTOOL} --deterministic-libraries -d "${CMAKE_SOURCE_DIR}/res/delay/${name}.def"
                -y "libdelay_${name}.a" -D ${name}.dll
            WORKING_DIRECTORY "${CMAKE_BINARY_DIR}")
        list(APPEND libraries "${library}")
        list(APPEND names "libdelay_${name}.a")
    endforeach()
    add_custom_target(${target}_late DEPENDS ${libraries})
    add_dependencies(${target} ${target}_late)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS "${libraries}")
    # Whole, so that the ordinary libraries of these names find nothing left to do.
    target_link_options(${target} PRIVATE LINKER:--whole-archive ${names} LINKER:--no-whole-archive)
    target_link_libraries(${target} PRIVATE delayimp)
endfunction()

function(orvane_program)
    add_executable(orvane WIN32 src/app/win32/Main.cpp $<TARGET_OBJECTS:orvane_resources>)
    target_include_directories(orvane PRIVATE "${CMAKE_SOURCE_DIR}/res")
    target_link_libraries(orvane PRIVATE orvane_app orvane_app_platform)
    orvane_protect(orvane)
    orvane_load_late(orvane comdlg32 ole32)
    # -municode: the entry is wWinMain. The versions say that Windows 10 is needed; scripts/check-header reads them back.
    # Without the time of the build in it, the same sources give the same program.
    target_link_options(orvane PRIVATE -municode LINKER:--no-insert-timestamp $<$<CONFIG:Release>:-s>
        LINKER:--major-os-version=10,--minor-os-version=0,--major-subsystem-version=10,--minor-subsystem-version=0)
    set_target_properties(orvane PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
endfunction()

# What is shipped beside the program is copied there. A file that the Options dialog has written since stays, until the
# one here is newer.
function(orvane_shipped_files)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}/ship" "${CMAKE_SOURCE_DIR}/ship/*")
    foreach(name ${files})
        add_custom_command(OUTPUT "${CMAKE_BINARY_DIR}/${name}" DEPENDS "ship/${name}"
            COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_SOURCE_DIR}/ship/${name}" "${CMAKE_BINARY_DIR}/${name}")
        list(APPEND copies "${CMAKE_BINARY_DIR}/${name}")
    endforeach()
    add_custom_target(orvane_shipped ALL DEPENDS ${copies})
    add_dependencies(orvane orvane_shipped)
endfunction()

# The manual beside the program: one page, made from its chapters by Python with its Markdown package. Without that the
# program is complete but for the page, and says so when asked for it; the next build looks again.
function(orvane_manual)
    file(GLOB chapters CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/docs/manual/*" "${CMAKE_SOURCE_DIR}/docs/colours/*")
    set(page "${CMAKE_BINARY_DIR}/orvane.html")
    set(build [[if "$0" -c "import markdown" 2>/dev/null; then exec "$0" "$@"; fi; echo "No manual: there is no python3-markdown"]])
    add_custom_command(OUTPUT "${page}" DEPENDS ${chapters} scripts/manual CMakeLists.txt
        COMMAND sh -c "${build}" /usr/bin/python3 "${CMAKE_SOURCE_DIR}/scripts/manual" "${page}" VERBATIM)
    add_custom_target(orvane_page ALL DEPENDS "${page}")
    add_dependencies(orvane orvane_page)
endfunction()

function(orvane_test name sources)
    # The second keeps the copies of saves out of the user's own folder, in every program of tests.
    add_executable(${name} ${sources} "${CMAKE_SOURCE_DIR}/tests/program/RecoveryFolder.cpp")
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    # Compiling the tests takes longer than running them.
    target_compile_options(${name} PRIVATE -O0)
    # g++ 12 takes the inside of std::string's operator+ for overlapping memory.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
    target_link_libraries(${name} PRIVATE ${ARGN} orvane_test_support gtest gtest_main)
endfunction()

# One libFuzzer program for each file of tests/fuzz.
function(orvane_fuzz_targets)
    file(GLOB targets CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/fuzz/*.cpp")
    foreach(source ${targets})
        get_filename_component(name "${source}" NAME_WE)
        add_executable(${name} "${source}")
        target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
        target_link_libraries(${name} PRIVATE orvane_app orvane_app_platform)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    endforeach()
endfunction()

# One program for each file named *Bench.cpp: of bench natively, of bench/win32 for Windows.
function(orvane_benchmarks)
    if(WIN32)
        file(GLOB targets CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/bench/win32/*Bench.cpp")
    else()
        file(GLOB targets CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/bench/*Bench.cpp")
    endif()
    file(GLOB shared CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/bench/*.cpp")
    list(FILTER shared EXCLUDE REGEX "Bench\\.cpp$")
    foreach(source ${targets})
        get_filename_component(name "${source}" NAME_WE)
        add_executable(${name} "${source}" ${shared})
        target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/bench")
        target_link_libraries(${name} PRIVATE orvane_app orvane_app_platform)
        target_compile_definitions(${name} PRIVATE ORVANE_SOURCE="${CMAKE_SOURCE_DIR}")
        if(WIN32)
            add_dependencies(${name} orvane)
        endif()
    endforeach()
endfunction()
