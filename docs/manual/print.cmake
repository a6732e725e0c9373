# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Prints HTML to PDF with WEASYPRINT. Whatever it complains about is an error: a picture that is
# missing, a link that leads nowhere, a rule of the style that it does not know.
# The fonts within it would bear the time of printing.
set(ENV{SOURCE_DATE_EPOCH} 0)
# Pictures are named after where they lie: by a name for that which is the same everywhere.
get_filename_component(directory ${HTML} DIRECTORY)
set(base)
if(EXISTS /proc/self/cwd)
    set(base --base-url file:///proc/self/cwd/)
endif()
execute_process(COMMAND ${WEASYPRINT} ${base} ${HTML} ${PDF}.part
    WORKING_DIRECTORY ${directory}
    RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
# The font's own date is of no concern.
string(REGEX REPLACE "'created' timestamp[^\n]*\n" "" said "${said}")
if(NOT status EQUAL 0 OR NOT said STREQUAL "")
    file(REMOVE ${PDF}.part)
    message(FATAL_ERROR "The manual cannot be printed: ${said}")
endif()
file(RENAME ${PDF}.part ${PDF})
