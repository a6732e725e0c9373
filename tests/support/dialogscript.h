// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_DIALOGSCRIPT_H
#define MIOLKA_TESTS_SUPPORT_DIALOGSCRIPT_H

#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <functional>
#include <queue>

class QFileDialog;

namespace support {

/// What a modal dialog showed when it was answered.
struct SeenDialog
{
    QString title;
    QString text;      ///< of a message box
    QString directory; ///< of a file dialog
    QStringList filters;
    QMessageBox::StandardButtons buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool hasDefaultButton = false; ///< whether one of the buttons was chosen beforehand
    const QWidget* parent = nullptr;
};

/// Answers modal dialogs one after another, as a user would, while the program waits inside them.
/// A dialog that no step is left for is dismissed and counted.
class DialogScript : public QObject
{
    Q_OBJECT

public:
    explicit DialogScript(QObject* parent = nullptr);

    /// Presses a button of the next message box; given a title, of the next one with that.
    void press(QMessageBox::StandardButton button, const QString& title = {});

    /// Types a path into the next file dialog and presses Return.
    void chooseFile(const QString& path);

    /// Presses Escape in the next dialog.
    void dismiss();

    /// Does something else while the next dialog stands, which is left for the step after it.
    void act(std::function<void()> action);

    /// Every step was used and no other dialog came up.
    [[nodiscard]] bool isFinished() const { return m_steps.empty() && m_unexpected.isEmpty(); }

    /// Titles of the dialogs that came up without a step for them.
    [[nodiscard]] QStringList unexpected() const { return m_unexpected; }

    [[nodiscard]] const QVector<SeenDialog>& seen() const { return m_seen; }

private:
    void look();
    void note(QWidget& dialog);

    struct Step
    {
        QString title; ///< of the dialog that it waits for; empty for any
        std::function<void(QWidget&)> take;
    };

    std::queue<Step> m_steps;
    QVector<SeenDialog> m_seen;
    QStringList m_unexpected;
};

} // namespace support

#endif
