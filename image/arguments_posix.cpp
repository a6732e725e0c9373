// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/arguments.h"

#include "image/filename.h"

namespace image {

QStringList decodedArguments(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(decodeFileName(argv[i]));
    }
    return arguments;
}

} // namespace image
