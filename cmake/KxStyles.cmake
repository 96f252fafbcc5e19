# kx_use_styles(PROGRAM): the program's windows get common controls 6, and with them the visual styles. For the programs of
# the house and, from the package, for a host's, whose project enables the language RC.

set(kx_styles_manifest ${CMAKE_CURRENT_LIST_DIR}/KxStyles.manifest)

function(kx_use_styles program)
    set(rc ${CMAKE_CURRENT_BINARY_DIR}/${program}-styles.rc)
    # 1: the manifest of a program; 24: RT_MANIFEST.
    file(CONFIGURE OUTPUT ${rc} CONTENT "#pragma code_page(65001)\n1 24 \"@kx_styles_manifest@\"\n" @ONLY)
    target_sources(${program} PRIVATE ${rc})
    set_property(SOURCE ${rc} APPEND PROPERTY OBJECT_DEPENDS ${kx_styles_manifest})
    # The linker's own would be a second one of that number.
    if(MSVC)
        target_link_options(${program} PRIVATE /MANIFEST:NO)
    endif()
endfunction()
