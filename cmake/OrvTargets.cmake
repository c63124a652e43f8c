# One static library a folder, one test program a folder: both take every source of their folder.

include(${CMAKE_CURRENT_LIST_DIR}/OrvResources.cmake)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# What a host may call says so itself (include/OrvAnnotation/Export.h). Calls inside the library then
# go straight to what they call, and after a pause there is less to fetch before ink is on the screen.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
add_compile_options(-fno-plt)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

find_program(ORV_CCACHE ccache)
if(ORV_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${ORV_CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It sees these in its own std::string when it optimizes.
    add_compile_options(-Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread)
    # It takes two doubles at once and forgets that both were to be rounded to floats.
    add_compile_options(-fno-tree-slp-vectorize)
endif()
if(ORV_SANITIZE OR CMAKE_BUILD_TYPE STREQUAL RelWithDebInfo)
    # Functions and lines, as reports name them; all that a debugger shows takes a quarter of the time.
    add_compile_options(-g1)
endif()
if(ORV_SANITIZE)
    add_compile_options(-fsanitize=${ORV_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ORV_SANITIZE})
    if(ORV_SANITIZE MATCHES undefined)
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

# Two precompiled headers, of the standard library for libraries and with the test library for
# tests. A source includes what it uses all the same: clang-tidy reads it without them.
if(ORV_PCH)
    add_compile_options(-fpch-preprocess -fPIC)
    file(WRITE ${PROJECT_BINARY_DIR}/pch.cpp "")
    set(headers <algorithm> <functional> <map> <memory> <optional> <string> <variant> <vector>)
    add_library(orv_library_pch OBJECT ${PROJECT_BINARY_DIR}/pch.cpp)
    target_precompile_headers(orv_library_pch PRIVATE ${headers})
    if(ORV_BUILD_TESTS)
        find_package(GTest REQUIRED)
        add_library(orv_test_pch OBJECT ${PROJECT_BINARY_DIR}/pch.cpp)
        target_precompile_headers(orv_test_pch PRIVATE ${headers} <gmock/gmock.h> <gtest/gtest.h>)
        target_link_libraries(orv_test_pch PRIVATE GTest::gmock)
    endif()
endif()

# Most of the time that a source takes goes into what others of its folder need as well: headers and
# what becomes of their templates. So the sanitized builds compile eight sources as one. Functions and
# constants of their own must then have different names (tools/check_names.py holds that). The other
# builds and clang-tidy read each source by itself.
set(CMAKE_UNITY_BUILD ${ORV_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)

# orv_compile_alone(SOURCE ...): sources of the current folder that share such a name with another, or
# whose classes use types of an unnamed namespace, which the compiler takes for those of a header.
function(orv_compile_alone)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# orv_precompile(TARGET KIND): it uses the precompiled header of this kind, `library` or `test`.
function(orv_precompile target kind)
    if(ORV_PCH)
        target_precompile_headers(${target} REUSE_FROM orv_${kind}_pch)
    endif()
endfunction()

# orv_library(NAME [LIBRARIES ...]): the sources of the current folder, not of those below it.
# A folder of headers only becomes an INTERFACE library.
function(orv_library name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    if(sources)
        add_library(${name} STATIC ${sources} ${headers})
        set(visibility PUBLIC)
        set_property(GLOBAL APPEND PROPERTY ORV_LIBRARIES ${name})
        orv_precompile(${name} library)
    else()
        add_library(${name} INTERFACE)
        set(visibility INTERFACE)
    endif()
    target_include_directories(
        ${name} ${visibility} ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
    target_link_libraries(${name} ${visibility} ${ARG_LIBRARIES})
endfunction()

# orv_test_program(NAME LIBRARIES ...): of all sources of the current folder, for tests to run.
function(orv_test_program name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    orv_precompile(${name} test)
endfunction()

# orv_test(NAME LIBRARIES ... [LABELS ...]): such a program that is a test as it is.
# The target tests_LABEL builds every program that has the label.
function(orv_test name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES;LABELS" ${ARGN})
    orv_test_program(${name} LIBRARIES ${ARG_LIBRARIES})
    orv_use_resources(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    if(ARG_LABELS)
        set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}")
        foreach(label ${ARG_LABELS})
            if(NOT TARGET tests_${label})
                add_custom_target(tests_${label})
            endif()
            add_dependencies(tests_${label} ${name})
        endforeach()
    endif()
endfunction()

# orv_fuzz(NAME LIBRARIES ...): a libFuzzer program of fuzz/NAME.cpp over fuzz/corpus/NAME, run as a
# test for ORV_FUZZ_SECONDS. What it finds beside the corpus stays in the build folder.
function(orv_fuzz name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
    set(corpus ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    set(found ${CMAKE_CURRENT_BINARY_DIR}/found/${name})
    file(MAKE_DIRECTORY ${found})
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    orv_use_resources(${name})
    add_test(NAME ${name} COMMAND ${name} -max_total_time=${ORV_FUZZ_SECONDS} -timeout=10
                                  -print_final_stats=1 -artifact_prefix=${CMAKE_CURRENT_BINARY_DIR}/${name}- ${found}
                                  ${corpus})
    set_tests_properties(${name} PROPERTIES LABELS fuzz)
    add_dependencies(fuzz_targets ${name})
endfunction()

# orv_targets_below(RESULT FOLDER ...): every target of these folders and those below them.
function(orv_targets_below result)
    set(found)
    foreach(folder ${ARGN})
        get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
        get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
        orv_targets_below(below ${folders})
        list(APPEND found ${targets} ${below})
    endforeach()
    set(${result} ${found} PARENT_SCOPE)
endfunction()
