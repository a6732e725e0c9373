// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_BROKENDISK_H
#define MIOLKA_TESTS_SUPPORT_BROKENDISK_H

#include <QtGlobal>

namespace support {

/// What is wrong with a disk. Errors are numbers of errno, 0 for none.
struct DiskFault
{
    int room = -1; ///< bytes that can still be written; any number of them if negative
    int syncError = 0;
    int goodSyncs = 0; ///< before the first that fails
    int linkError = 0;
    int renameError = 0;
    bool hasUnnamedFiles = true; ///< whether a file can be made that has no name yet
};

/// While this lives, the files of this process lie on such a disk: it stands between the process
/// and the system's calls. A write for which there is too little room writes what there is room
/// for, and the next one fails, as real disks do it.
class BrokenDisk
{
public:
    explicit BrokenDisk(const DiskFault& fault);
    ~BrokenDisk();
    Q_DISABLE_COPY_MOVE(BrokenDisk)

    /// How many calls have failed because of this fault.
    [[nodiscard]] static int failures();
};

} // namespace support

#endif
