# letterlift_windows_program(TARGET): gives a program its version resource, its icon and its manifest.
function(letterlift_windows_program target)
    set(_packaging "${PROJECT_SOURCE_DIR}/packaging")
    set(LETTERLIFT_INTERNAL_NAME "${target}")
    set(LETTERLIFT_ICON "${_packaging}/letterlift.ico")
    set(LETTERLIFT_MANIFEST "${_packaging}/letterlift.manifest")
    set(_resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    if(MSVC)
        # The linker makes a manifest of its own and merges this one into it; a second one among the resources would
        # be a mistake.
        set(LETTERLIFT_MANIFEST_RESOURCE "")
        target_sources(${target} PRIVATE "${LETTERLIFT_MANIFEST}")
    else()
        set(LETTERLIFT_MANIFEST_RESOURCE "1 RT_MANIFEST \"${LETTERLIFT_MANIFEST}\"")
    endif()
    configure_file("${_packaging}/program.rc.in" "${_resources}" @ONLY)
    target_sources(${target} PRIVATE "${_resources}")
    # Resource compilers don't tell what they have read.
    set_source_files_properties("${_resources}" PROPERTIES OBJECT_DEPENDS "${LETTERLIFT_ICON};${LETTERLIFT_MANIFEST}")
endfunction()

# letterlift_runtime_libraries(RESULT): the DLLs of GCC that every program has to have beside it or on its path.
function(letterlift_runtime_libraries result)
    set(_libraries)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        cmake_path(GET CMAKE_CXX_COMPILER PARENT_PATH _compiler_directory)
        foreach(_name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
            execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${_name}
                OUTPUT_VARIABLE _library OUTPUT_STRIP_TRAILING_WHITESPACE)
            # A compiler that runs on Windows has them beside itself.
            if(NOT IS_ABSOLUTE "${_library}")
                set(_library "${_compiler_directory}/${_name}")
            endif()
            file(REAL_PATH "${_library}" _library)
            if(NOT EXISTS "${_library}")
                message(FATAL_ERROR "The compiler's library ${_name} isn't where the compiler is.")
            endif()
            list(APPEND _libraries "${_library}")
        endforeach()
    endif()
    set(${result} "${_libraries}" PARENT_SCOPE)
endfunction()
