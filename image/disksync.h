// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_DISKSYNC_H
#define MIOLKA_IMAGE_DISKSYNC_H

namespace image {

/// Waits until the disk has what was written to the open file, which C's number stands for; the
/// system must have got all of it before. False if the disk did not take it; true as well where a
/// file system has no answer.
[[nodiscard]] bool syncDescriptor(int descriptor);

} // namespace image

#endif
