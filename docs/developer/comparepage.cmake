# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Holds a page that is kept with the sources against what its generator writes now.
# Usage: cmake -DPAGE=FILE -DFRESH=FILE -DTARGET=NAME -P comparepage.cmake -- GENERATOR...
set(GENERATOR)
set(isGenerator FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(number RANGE ${last})
    if(isGenerator)
        list(APPEND GENERATOR "${CMAKE_ARGV${number}}")
    elseif(CMAKE_ARGV${number} STREQUAL "--")
        set(isGenerator TRUE)
    endif()
endforeach()

execute_process(COMMAND ${GENERATOR} ${FRESH} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "The generator failed (${status}): ${GENERATOR}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${PAGE} ${FRESH} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PAGE} is not what the program says now, which is in ${FRESH}. Write it anew: "
                        "cmake --build --preset release --target ${TARGET}, then look at the changes.")
endif()
