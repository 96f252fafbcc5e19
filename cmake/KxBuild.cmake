# How every target of the house is built: language level, warnings, traps, output folder, runtime beside the programs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# One folder for programs and DLLs, as on a user's machine: a program finds its DLLs beside itself.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT WINVER=0x0A00 _WIN32_WINNT=0x0A00)

if(MSVC)
    # Sources and resources are UTF-8. The runtime is the shared one, which strings cross the borders of the DLLs by.
    add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:/utf-8;/permissive-;/EHsc;/Zc:__cplusplus>")
    add_compile_definitions(_CRT_SECURE_NO_WARNINGS)
    string(APPEND CMAKE_RC_FLAGS " /c65001")
    set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreaded$<$<CONFIG:Debug>:Debug>DLL)
endif()

if(KXDEVUI_TRAPS)
    if(MSVC)
        message(FATAL_ERROR "KXDEVUI_TRAPS is made of options that this compiler does not have")
    endif()
    # MinGW has no sanitizer runtime; a trap needs none and ends the process at the faulty instruction.
    add_compile_options(-fsanitize=undefined -fsanitize-undefined-trap-on-error -fno-omit-frame-pointer -O1)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

add_library(kx_warnings INTERFACE)
if(MSVC)
    # No errors while nobody has seen them (docs/building.md). Exported classes have members and bases of the standard library
    # (4251, 4275), which is shared.
    target_compile_options(kx_warnings INTERFACE /W4 /wd4251 /wd4275)
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        target_compile_options(kx_warnings INTERFACE
            -Wconversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)
    endif()
else()
    target_compile_options(kx_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
endif()

# kx_wide_entry(PROGRAM...): programs that begin at wWinMain.
function(kx_wide_entry)
    if(MINGW)
        foreach(program IN LISTS ARGN)
            target_link_options(${program} PRIVATE -municode)
        endforeach()
    endif()
endfunction()

# kx_add_module(NAME SOURCES ... LIBRARIES ... ROOT DIR): a DLL whose headers are included as <NAME/header.h>, in the tree
# and from the package. All headers of its folder are public but the PRIVATE_HEADERS.
function(kx_add_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "ROOT" "SOURCES;LIBRARIES;PRIVATE_LIBRARIES;PRIVATE_HEADERS")
    string(TOUPPER ${name} upper)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.h)
    list(REMOVE_ITEM headers ${arg_PRIVATE_HEADERS})
    add_library(${name} SHARED ${arg_SOURCES})
    add_library(KxDevUI::${name} ALIAS ${name})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${arg_ROOT} FILES ${headers})
    target_compile_definitions(${name} PRIVATE ${upper}_BUILDING)
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} PUBLIC ${arg_LIBRARIES} PRIVATE kx_warnings ${arg_PRIVATE_LIBRARIES})
    set_target_properties(${name} PROPERTIES PREFIX "" IMPORT_PREFIX "lib")
    install(TARGETS ${name} EXPORT KxDevUI
        RUNTIME DESTINATION bin
        ARCHIVE DESTINATION lib
        FILE_SET HEADERS DESTINATION include)
endfunction()

# The DLLs share one C++ runtime, because strings and lists cross their borders. Without its debug information it is a
# sixth of the size. The other compiler's is installed with the system.
if(MINGW)
    set(kx_runtime_names libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    set(kx_runtime_dlls)
    foreach(dll IN LISTS kx_runtime_names)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll} OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE "${path}")
            find_file(kx_${dll} ${dll} PATHS /usr/x86_64-w64-mingw32/lib NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
            set(path ${kx_${dll}})
        endif()
        set(stripped ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${dll})
        if(NOT EXISTS ${stripped} OR ${path} IS_NEWER_THAN ${stripped})
            file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
            execute_process(COMMAND ${CMAKE_STRIP} --strip-debug -o ${stripped} ${path} COMMAND_ERROR_IS_FATAL ANY)
        endif()
        list(APPEND kx_runtime_dlls ${stripped})
    endforeach()
    install(FILES ${kx_runtime_dlls} DESTINATION bin)
endif()

find_program(KX_MSGFMT msgfmt REQUIRED)
find_program(KX_MSGGREP msggrep REQUIRED)

# kx_add_catalogues(TARGET RC): po/<language>.po, each with what po/controls/*.po have in that language, go into the
# target through its resource script. A catalogue that msgfmt finds fault with, such as a placeholder lost in
# translation, stops the build.
function(kx_add_catalogues target rc)
    cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME room)
    set(whole ${CMAKE_CURRENT_BINARY_DIR}/whole)
    # Before the sources, where the script would find what is not whole.
    target_include_directories(${target} BEFORE PRIVATE ${whole})
    file(GLOB controls CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/po/controls/*.po)
    file(GLOB catalogues CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/po/*.po)
    foreach(po IN LISTS catalogues)
        get_filename_component(language ${po} NAME_WE)
        set(checked ${CMAKE_CURRENT_BINARY_DIR}/${language}.checked)
        add_custom_command(OUTPUT ${checked}
            COMMAND ${CMAKE_COMMAND} -DPO=${po} -DMSGGREP=${KX_MSGGREP} -DOUT=${whole}/${room}/po/${language}.po
                    -P ${CMAKE_SOURCE_DIR}/cmake/KxCatalogue.cmake
            COMMAND ${KX_MSGFMT} --check -o ${checked} ${whole}/${room}/po/${language}.po
            DEPENDS ${po} ${controls} ${CMAKE_SOURCE_DIR}/cmake/KxCatalogue.cmake
            COMMENT "Checking ${language}.po"
            VERBATIM)
        target_sources(${target} PRIVATE ${checked})
        set_property(SOURCE ${rc} APPEND PROPERTY OBJECT_DEPENDS ${checked})
    endforeach()
endfunction()

# kx_add_plain(PROGRAM [ARGUMENT...]): the program once more, as PROGRAM_plain, without the manifest, as there are hosts
# without visual styles. It is of the same objects; the arguments go to add_executable.
function(kx_add_plain program)
    add_executable(${program}_plain ${ARGN} $<FILTER:$<TARGET_OBJECTS:${program}>,EXCLUDE,-styles[.]rc>)
    set_target_properties(${program}_plain PROPERTIES LINKER_LANGUAGE CXX)
    get_target_property(libraries ${program} LINK_LIBRARIES)
    target_link_libraries(${program}_plain PRIVATE ${libraries})
endfunction()

# Sections that lie in the file as they do in memory are mapped by Wine, others read and copied at every start of a program.
if(MINGW AND NOT KXDEVUI_TRAPS)
    add_link_options(-s -Wl,--file-alignment,4096)
endif()
