# The providers take no lock: no object of theirs refers to one of the C library's or to the guard
# of a static of a function.
#
#     cmake -DNM=<nm> -DOBJECTS=<file>|<file>... -P CheckLocks.cmake

string(REPLACE "|" ";" objects "${OBJECTS}")
foreach(object IN LISTS objects)
    execute_process(COMMAND ${NM} --undefined-only ${object}
        OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    if(symbols MATCHES
        "(pthread_(mutex|rwlock|spin|cond|once)[a-z_]*|sem_wait|flockfile|__cxa_guard_acquire)")
        message(SEND_ERROR "${object} refers to ${CMAKE_MATCH_1}")
    endif()
endforeach()
