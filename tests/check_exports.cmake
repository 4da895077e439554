# Compares what LIBRARY exports with the functions of LIST and the three variables, and looks at its name.
cmake_minimum_required(VERSION 3.22)

file(STRINGS ${LIST} expected REGEX "^ZUM_FUNCTION")
list(TRANSFORM expected REPLACE "ZUM_FUNCTION\\((.*)\\)" "\\1")
list(APPEND expected i_free i_malloc threads_omp_of_n_zum)

execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+\n" exported "${table}")
list(TRANSFORM exported STRIP)

foreach(name IN LISTS expected)
  if(NOT name IN_LIST exported)
    message(SEND_ERROR "not exported: ${name}")
  endif()
endforeach()
list(REMOVE_ITEM exported ${expected})
foreach(name IN LISTS exported)
  message(SEND_ERROR "exported, but not in the list: ${name}")
endforeach()

execute_process(COMMAND ${READELF} -d ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
if(NOT dynamic MATCHES "SONAME[^\n]*\\[libzumcck4\\.so\\.5\\.2\\]")
  message(SEND_ERROR "the SONAME is not libzumcck4.so.5.2")
endif()
