# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Toolchain that compiles for Windows against the headers of this system's own Qt: enough for the
# compiler to miss what Windows lacks, not to link a program. scripts/check-portable uses it.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_PREFIX_PATH /usr)
set(CMAKE_LIBRARY_ARCHITECTURE $ENV{MIOLKA_HOST_ARCHITECTURE})

# Read once more when the project has begun. The libraries of this system's Qt have no import
# libraries, which would be asked for.
set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_FILE})
set(CMAKE_IMPORT_LIBRARY_SUFFIX "")
