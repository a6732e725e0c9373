// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_DESCRIPTIONTEST_H
#define MIOLKA_TESTS_SUPPORT_DESCRIPTIONTEST_H

#include "tests/support/windowtest.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace support {

/// The default settings with other author, title and description.
inline QByteArray imageWithTexts(const QByteArray& author, const QByteArray& title,
                                 const QByteArray& description)
{
    QByteArray image = support::templateImage();
    image.replace(16, author.size(), author);
    image.replace(32, title.size(), title);
    return image.replace(512, description.size(), description);
}

/// A window whose texts are those of the default settings, and a person's ways to them.
class DescriptionTest : public QObject
{
protected:
    void startAfresh()
    {
        if (m_window == nullptr) {
            m_window = std::make_unique<MainWindow>();
            m_window->show();
        }
        // Another text first, so that the history of the last test's edits is gone.
        load(*m_window, QByteArray(1024, 'x'));
        load(*m_window, templateImage());
    }

    [[nodiscard]] QLineEdit* author() const { return child<QLineEdit>(*m_window, "leAuthor"); }

    [[nodiscard]] QLineEdit* title() const { return child<QLineEdit>(*m_window, "leTitle"); }

    [[nodiscard]] QPlainTextEdit* description() const
    {
        return child<QPlainTextEdit>(*m_window, "pteDescription");
    }

    [[nodiscard]] QByteArray bytes(int address, int count) const
    {
        return imageOf(*m_window).mid(address, count);
    }

    void paste(const QString& text) const
    {
        QGuiApplication::clipboard()->setText(text);
        description()->paste();
    }

    std::unique_ptr<MainWindow> m_window;
};

} // namespace support

#endif
