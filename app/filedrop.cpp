// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/filedrop.h"

#include "app/settingsdocument.h"

#include <QDropEvent>
#include <QWidget>

cMyFileDrop::cMyFileDrop(QWidget& window, std::function<bool()> isWelcome)
    : QObject(&window), m_isWelcome(std::move(isWelcome))
{
    window.installEventFilter(this);
}

bool cMyFileDrop::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::DragEnter) {
        enter(*static_cast<QDragEnterEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::Drop) {
        drop(*static_cast<QDropEvent*>(event));
        return true;
    }
    return QObject::eventFilter(watched, event);
}

QString cMyFileDrop::offeredFile(const QDropEvent& event) const
{
    return m_isWelcome() ? cMySettingsDocument::droppedFile(*event.mimeData()) : QString();
}

void cMyFileDrop::enter(QDragEnterEvent& event) const
{
    const bool isCopyable = event.possibleActions().testFlag(Qt::CopyAction);
    if (isCopyable && !offeredFile(event).isEmpty()) {
        event.setDropAction(Qt::CopyAction);
        event.accept();
    } else {
        event.ignore();
    }
}

void cMyFileDrop::drop(QDropEvent& event)
{
    const QString path = offeredFile(event);
    if (path.isEmpty()) {
        event.ignore();
        return;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    // That program waits until this returns; the question whether to keep changes must not hold
    // it up.
    QMetaObject::invokeMethod(
        this, [this, path] { emit dropped(path); }, Qt::QueuedConnection);
}
