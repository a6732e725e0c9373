// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_REMOTELOOK_H
#define MIOLKA_ENDTOEND_REMOTELOOK_H

#include "tests/endtoend/remoteanswer.h"

#include <QApplication>
#include <QHash>
#include <QWidget>

#include <type_traits>

class QMainWindow;

/// What a person sees of the program. To be called in the GUI thread.
namespace remote {

/// The windows in the order in which a name is looked up in them: the dialog in front first, then
/// the main window.
[[nodiscard]] QWidgetList windows();

/// The program's main window; nullptr while there is none.
[[nodiscard]] QMainWindow* mainWindow();

/// The dialog that must be answered first; nullptr if there is none on the screen.
[[nodiscard]] QWidget* dialogInFront();

/// The widget or action with that name; nullptr if there is none.
template <typename Named>
Named* find(const QString& name)
{
    if (name.isEmpty()) {
        return nullptr;
    }
    const QWidgetList all = windows();
    for (QWidget* window : all) {
        if constexpr (std::is_base_of_v<QWidget, Named>) {
            auto* self = qobject_cast<Named*>(window);
            if (self != nullptr && self->objectName() == name) {
                return self;
            }
        }
        if (auto* found = window->findChild<Named*>(name)) {
            return found;
        }
    }
    return nullptr;
}

/// Class, title, texts and progress of a dialog.
[[nodiscard]] QJsonObject describe(const QWidget& dialog);

/// The requests that only look, by their names.
[[nodiscard]] QHash<QString, Command> lookingCommands();

} // namespace remote

#endif
