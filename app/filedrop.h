// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_APP_FILEDROP_H
#define MIOLKA_APP_FILEDROP_H

#include <QObject>

#include <functional>

class QDragEnterEvent;
class QDropEvent;
class QWidget;

/// Takes settings files that are dropped on a window. It only ever copies: after a move the
/// program that the file was dragged from would delete it.
class cMyFileDrop : public QObject
{
    Q_OBJECT

public:
    /// The window is not owned and is this object's parent; isWelcome is asked before anything is
    /// taken.
    cMyFileDrop(QWidget& window, std::function<bool()> isWelcome);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// A file was dropped; told once the program that it was dragged from has its answer.
    void dropped(const QString& path);

private:
    [[nodiscard]] QString offeredFile(const QDropEvent& event) const;
    void enter(QDragEnterEvent& event) const;
    void drop(QDropEvent& event);

    std::function<bool()> m_isWelcome;
};

#endif
