// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QGenericPlugin>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

/// Ends the program that it is loaded into as soon as its first window has been painted, so that
/// the time to there can be measured on a program as it is.
class FirstPaint : public QObject
{
    Q_OBJECT

public:
    explicit FirstPaint(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget != nullptr && widget->isWindow()) {
            // After this event the rest of the window is painted and flushed in one go.
            QTimer::singleShot(0, [] { std::_Exit(EXIT_SUCCESS); });
        }
        return false;
    }
};

class FirstPaintPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstpaint.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*options*/) override
    {
        return new FirstPaint(qApp);
    }
};

#include "firstpaint.moc"
