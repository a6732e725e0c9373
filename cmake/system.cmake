# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

# What differs between systems is in files named after the system: subject_linux.cpp,
# subject_apple.cpp, subject_windows.cpp, subject_posix.cpp for every Unix that has none of its own,
# subject_none.cpp where there is nothing to do it with. No other file asks for the system.
# docs/porting.md tells what each of them can do.

set(MIOLKA_ON_LINUX OFF)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(MIOLKA_ON_LINUX ON)
endif()

if(WIN32)
    set(MIOLKA_OWN_SYSTEM windows)
elseif(APPLE)
    set(MIOLKA_OWN_SYSTEM apple)
elseif(MIOLKA_ON_LINUX)
    set(MIOLKA_OWN_SYSTEM linux)
else()
    set(MIOLKA_OWN_SYSTEM posix)
endif()
set(MIOLKA_SYSTEM ${MIOLKA_OWN_SYSTEM} CACHE STRING
    "System to build for: linux, apple, posix or windows; posix also on Linux, for a look at it")

# Where to look for a subject's file, the best first.
set(MIOLKA_VARIANTS_linux linux posix none)
set(MIOLKA_VARIANTS_apple apple posix none)
set(MIOLKA_VARIANTS_posix posix none)
set(MIOLKA_VARIANTS_windows windows none)
if(NOT DEFINED MIOLKA_VARIANTS_${MIOLKA_SYSTEM})
    message(FATAL_ERROR "MIOLKA_SYSTEM is '${MIOLKA_SYSTEM}'; it takes linux, apple, posix or "
                        "windows.")
endif()

# Adds the sources of the subjects, which are names of files without their ends, to the target.
function(miolka_add_system_sources TARGET)
    foreach(SUBJECT ${ARGN})
        set(FOUND)
        foreach(VARIANT ${MIOLKA_VARIANTS_${MIOLKA_SYSTEM}})
            if(NOT FOUND AND EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${SUBJECT}_${VARIANT}.cpp)
                set(FOUND ${SUBJECT}_${VARIANT}.cpp)
            endif()
        endforeach()
        if(NOT FOUND)
            message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}: no ${SUBJECT} for ${MIOLKA_SYSTEM}")
        endif()
        target_sources(${TARGET} PRIVATE ${FOUND} ${SUBJECT}.h)
    endforeach()
endfunction()
