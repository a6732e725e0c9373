// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"

#include "tests/endtoend/session.h"

#include <QThread>

#include <algorithm>

namespace support {

namespace {

const QString selector = QStringLiteral("portSelect");

QString unless(bool done, const QString& otherwise)
{
    return done ? QString() : otherwise;
}

/// The titles of the dialogs that have come up since the program was last asked.
QStringList dialogTitles(Session& session)
{
    QStringList titles;
    const QJsonArray dialogs = session.takeDialogs();
    for (const QJsonValue& dialog : dialogs) {
        titles += dialog.toObject().value(QLatin1String("title")).toString();
    }
    return titles;
}

} // namespace

QStringList deviceActions()
{
    return {QStringLiteral("actionReadSettings"), QStringLiteral("actionWriteSettings"),
            QStringLiteral("actionReset"),        QStringLiteral("actionClearStats"),
            QStringLiteral("actionPowerOff"),     QStringLiteral("actionFirmwareUpdate")};
}

QString checkDeviceActions(Session& session, bool enabled)
{
    const QStringList all =
        deviceActions() + QStringList{QStringLiteral("actionLibraryUpdate"),
                                      QStringLiteral("pbGetStatus"), QStringLiteral("pbDetails"),
                                      QStringLiteral("simWidget")};
    for (const QString& each : all) {
        if (session.isEnabled(each) != std::make_optional(enabled)) {
            return each + (enabled ? QStringLiteral(" is not enabled")
                                   : QStringLiteral(" is not disabled"));
        }
    }
    return {};
}

QString plugIn(Session& session, int device)
{
    if (!session.plug(device)) {
        return session.error();
    }
    const QString port = QStringLiteral("ttyACM%1").arg(device);
    if (!session.waitFor([&] { return session.items(selector).contains(port); })) {
        return QStringLiteral("the selector does not offer ") + port;
    }
    session.waitFor([&] { return checkDeviceActions(session, true).isEmpty(); });
    return checkDeviceActions(session, true);
}

QString unplug(Session& session)
{
    session.takeDialogs();
    if (!session.unplug()) {
        return session.error();
    }
    if (!session.waitForDialog(QStringLiteral("Error"))) {
        return QStringLiteral("no error box came up");
    }
    if (!session.answer(QStringLiteral("Ok"))) {
        return session.error();
    }
    // Time for another box, if there were one.
    constexpr unsigned long rest = 1500;
    QThread::msleep(rest);
    const QStringList titles = dialogTitles(session);
    if (titles.count(QStringLiteral("Error")) != 1) {
        return QStringLiteral("not one error box, but: ") + titles.join(QStringLiteral(", "));
    }
    return checkDeviceActions(session, false);
}

QString waitForStatus(Session& session)
{
    const QString label = QStringLiteral("lMiolkaStatus");
    session.waitFor([&] { return session.text(label).startsWith(QStringLiteral("Self-test: ")); });
    const QString status = session.text(label);
    return unless(status == QLatin1String("Self-test: Passed"),
                  QStringLiteral("the status is \"%1\"").arg(status));
}

QString transfer(Session& session, const QString& action)
{
    session.takeDialogs();
    if (!session.trigger(action)) {
        return session.error();
    }
    QJsonArray dialogs;
    const bool cameUp = session.waitFor([&] {
        const QJsonArray more = session.takeDialogs();
        std::copy(more.begin(), more.end(), std::back_inserter(dialogs));
        return !dialogs.isEmpty();
    });
    if (!cameUp) {
        return QStringLiteral("no progress was shown");
    }
    const QJsonObject dialog = dialogs.first().toObject();
    if (dialog.value(QLatin1String("class")).toString() != QLatin1String("QProgressDialog")) {
        return QStringLiteral("instead of the progress came \"%1\"")
            .arg(dialog.value(QLatin1String("title")).toString());
    }
    return unless(session.waitForNoDialog(), QStringLiteral("it does not end"));
}

QString beginUpload(Session& session, const QString& file)
{
    const bool isBegun = session.trigger(QStringLiteral("actionLibraryUpdate")) &&
                         session.waitForDialog(QStringLiteral("Open file")) &&
                         session.chooseFile(file) &&
                         session.waitForDialog(QStringLiteral("Sound library update...")) &&
                         session.answer(QStringLiteral("Yes"));
    return unless(isBegun, QStringLiteral("the upload does not begin: ") + session.error());
}

QString saveAs(Session& session, const QString& file)
{
    const bool isSaved = session.trigger(QStringLiteral("actionSaveAs")) &&
                         session.waitForDialog(QStringLiteral("Save to file")) &&
                         session.chooseFile(file) && session.waitForNoDialog();
    if (!isSaved) {
        return session.error().isEmpty() ? QStringLiteral("the file dialog does not come or go")
                                         : session.error();
    }
    return unless(session.title().endsWith(file), QStringLiteral("the file was not saved"));
}

QString startAfresh(Session& session)
{
    if (!session.trigger(QStringLiteral("actionNew"))) {
        return session.error();
    }
    // It asks only if something was changed, and then waits in the question.
    if (!session.dialog().isEmpty() && !session.answer(QStringLiteral("No"))) {
        return session.error();
    }
    return unless(session.waitForNoDialog() && !session.title().contains(QStringLiteral("---")),
                  QStringLiteral("the default settings were not loaded"));
}

QStringList linesToDevice(const QStringList& trace, std::optional<int> device)
{
    const QString mark = device ? QStringLiteral(" > %1 ").arg(*device) : QStringLiteral(" > ");
    const QString lineEnd = QStringLiteral("\\r\\n");
    QStringList lines;
    for (const QString& line : trace) {
        const auto start = line.indexOf(mark);
        if (start >= 0 && line.endsWith(lineEnd)) {
            const auto first = start + mark.size();
            lines += line.mid(first, line.size() - first - lineEnd.size());
        }
    }
    return lines;
}

QStringList lastWritten(const QStringList& trace)
{
    const QStringList lines = linesToDevice(trace);
    const auto word = lines.lastIndexOf(QStringLiteral("#WRITE"));
    QStringList records;
    if (word >= 0) {
        const auto first = std::next(lines.cbegin(), word + 1);
        const auto last = std::find_if(first, lines.cend(), [](const QString& line) {
            return !line.startsWith(QLatin1Char(':'));
        });
        std::copy(first, last, std::back_inserter(records));
    }
    return records;
}

} // namespace support
