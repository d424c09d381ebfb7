# How every target of the house is compiled: one place for warnings, sanitizers and the linter.

function(pontrel_compile target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_ASCII)
    if(PONTREL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(PONTREL_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                 -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
    if(PONTREL_TIDY)
        set_target_properties(${target} PROPERTIES CXX_CLANG_TIDY clang-tidy)
    endif()
endfunction()

# Headers that most sources of a floor include, compiled once for all targets that name them with
# pontrel_use_headers(): without them seven tenths of the compiler's work is reading headers.
function(pontrel_headers target)
    cmake_parse_arguments(PARSE_ARGV 1 floor "" "" "LIBRARIES;HEADERS")
    file(CONFIGURE OUTPUT ${target}.cpp CONTENT "" @ONLY)
    add_library(${target} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp)
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${target} PRIVATE ${floor_LIBRARIES})
    target_precompile_headers(${target} PRIVATE ${floor_HEADERS})
    pontrel_compile(${target})
endfunction()

function(pontrel_use_headers headers)
    if(PONTREL_PRECOMPILE)
        foreach(target IN LISTS ARGN)
            target_precompile_headers(${target} REUSE_FROM ${headers})
        endforeach()
    endif()
endfunction()

# A library of the house. Shared where programs are many and short-lived, as in the builds for tests: each then holds its
# own code alone, and none is linked anew where only a library has changed.
function(pontrel_library target)
    if(PONTREL_SHARED)
        add_library(${target} SHARED ${ARGN})
        set_target_properties(${target} PROPERTIES DEFINE_SYMBOL "") # or the precompiled headers would not fit
    else()
        add_library(${target} STATIC ${ARGN})
    endif()
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    pontrel_compile(${target})
endfunction()

# A program of the house, which stands in bin/ of the build folder.
function(pontrel_program target)
    add_executable(${target} ${ARGN})
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
    pontrel_compile(${target})
endfunction()

# Seconds after which a test is taken for hung, which a busy machine is not. Qt's own limit, for a function of a test and
# in milliseconds, lies beyond it.
set(pontrel_test_timeout 1800)
set(pontrel_function_timeout QTEST_FUNCTION_TIMEOUT=3600000)

# A test program of Qt Test: one source file tests/<folder>/<name>.cpp, linked with the libraries named after it.
function(pontrel_test name)
    add_executable(${name} ${name}.cpp)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${ARGN} Qt6::Test)
    pontrel_compile(${name})
    if("pontrel_test_support_app" IN_LIST ARGN)
        pontrel_use_headers(pontrel_headers_windows ${name})
    else()
        pontrel_use_headers(pontrel_headers_core ${name})
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${pontrel_function_timeout}" TIMEOUT ${pontrel_test_timeout})
endfunction()
