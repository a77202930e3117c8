# Makes a desk in the build folder again: cmake -DSTAMP= -DFOLDER= -DMKDESK= -DOPTIONS= -P MakeDesk.cmake
# The list beside the stamp names the files that the build made before. Only those are removed; whatever else stands
# in the folder is kept.
set(list_file ${STAMP}.files)
if(EXISTS ${list_file})
    file(STRINGS ${list_file} made_before ENCODING UTF-8)
    foreach(file IN LISTS made_before)
        file(REMOVE ${FOLDER}/${file})
    endforeach()
endif()
execute_process(COMMAND ${MKDESK} ${FOLDER} ${OPTIONS} OUTPUT_VARIABLE made RESULT_VARIABLE result)
file(WRITE ${list_file} "${made}")
if(NOT result EQUAL 0)
    message(FATAL_ERROR "calldesk-mkdesk failed: ${result}")
endif()
file(TOUCH ${STAMP})
