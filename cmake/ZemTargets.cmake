# The project's build vocabulary: zem_library, zem_program, zem_test, zem_benchmark.
# Warnings and sanitizers are interface targets that each of them links PRIVATE.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

find_program(ZEM_CCACHE ccache)
if(ZEM_CCACHE)
    # Without the sloppiness ccache refuses every file that uses a precompiled header; with the base directory several
    # checkouts share what they compiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${ZEM_CCACHE})
endif()

add_library(ZemWarnings INTERFACE)
# GCC 12 warns of overlaps inside std::string that cannot happen (its bug 105651).
target_compile_options(ZemWarnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_compile_definitions(ZemWarnings INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS QT_NO_FOREACH)
# -fpch-preprocess lets ccache see through precompiled headers.
target_compile_options(ZemWarnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)

add_library(ZemSanitizers INTERFACE)
if(ZEM_SANITIZE)
    # Lines are all a report needs: full debug information takes a third of the time to compile.
    target_compile_options(ZemSanitizers INTERFACE
        -O1 -g1 -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ZemSanitizers INTERFACE -fsanitize=address,undefined)
    if(ZEM_BUILD_FUZZ AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # The fuzzer follows the branches of the libraries.
        target_compile_options(ZemSanitizers INTERFACE -fsanitize=fuzzer-no-link)
    endif()
endif()

# A test runs once for each time that it is compiled, so it is compiled fast; what it tests is not its code.
add_library(ZemTestOptions INTERFACE)
target_compile_options(ZemTestOptions INTERFACE -O0)

# One precompiled header for all code and one for all tests: each takes the time of several source files.
file(WRITE ${PROJECT_BINARY_DIR}/empty.cpp "")
add_library(ZemPrecompiled OBJECT ${PROJECT_BINARY_DIR}/empty.cpp)
target_link_libraries(ZemPrecompiled PRIVATE Qt6::Core ZemWarnings ZemSanitizers)
target_precompile_headers(ZemPrecompiled PRIVATE
    <QtCore/QByteArray> <QtCore/QHash> <QtCore/QString> <QtCore/QStringList>
    <algorithm> <cmath> <istream> <map> <memory> <ostream> <stdexcept> <string> <vector>)

# zem_library(<name> SOURCES ... HEADERS ... [PUBLIC <targets>] [PRIVATE <targets>])
# A shared library of the folder it is called in; its public headers must compile alone.
function(zem_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;HEADERS;PUBLIC;PRIVATE")
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(Zem::${name} ALIAS ${name})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${CMAKE_CURRENT_SOURCE_DIR} FILES ${ARG_HEADERS})
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} ZemWarnings ZemSanitizers)
    set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    target_precompile_headers(${name} REUSE_FROM ZemPrecompiled)
endfunction()

# zem_program(<name> SOURCES ... LINK ...)
function(zem_program name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK")
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} ZemWarnings ZemSanitizers)
    target_precompile_headers(${name} REUSE_FROM ZemPrecompiled)
endfunction()

if(ZEM_BUILD_TESTS)
    find_package(GTest REQUIRED)
    add_library(ZemTestPrecompiled OBJECT ${PROJECT_BINARY_DIR}/empty.cpp)
    target_link_libraries(ZemTestPrecompiled PRIVATE
        Qt6::Core GTest::gtest GTest::gmock ZemWarnings ZemSanitizers ZemTestOptions)
    target_precompile_headers(ZemTestPrecompiled PRIVATE
        $<TARGET_PROPERTY:ZemPrecompiled,PRECOMPILE_HEADERS> <gmock/gmock.h> <gtest/gtest.h>)
endif()

# zem_test(<name> SOURCES ... LINK ... [LABELS unit|render|cli|slow ...])
# One GoogleTest binary, one ctest entry. Paths: ZEM_SOURCE_DIR names the checkout, ZEM_BIN_DIR the programs.
function(zem_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK;LABELS")
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} ZemTestMain GTest::gmock ZemWarnings ZemSanitizers ZemTestOptions)
    target_compile_definitions(${name} PRIVATE
        ZEM_SOURCE_DIR="${PROJECT_SOURCE_DIR}" ZEM_BIN_DIR="${PROJECT_BINARY_DIR}/bin")
    target_precompile_headers(${name} REUSE_FROM ZemTestPrecompiled)
    add_test(NAME ${name} COMMAND ${name})
    if(NOT ARG_LABELS)
        set(ARG_LABELS unit)
    endif()
    # Properties are tested with the same values every time: whether a change lands is not left to chance.
    set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 900 ENVIRONMENT RC_PARAMS=seed=1)
endfunction()
