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
