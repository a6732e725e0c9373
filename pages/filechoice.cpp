// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pages/filechoice.h"

#include "pages/labeltext.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLabel>

namespace {

/// While this lives, every label that comes up is one of plain text. File dialogs have boxes and
/// tool tips of their own, which would take a name with "<" in it for marked-up text: they would
/// open the files it refers to, and lay out its tables.
class PlainLabels : public QObject
{
public:
    PlainLabels() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // Before it is laid out for the first time.
        if (event->type() == QEvent::Polish) {
            if (auto* label = qobject_cast<QLabel*>(watched)) {
                label->setTextFormat(Qt::PlainText);
                label->setText(pages::oneWording(label->text()));
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

namespace pages {

QString chooseFileToOpen(QWidget& window, const QString& title, const QString& directory,
                         const QString& filter)
{
    const PlainLabels plain;
    return QFileDialog::getOpenFileName(&window, title, directory, filter);
}

QString chooseFileToSave(QWidget& window, const QString& title, const QString& directory,
                         const QString& filter)
{
    const PlainLabels plain;
    return QFileDialog::getSaveFileName(&window, title, directory, filter);
}

} // namespace pages
