# Compiler settings that hold for every target: language level, warnings, sanitizers, where programs go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(TARNWICK_CCACHE ccache)
if(TARNWICK_CCACHE)
    # What ccache asks to be told before it keeps precompiled headers and what is compiled with them.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env "CCACHE_SLOPPINESS=pch_defines,time_macros" "${TARNWICK_CCACHE}")
endif()

add_library(tarnwick_compiler INTERFACE)
target_compile_options(tarnwick_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # GCC keeps sign conversions out of -Wconversion; both compilers shall judge alike.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
    # GCC 12 sees overlapping and overlong copies in std::string's insert and + where there are none (its bug 105651), and
    # texts that std::string moves for texts within the string.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-stringop-overflow;-Wno-stringop-overread;-Wno-array-bounds>)
target_link_options(tarnwick_compiler INTERFACE -Wl,--as-needed)
# Names are visible for the libraries that a program loads at run time (tarnwick_host); none of them replaces what has a
# name already, so that the compiler may inline and call it directly.
add_compile_options(-fno-semantic-interposition)

# A read beyond the end of a vector or a text ends the program, whose graphs have recovery copies: it never becomes a number.
# Measured on imports, fits and pictures of ten million points: 0 to 5 % of the time.
add_compile_definitions(_GLIBCXX_ASSERTIONS)

if(TARNWICK_SANITIZE)
    add_compile_options(-fsanitize=${TARNWICK_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    # Sanitized code confuses GCC 12's flow analysis: it takes members of std::regex for unset (its bug 105562).
    target_compile_options(tarnwick_compiler INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${TARNWICK_SANITIZE})
endif()

if(TARNWICK_FUZZ)
    # A fuzzer steers by the coverage of the code it feeds, so every layer is instrumented.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

set(TARNWICK_BIN_DIR "${CMAKE_BINARY_DIR}/bin")
