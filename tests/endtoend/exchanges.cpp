// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/exchanges.h"

#include "tests/endtoend/devicework.h"
#include "tests/support/contents.h"
#include "tests/support/librarytext.h"

#include <algorithm>

namespace support {

namespace {

constexpr int startPage = 0;
constexpr int libraryRecords = 64;

QString titleOf(const QJsonValue& dialog)
{
    return dialog.toObject().value(QLatin1String("title")).toString();
}

/// What the dialog in front says, for messages.
QString frontTexts(Session& session)
{
    const QJsonObject dialog = session.dialog();
    QStringList texts{titleOf(dialog)};
    const QJsonArray labels = dialog.value(QLatin1String("texts")).toArray();
    for (const QJsonValue& label : labels) {
        texts += label.toString();
    }
    return texts.join(QLatin1Char(' '));
}

QString statusAgain(Session& session)
{
    const SentLines sent(session);
    if (!session.page(startPage) || !session.click(QStringLiteral("pbGetStatus"))) {
        return session.error();
    }
    QString error = sent.complete(linesOf(Operation::Status));
    if (error.isEmpty()) {
        error = waitForStatus(session);
    }
    return error;
}

/// A transfer of which every line must be sent once, and be answered.
QString wholeTransfer(Session& session, const char* action)
{
    const SentLines sent(session);
    const QString error = transfer(session, QString::fromLatin1(action));
    return error.isEmpty() ? sent.complete(linesOf(Operation::Read)) : error;
}

QString beginShortUpload(Session& session)
{
    constexpr int recordSize = 16;
    const QString path = session.path(QStringLiteral("short.mia"));
    const QByteArray text = libraryText(QByteArray(libraryRecords * recordSize, 'x'));
    return replaceContents(path, text) ? beginUpload(session, path)
                                       : QStringLiteral("the library cannot be written");
}

} // namespace

int linesOf(Operation operation)
{
    constexpr int status = 93;
    constexpr int transfer = 69;
    constexpr int words = 4;
    constexpr int otherRecords = 2; // the address before the library, and its end
    if (operation == Operation::Upload) {
        return words + libraryRecords + otherRecords;
    }
    if (operation == Operation::Status) {
        return status;
    }
    return isTransfer(operation) ? transfer : 1;
}

bool isTransfer(Operation operation)
{
    return operation == Operation::Read || operation == Operation::Write ||
           operation == Operation::Upload;
}

const char* nameOf(Operation operation)
{
    switch (operation) {
    case Operation::Status:
        return "status";
    case Operation::Read:
        return "read";
    case Operation::Write:
        return "write";
    case Operation::Command:
        return "command";
    case Operation::Upload:
        return "upload";
    }
    return "";
}

SentLines::SentLines(Session& session, std::optional<int> device)
    : m_session(session), m_device(device),
      m_before(static_cast<int>(linesToDevice(session.trace(), device).size()))
{
}

QStringList SentLines::lines() const
{
    return linesToDevice(m_session.trace(), m_device).mid(m_before);
}

bool SentLines::reach(int wanted) const
{
    return m_session.waitFor([this, wanted] { return count() >= wanted; });
}

QString SentLines::complete(int wanted) const
{
    m_session.waitFor([this, wanted] {
        const QStringList trace = m_session.trace();
        return linesToDevice(trace, m_device).size() - m_before >= wanted &&
               trace.last().contains(QStringLiteral(" < "));
    });
    return count() == wanted ? QString() : unlike(wanted);
}

QString SentLines::completeStatus() const
{
    const int wanted = linesOf(Operation::Status);
    const QString lastRecord = QStringLiteral(":0400FC000000000000");
    const QString end = QStringLiteral(":00000001FF");
    const bool isComplete = m_session.waitFor([&] {
        const QStringList trace = m_session.trace();
        const QStringList sent = linesToDevice(trace, m_device).mid(m_before);
        return sent.size() >= wanted && sent.last().endsWith(end) &&
               sent.at(sent.size() - 2).endsWith(lastRecord) &&
               trace.last().contains(QStringLiteral(" < "));
    });
    return isComplete ? QString() : unlike(wanted);
}

QString SentLines::unlike(int wanted) const
{
    return QStringLiteral("%1 lines were sent instead of %2; in front is \"%3\"")
        .arg(count())
        .arg(wanted)
        .arg(frontTexts(m_session));
}

std::unique_ptr<Session> startSession(const QStringList& emulatorOptions,
                                      const std::optional<QProcessEnvironment>& screen)
{
    SessionOptions options;
    if (screen) {
        options.platform = QStringLiteral("xcb");
        options.environment = *screen;
    }
    options.emulatorOptions =
        QStringList{QStringLiteral("--unplugged"), QStringLiteral("--settings"),
                    QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio")} +
        emulatorOptions;
    auto session = std::make_unique<Session>(options);
    if (!session->isRunning()) {
        qWarning("%s", qPrintable(session->error()));
        session.reset();
    }
    return session;
}

QString plugInAndSettle(Session& session)
{
    const SentLines sent(session);
    QString error = plugIn(session);
    if (error.isEmpty()) {
        error = sent.completeStatus();
    }
    if (error.isEmpty()) {
        error = waitForStatus(session);
    }
    if (!error.isEmpty()) {
        return error;
    }
    if (session.isVisible(QStringLiteral("lMiolkaStatus")) == std::make_optional(true)) {
        return {};
    }
    // Opening the start page asks once more.
    const SentLines again(session);
    return session.page(startPage) ? again.completeStatus() : session.error();
}

QString begin(Session& session, Operation operation)
{
    bool isBegun = false;
    switch (operation) {
    case Operation::Status:
        isBegun = session.click(QStringLiteral("pbGetStatus"));
        break;
    case Operation::Read:
        isBegun = session.trigger(QStringLiteral("actionReadSettings"));
        break;
    case Operation::Write:
        isBegun = session.trigger(QStringLiteral("actionWriteSettings"));
        break;
    case Operation::Command:
        isBegun = session.trigger(QStringLiteral("actionClearStats")) &&
                  session.waitFor([&session] { return !session.dialog().isEmpty(); }) &&
                  session.answer(QStringLiteral("Yes"));
        break;
    case Operation::Upload:
        return beginShortUpload(session);
    }
    return isBegun ? QString() : QStringLiteral("it does not begin: ") + session.error();
}

int errorBoxes(const QJsonArray& dialogs)
{
    return static_cast<int>(
        std::count_if(dialogs.begin(), dialogs.end(), [](const QJsonValue& dialog) {
            return titleOf(dialog) == QLatin1String("Error");
        }));
}

QString closeErrorBox(Session& session)
{
    if (!session.waitForDialog(QStringLiteral("Error"))) {
        return QStringLiteral("no error box came up");
    }
    if (!session.answer(QStringLiteral("Ok"))) {
        return session.error();
    }
    return session.waitForNoDialog() ? QString() : QStringLiteral("a box stays");
}

QString waitForNoDevice(Session& session)
{
    const QString status = QStringLiteral("lMiolkaStatus");
    session.waitFor([&] {
        return checkDeviceActions(session, false).isEmpty() &&
               session.text(status) == QLatin1String("N/A") &&
               session.isEnabled(QStringLiteral("portSelect")) == false;
    });
    if (session.text(status) != QLatin1String("N/A")) {
        return QStringLiteral("the status is \"%1\"").arg(session.text(status));
    }
    return checkDeviceActions(session, false);
}

QByteArray saved(Session& session)
{
    static int number = 0;
    const QString path = session.path(QStringLiteral("saved%1.mio").arg(++number));
    const QString error = saveAs(session, path);
    return error.isEmpty() ? contentsOf(path) : QByteArray();
}

QString exchangeEverything(Session& session)
{
    session.takeDialogs();
    QString error = statusAgain(session);
    if (error.isEmpty()) {
        error = wholeTransfer(session, "actionWriteSettings");
    }
    const QStringList written = lastWritten(session.trace());
    if (error.isEmpty()) {
        error = startAfresh(session);
    }
    if (error.isEmpty()) {
        error = wholeTransfer(session, "actionReadSettings");
    }
    if (error.isEmpty() && QString::fromLatin1(saved(session)) != written.join(QLatin1Char('\n'))) {
        error = QStringLiteral("what was written is not what was read back");
    }
    const QString dialog = titleOf(session.dialog());
    return error.isEmpty() && !dialog.isEmpty() ? dialog : error;
}

QString exchangeOnce(Session& session, Operation operation)
{
    const SentLines sent(session);
    QString error = begin(session, operation);
    if (!error.isEmpty()) {
        return error;
    }
    return session.waitForNoDialog() ? sent.complete(linesOf(operation))
                                     : QStringLiteral("a dialog stays");
}

} // namespace support
