# The module's dynamic symbol table defines PegasusCreateProvider and nothing else.
#
#     cmake -DNM=<nm> -DMODULE=<file> -P CheckExports.cmake

execute_process(COMMAND ${NM} -D --defined-only ${MODULE}
    OUTPUT_VARIABLE symbols OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "^[0-9a-f]+ T PegasusCreateProvider$")
    message(FATAL_ERROR "${MODULE} should define PegasusCreateProvider and nothing else, but has:\n${symbols}")
endif()
