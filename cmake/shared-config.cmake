include(${CMAKE_CURRENT_LIST_DIR}/zumcc-targets.cmake)
