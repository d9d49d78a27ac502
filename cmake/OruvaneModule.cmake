# One folder is one target: its sources and headers are all the .cpp and .h files in it.
#
#   oruvane_module(NAME LINK library...)          a static library named after its folder
#   oruvane_tests(NAME [THREADED] [SERIAL] LINK library...)
#                                                 a test program; THREADED labels those that the thread
#                                                 sanitizer is to see; SERIAL runs its tests one at a time,
#                                                 as they are held to a clock
#   oruvane_folders(VARIABLE REGEX)               the folders of scripts/include-edges whose names match
#
# Includes are written from the root of the repository, so an include line shows the edge that
# scripts/include-edges allows or forbids.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LINK_WHAT_YOU_USE OFF)

add_library(oruvane_options INTERFACE)
target_include_directories(oruvane_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(oruvane_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -Winvalid-pch)
target_compile_definitions(oruvane_options INTERFACE QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_BYTEARRAY)
target_link_libraries(oruvane_options INTERFACE Threads::Threads)
if(ORUVANE_SANITIZE)
    # The compiler's manual: instrumented code makes it warn of uninitialised values that are none.
    target_compile_options(oruvane_options INTERFACE
        "-fsanitize=${ORUVANE_SANITIZE}" -fno-sanitize-recover=all -Wno-maybe-uninitialized)
    target_link_options(oruvane_options INTERFACE "-fsanitize=${ORUVANE_SANITIZE}")
endif()

# Where a sanitizer finds the list of its reports about other people's code. GLib, under Qt's event loops, hands small
# memory from thread to thread in ways that the thread sanitizer does not see, unless it is told to use malloc.
set(ORUVANE_TEST_ENVIRONMENT)
if(ORUVANE_SANITIZE MATCHES "address")
    set(ORUVANE_TEST_ENVIRONMENT
        "LSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/leaks.supp':print_suppressions=0")
elseif(ORUVANE_SANITIZE MATCHES "thread")
    set(ORUVANE_TEST_ENVIRONMENT
        "TSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/races.supp'" "G_SLICE=always-malloc")
endif()

# scripts/include-edges is the one list of folders; its order is the order in which they are built.
function(oruvane_folders variable regex)
    set(table "${PROJECT_SOURCE_DIR}/scripts/include-edges")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${table}")
    file(STRINGS "${table}" lines REGEX "^[a-z]")
    list(TRANSFORM lines REPLACE ":.*" "")
    list(FILTER lines INCLUDE REGEX "${regex}")
    set(${variable} ${lines} PARENT_SCOPE)
endfunction()

# The headers that nearly every file of a kind reads, compiled once for all of them.
set(ORUVANE_PRECOMPILED
    <algorithm> <cmath> <functional> <memory> <optional> <string> <unordered_map> <utility> <variant> <vector>
    <QDateTime> <QHash> <QString> <QUrl>)

function(oruvane_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK;PRIVATE_LINK")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(NOT sources) # a folder of headers only
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE "${PROJECT_SOURCE_DIR}")
        target_link_libraries(${name} INTERFACE oruvane_options Qt6::Core ${arg_LINK})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${headers})
    set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    target_link_libraries(${name} PUBLIC oruvane_options Qt6::Core ${arg_LINK} PRIVATE ${arg_PRIVATE_LINK})
    if(name STREQUAL "platform_foundation")
        target_precompile_headers(${name} PRIVATE ${ORUVANE_PRECOMPILED})
    else()
        target_precompile_headers(${name} REUSE_FROM platform_foundation)
    endif()
endfunction()

function(oruvane_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "THREADED;SERIAL" "" "LINK")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE ${arg_LINK} tests_support GTest::gmock)
    target_precompile_headers(${name} REUSE_FROM tests_precompiled)
    # On its own, each test has a process and a place in the report. A sanitizer starts slowly, so there a
    # program is one test, which besides runs its tests in another order each time, one after the other.
    if(ORUVANE_SANITIZE)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 --gtest_shuffle)
        set_tests_properties(${name} PROPERTIES TIMEOUT 1200 RUN_SERIAL ${arg_SERIAL}
            ENVIRONMENT "${ORUVANE_TEST_ENVIRONMENT}")
        if(arg_THREADED)
            set_tests_properties(${name} PROPERTIES LABELS threaded)
        endif()
    else()
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
            PROPERTIES TIMEOUT 400 RUN_SERIAL ${arg_SERIAL})
    endif()
    if(arg_THREADED)
        add_dependencies(threaded_tests ${name})
    endif()
endfunction()

# Links libraries whole into a program, object by object: a class registration or load hook in them is
# referred to by nobody, and a plain static link would drop it.
function(oruvane_link_whole target)
    foreach(library ${ARGN})
        target_link_libraries(${target} PRIVATE ${library})
        target_sources(${target} PRIVATE $<TARGET_OBJECTS:${library}>)
    endforeach()
endfunction()
