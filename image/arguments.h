// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_ARGUMENTS_H
#define MIOLKA_IMAGE_ARGUMENTS_H

#include <QStringList>

namespace image {

/// The program's arguments, its name first, as they were typed. What is not valid text comes as
/// text that no file name can hold, by which it is recognised and refused. To be called with what
/// main() was given, once the application object is there, which takes out what is meant for it.
[[nodiscard]] QStringList decodedArguments(int argc, char* argv[]);

} // namespace image

#endif
