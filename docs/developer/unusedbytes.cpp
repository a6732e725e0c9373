// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/developer/unusedbytes.h"

#include "editor/settingslayout.h"
#include "image/settingsfile.h"

namespace developer {

QVector<Span> unusedBytes()
{
    QVector<Span> spans;
    int end = 0; // of the field before
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.address > end) {
            spans.append({end, field.address - end});
        }
        end = field.address + field.width;
    }
    if (end < image::settingsImageSize) {
        spans.append({end, image::settingsImageSize - end});
    }
    return spans;
}

} // namespace developer
