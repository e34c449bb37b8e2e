# What every target of the project is built with: warnings, definitions, sanitizers, precompiled Qt headers.

find_program(LETTERLIFT_CCACHE ccache)
if(LETTERLIFT_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${LETTERLIFT_CCACHE}")
endif()

add_library(letterlift_options INTERFACE)
target_compile_definitions(letterlift_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH
    QT_NO_JAVA_STYLE_ITERATORS
    QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(WIN32)
    # Windows 10, below which Qt doesn't go; and no macros called min and max.
    target_compile_definitions(letterlift_options INTERFACE _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX)
endif()

if(MSVC)
    target_compile_options(letterlift_options INTERFACE /W4 /permissive- /utf-8 /EHsc)
    if(LETTERLIFT_WERROR)
        target_compile_options(letterlift_options INTERFACE /WX)
    endif()
else()
    target_compile_options(letterlift_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2
        -Wnull-dereference -Wimplicit-fallthrough
        # The interfaces of COM have no destructors.
        $<$<PLATFORM_ID:Windows>:-Wno-non-virtual-dtor>
        # ccache can serve a compilation with a precompiled header only if GCC reads the macros after it.
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
    if(LETTERLIFT_WERROR)
        target_compile_options(letterlift_options INTERFACE -Werror)
    endif()
endif()

if(LETTERLIFT_SANITIZERS)
    list(JOIN LETTERLIFT_SANITIZERS "," _sanitizers)
    target_compile_options(letterlift_options INTERFACE
        -fsanitize=${_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(letterlift_options INTERFACE -fsanitize=${_sanitizers})
    target_compile_definitions(letterlift_options INTERFACE QT_FORCE_ASSERTS)
endif()

# letterlift_target(NAME [PRECOMPILE HEADER...] [REUSE TARGET]): the common options, and precompiled headers, either of
# its own or those of another target that is built with the same definitions.
function(letterlift_target name)
    cmake_parse_arguments(arg "" "REUSE" "PRECOMPILE" ${ARGN})
    target_link_libraries(${name} PRIVATE letterlift_options)
    # Visual C++ refuses a header that was precompiled with other definitions, as those of a test are.
    if(arg_REUSE AND NOT MSVC)
        target_precompile_headers(${name} REUSE_FROM ${arg_REUSE})
    elseif(arg_PRECOMPILE)
        target_precompile_headers(${name} PRIVATE ${arg_PRECOMPILE})
    endif()
endfunction()
