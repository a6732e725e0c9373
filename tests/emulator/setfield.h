// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_SETFIELD_H
#define MIOLKA_TESTS_EMULATOR_SETFIELD_H

#include "editor/fieldcodec.h"
#include "image/memoryarea.h"

namespace support {

/// Writes a field of a settings image by its name, in stored units.
inline void setField(cMyMemoryArea& settings, const QString& name, int number)
{
    const cMySettingsField& field = editor::settingsField(name);
    settings.setData(static_cast<quint32>(field.address), editor::numberBytes(number, field));
}

} // namespace support

#endif
