// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_INPUTS_H
#define MIOLKA_EDITOR_INPUTS_H

#include "editor/settingslayout.h"

class QObject;
class QWidget;
class cMyComboBoxW2;
class cMyDoubleSpinBoxInt;
class cMyImageGate;
class cMyTableModel;

/// What every input of the editor has in common.
namespace editor {

/// Names an input for those who do not see where it stands, and lets it take the wheel only while
/// it has the focus, so that scrolling a page changes no setting.
void prepareInput(QWidget& input, const QString& name);

/// Lets an input store itself in a field, through the gate.
void bindInput(cMyComboBoxW2& input, const cMySettingsField& field, cMyImageGate& gate);
void bindInput(cMyDoubleSpinBoxInt& input, const cMySettingsField& field, cMyImageGate& gate);

/// The table of what a field offers; it belongs to parent.
[[nodiscard]] cMyTableModel* loadOptions(const cMySettingsField& field, QObject& parent);

/// A field's unit as inputs show it behind the number: " [cm]".
[[nodiscard]] QString suffix(const cMySettingsField& field);

} // namespace editor

#endif
