# kxdevui_deploy(PROGRAM): all that a program ships with. It gets the manifest (visual styles), and the DLLs that it needs
# are copied beside it: the library, its modules, the images, which nothing links to and without which every icon is
# gone, and the compiler's runtime. The project enables the language RC.
include(${CMAKE_CURRENT_LIST_DIR}/KxStyles.cmake)

function(kxdevui_deploy program)
    kx_use_styles(${program})
    # In the library's own tree everything is in one folder already.
    if(kxdevui_dlls)
        add_custom_command(TARGET ${program} POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E copy_if_different ${kxdevui_dlls} $<TARGET_FILE_DIR:${program}>
            VERBATIM)
    endif()
endfunction()
