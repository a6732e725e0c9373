// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/census.h"

#include <QAbstractEventDispatcher>
#include <QMutex>
#include <QSet>
#include <QThread>

/// Functions that Qt calls for tools that look into a program, by the numbers below.
extern Q_CORE_EXPORT quintptr qtHookData[];

namespace remote {

namespace {

enum Hook { ObjectMade = 3, ObjectGone = 4 };

struct Living
{
    QMutex mutex;
    QSet<QObject*> objects;
};

Living& living()
{
    static Living all;
    return all;
}

void made(QObject* object)
{
    const QMutexLocker lock(&living().mutex);
    living().objects.insert(object);
}

void gone(QObject* object)
{
    const QMutexLocker lock(&living().mutex);
    living().objects.remove(object);
}

} // namespace

Census::Census()
{
    living();
    qtHookData[ObjectMade] = reinterpret_cast<quintptr>(&made);
    qtHookData[ObjectGone] = reinterpret_cast<quintptr>(&gone);
}

Census::~Census()
{
    qtHookData[ObjectMade] = 0;
    qtHookData[ObjectGone] = 0;
}

int Census::objects() const
{
    const QMutexLocker lock(&living().mutex);
    return static_cast<int>(living().objects.size());
}

int Census::timers() const
{
    const QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    const QMutexLocker lock(&living().mutex);
    int count = 0;
    for (QObject* object : qAsConst(living().objects)) {
        // A dispatcher knows those of its own thread only, and tells nobody else's.
        if (object->thread() == QThread::currentThread()) {
            count += static_cast<int>(dispatcher->registeredTimers(object).size());
        }
    }
    return count;
}

} // namespace remote
