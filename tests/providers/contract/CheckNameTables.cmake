# Each provider's source holds its own copy of engine/NameConstants.h's table: its object defines the
# table's last name for itself.
#
#     cmake -DNM=<nm> -DOBJECTS=<file>|<file>... -P CheckNameTables.cmake

string(REPLACE "|" ";" objects "${OBJECTS}")
list(FILTER objects INCLUDE REGEX "/(identity|masking|iscsi)/[A-Za-z]*(Provider|Service)\\.cpp\\.")
list(LENGTH objects count)
if(NOT count EQUAL 9)
    message(FATAL_ERROR "There should be nine providers' objects, but there are ${count}:\n${objects}")
endif()
foreach(object IN LISTS objects)
    execute_process(COMMAND ${NM} ${object} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    if(NOT symbols MATCHES " b [A-Za-z0-9_]*STRING_AvailableSAP")
        message(SEND_ERROR "${object} has no name table of its own")
    endif()
endforeach()
