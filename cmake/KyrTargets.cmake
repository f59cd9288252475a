# What every target of ours has in common: language level, warnings, sanitizers, Qt hygiene.

find_program(KYR_CCACHE ccache)
if(KYR_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER AND KYR_IS_TOP_LEVEL)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${KYR_CCACHE})
endif()

if(KYR_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)

function(kyr_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
    target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
        -Wunused -Wnull-dereference)
    if(KYR_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Reports a null object for inlined shared pointers that were tested before.
        target_compile_options(${target} PRIVATE -Wno-null-dereference)
    endif()
    if(KYR_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${KYR_SANITIZE} -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${KYR_SANITIZE})
        get_target_property(type ${target} TYPE)
        if(type STREQUAL "EXECUTABLE")
            target_link_libraries(${target} PRIVATE
                $<TARGET_NAME_IF_EXISTS:kyr_keep_graphics_drivers>)
        endif()
    endif()
endfunction()

# The build tree is laid out like the installed one, so that what is shipped finds its libraries the
# same way in both: relative to itself. CMake pads other paths with empty entries, which stand for
# the current directory.
function(kyr_shipped target folder path_to_libraries)
    set_target_properties(${target} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${KyrSceneOutline_BINARY_DIR}/${folder}
        RUNTIME_OUTPUT_DIRECTORY ${KyrSceneOutline_BINARY_DIR}/${folder}
        BUILD_WITH_INSTALL_RPATH ON
        INSTALL_RPATH "$ORIGIN/${path_to_libraries}")
endfunction()

# A library of the package: <name.h> is found below the source tree and below one installed folder.
function(kyr_package_library target export_name)
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${export_name} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${target} INTERFACE
        $<INSTALL_INTERFACE:${KYR_INSTALL_INCLUDEDIR}>)
    kyr_shipped(${target} ${CMAKE_INSTALL_LIBDIR} .)
endfunction()

# kyr_add_test(NAME SOURCES file... [LIBRARIES target...] [DISPLAY] [TIMEOUT seconds])
# A GoogleTest program with a QApplication. DISPLAY runs it in a virtual X server of its own.
function(kyr_add_test name)
    cmake_parse_arguments(ARG "DISPLAY" "TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    kyr_target_defaults(${name})
    # Tests are compiled more often than run: what they test is optimised, they need not be.
    target_compile_options(${name} PRIVATE -O0 -g1)
    target_link_libraries(${name} PRIVATE kyr_test_support GTest::gtest GTest::gmock ${ARG_LIBRARIES})
    if(ARG_DISPLAY)
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/cmake/with-display $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_property(TEST ${name} PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    endif()
    # What is freed is overwritten, so that a use of it shows.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        "GLIBC_TUNABLES=glibc.malloc.tcache_count=0:glibc.malloc.perturb=85")
    if(KYR_SANITIZE)
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
            "LSAN_OPTIONS=print_suppressions=0:suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp"
            "UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1")
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    set_property(TEST ${name} PROPERTY TIMEOUT ${ARG_TIMEOUT})
endfunction()

function(kyr_add_benchmark name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    kyr_target_defaults(${name})
    target_link_libraries(${name} PRIVATE benchmark::benchmark ${ARG_LIBRARIES})
endfunction()
