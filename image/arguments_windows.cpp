// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/arguments.h"

#include <QCoreApplication>

namespace image {

/// What main() gets has lost every letter that the system's old 8-bit encoding lacks.
QStringList decodedArguments(int /*argc*/, char* /*argv*/[])
{
    return QCoreApplication::arguments();
}

} // namespace image
