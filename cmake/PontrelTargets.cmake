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

function(pontrel_library target)
    add_library(${target} STATIC ${ARGN})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    pontrel_compile(${target})
endfunction()

# A program of the house, which stands in bin/ of the build folder.
function(pontrel_program target)
    add_executable(${target} ${ARGN})
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
    pontrel_compile(${target})
endfunction()

# A test program of Qt Test: one source file tests/<folder>/<name>.cpp, linked with the libraries named after it.
function(pontrel_test name)
    add_executable(${name} ${name}.cpp)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${ARGN} Qt6::Test)
    pontrel_compile(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 300)
endfunction()
