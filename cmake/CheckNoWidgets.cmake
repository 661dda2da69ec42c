# cmake -DBINARY=path -P CheckNoWidgets.cmake: fails when the program needs a widget or media library
# at run time. The configure-time guard looks at the declared links; this looks at what was linked.
execute_process(COMMAND readelf -d "${BINARY}" OUTPUT_VARIABLE dynamic RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "readelf could not read ${BINARY}")
endif()
string(REGEX MATCHALL "libQt6(Widgets|OpenGLWidgets|Multimedia|MultimediaWidgets)[^]]*" found "${dynamic}")
if(found)
    message(FATAL_ERROR "${BINARY} needs ${found}")
endif()
message(STATUS "${BINARY} needs no widget or media library")
