// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_DESKTOP_H
#define MIOLKA_TESTS_SUPPORT_DESKTOP_H

#include <QProcess>
#include <QStringList>

namespace support {

/// A screen of its own (Xvfb) with a keyboard (xdotool), for programs that run as they are.
class Desktop
{
public:
    /// Starts the screen; isRunning() tells whether that worked.
    Desktop();
    ~Desktop();
    Q_DISABLE_COPY_MOVE(Desktop)

    [[nodiscard]] bool isRunning() const { return !m_display.isEmpty(); }

    /// The environment for programs that are to appear on this screen.
    [[nodiscard]] QProcessEnvironment environment() const;

    /// Waits until a visible window's title matches the pattern and gives it the keyboard. Its
    /// number, or an empty text after ten seconds without one.
    QString focus(const QString& pattern);

    /// The title of a window.
    [[nodiscard]] QString title(const QString& window);

    /// Whether a visible window's title matches the pattern.
    [[nodiscard]] bool isShown(const QString& pattern);

    /// Presses keys, each written as xdotool does: "ctrl+s".
    void press(const QStringList& keys);

    /// Types a text of ASCII characters.
    void type(const QString& text);

    /// Keeps a picture of the screen among the build's artefacts.
    void photograph(const QString& name);

private:
    /// The number of the first visible window whose title matches; empty if there is none.
    [[nodiscard]] QString search(const QString& pattern);

    /// The output of a command on this screen.
    QString run(const QString& program, const QStringList& arguments);

    QProcess m_server;
    QString m_display;
};

} // namespace support

#endif
