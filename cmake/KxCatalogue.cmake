# Makes OUT of the catalogue PO and the texts in its language of the controls beside it: po/controls/NAME.po has those of
# all languages, "de:devgui_NAME" being the context of a German one.
get_filename_component(language ${PO} NAME_WE)
get_filename_component(folder ${PO} DIRECTORY)
file(READ ${PO} whole)
file(GLOB controls ${folder}/controls/*.po)
foreach(control IN LISTS controls)
    execute_process(COMMAND ${MSGGREP} --no-wrap --msgctxt --regexp=^${language}: ${control}
        OUTPUT_VARIABLE texts COMMAND_ERROR_IS_FATAL ANY)
    string(FIND "${texts}" "\n\n" header)
    if(header EQUAL -1)
        message(FATAL_ERROR "${control} has no text for ${language}")
    endif()
    string(SUBSTRING "${texts}" ${header} -1 texts)
    string(REPLACE "msgctxt \"${language}:" "msgctxt \"" texts "${texts}")
    string(APPEND whole "${texts}")
endforeach()
file(WRITE ${OUT} "${whole}")
