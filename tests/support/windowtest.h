// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_WINDOWTEST_H
#define MIOLKA_TESTS_SUPPORT_WINDOWTEST_H

#include "app/mainwindow.h"
#include "image/memoryarea.h"
#include "tests/support/guitest.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QAction>
#include <QTemporaryDir>

/// What tests that drive the window have in common.
namespace support {

/// The widget or other object of that name in the window; a test cannot go on without it.
template <typename Child>
Child* child(const MainWindow& window, const QString& name)
{
    auto* found = window.findChild<Child*>(name);
    if (found == nullptr) {
        qFatal("the window has no %s", qPrintable(name));
    }
    return found;
}

template <typename Child>
Child* child(const MainWindow& window, const char* name)
{
    return child<Child>(window, QString::fromLatin1(name));
}

inline cMyMemoryArea* settingsImage(const MainWindow& window)
{
    return child<cMyMemoryArea>(window, "settingsImage");
}

/// The settings image as the window has it.
inline QByteArray imageOf(const MainWindow& window)
{
    return bytesOf(*settingsImage(window));
}

/// Lets the window open a settings file with this image, as if named on the command line.
inline void load(MainWindow& window, const QByteArray& image)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("loaded.mio"));
    writeFile(path, settingsText(image));
    window.openFileCmdLine(path);
}

/// Whether a widget lies on a page that scrolls, or moves with one.
inline bool isScrolled(const QWidget& widget)
{
    for (const QWidget* each = widget.parentWidget(); each != nullptr;
         each = each->parentWidget()) {
        if (each->inherits("QScrollArea") || each->inherits("cMyRuleHeading")) {
            return true;
        }
    }
    return false;
}

/// Which bytes two images do not share, as a text that a failing test can show.
inline QString differences(const QByteArray& before, const QByteArray& after)
{
    QStringList bytes;
    for (int i = 0; i < before.size(); ++i) {
        if (before.at(i) != after.at(i)) {
            bytes.append(QStringLiteral("%1:%2->%3")
                             .arg(i)
                             .arg(static_cast<quint8>(before.at(i)), 2, 16, QLatin1Char('0'))
                             .arg(static_cast<quint8>(after.at(i)), 2, 16, QLatin1Char('0')));
        }
    }
    return bytes.join(QLatin1Char(' '));
}

} // namespace support

#endif
