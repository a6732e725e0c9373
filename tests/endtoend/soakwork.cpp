// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/soakwork.h"

#include "emulator/statefile.h"
#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divework.h"
#include "tests/support/contents.h"
#include "tests/support/librarytext.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <functional>
#include <initializer_list>

using support::Operation;

namespace {

constexpr int parametersPage = 1;

constexpr int wordsOfTransfer = 4;
constexpr int recordHeader = 9; ///< characters: colon, count, offset, type

/// The first answer that does not belong to its line; empty if all do. A word is echoed, and so is
/// a record that is written; one that is read comes back with the device's bytes.
QString wrongAnswer(const QStringList& sent, const QStringList& answers)
{
    if (sent.size() != answers.size()) {
        return QStringLiteral("%1 lines have %2 answers").arg(sent.size()).arg(answers.size());
    }
    bool isReading = false;
    for (int i = 0; i < sent.size(); ++i) {
        const QString& line = sent.at(i);
        const QString& answer = answers.at(i);
        if (line == QLatin1String("#READ") || line == QLatin1String("#WRITE")) {
            isReading = line == QLatin1String("#READ");
        }
        const bool bringsBytes = isReading && line.startsWith(QLatin1Char(':'));
        const bool isRight =
            bringsBytes ? answer.size() == line.size() && answer.startsWith(line.left(recordHeader))
                        : answer == line;
        if (!isRight) {
            return QStringLiteral("\"%1\" was answered by \"%2\"").arg(line, answer);
        }
    }
    return {};
}

/// What the records say that lies in a memory of that size, over what lies there already.
QByteArray written(const QStringList& records, QByteArray memory)
{
    constexpr int base = 16;
    constexpr int offsetPosition = 3;
    constexpr int offsetSize = 4;
    constexpr int checksumSize = 2;
    for (const QString& record : records) {
        const int address = record.mid(offsetPosition, offsetSize).toInt(nullptr, base);
        const QString hex = record.mid(recordHeader, record.size() - recordHeader - checksumSize);
        const QByteArray bytes = QByteArray::fromHex(hex.toLatin1());
        memory.replace(address, bytes.size(), bytes);
    }
    return memory;
}

} // namespace

SoakWork::SoakWork(int rounds, quint32 seed)
    : m_rounds(rounds), m_random(seed),
      m_session(soakOptions({QStringLiteral("--state"), QStringLiteral("state")})), m_out(stdout),
      m_table(m_session,
              {QStringLiteral("lines"), QStringLiteral("exchanges"), QStringLiteral("uploads"),
               QStringLiteral("simulations"), QStringLiteral("pluggings")})
{
    m_out << rounds << " rounds, seed " << seed << Qt::endl;
}

bool SoakWork::run()
{
    constexpr int warmingPart = 10;  // a tenth of the rounds
    constexpr int longestLog = 1000; // characters
    const int warmRound = std::max(1, m_rounds / warmingPart);
    QString error = prepare();
    while (error.isEmpty() && m_round < m_rounds) {
        error = makeRound();
        const char* name = nullptr;
        if (m_round == warmRound) {
            name = "after the warm-up";
        } else if (m_round == m_rounds / 2) {
            name = "at the middle";
        } else if (m_round == m_rounds) {
            name = "at the end";
        }
        if (error.isEmpty()) {
            error = takeSample(name);
        }
        if (m_round == warmRound) {
            m_table.warmedUp();
        }
    }
    if (!error.isEmpty()) {
        m_out << "the terminal is \"" << m_session.terminal() << "\"; logged were:\n"
              << m_session.logged().right(longestLog);
    }
    if (error.isEmpty() &&
        (!m_session.close() || m_session.exitStatus() != std::make_optional(0))) {
        error = QStringLiteral("it does not end with 0");
    }
    m_out << (error.isEmpty()
                  ? QStringLiteral("holds:  every answer, and what was read and written")
                  : QStringLiteral("BROKEN: in round %1: ").arg(m_round) + error)
          << Qt::endl;
    return m_table.isSteady() && error.isEmpty();
}

QString SoakWork::takeSample(const char* name)
{
    return m_table.takeSample(name,
                              {m_lines, m_exchanges, m_uploads, m_simulations, m_unpluggings});
}

QString SoakWork::prepare()
{
    if (!m_session.isRunning()) {
        return m_session.error();
    }
    m_log = std::make_unique<support::DiveLog>(m_session);
    const QString file = support::contentsOf(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio"));
    m_settings = file.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    QString error = plugInForStatus(m_session);
    if (error.isEmpty()) {
        error = support::returnToStartPage(m_session);
    }
    if (error.isEmpty()) {
        m_title = m_session.text(QStringLiteral("lParamTytul"));
        m_language = m_session.text(QStringLiteral("lVoiceLang"));
        m_version = m_session.text(QStringLiteral("lVoiceVersion"));
        error = takeAnswers();
    }
    m_table.begin();
    return error.isEmpty() ? takeSample("at the start") : error;
}

QString SoakWork::makeRound()
{
    constexpr Operation inTurn[] = {Operation::Status, Operation::Read, Operation::Write,
                                    Operation::Command};
    constexpr int exchanges = 5;
    ++m_round;
    QString error;
    for (int i = 0; i < exchanges && error.isEmpty(); ++i) {
        const auto turn = static_cast<std::size_t>(m_exchanges) % std::size(inTurn);
        error = exchange(inTurn[turn]);
    }
    for (const auto step : {&SoakWork::upload, &SoakWork::simulate, &SoakWork::unplug}) {
        if (error.isEmpty()) {
            error = (this->*step)();
        }
    }
    if (error.isEmpty()) {
        error = plugInForStatus(m_session);
    }
    if (error.isEmpty()) {
        error = checkStatus();
    }
    return error.isEmpty() ? takeAnswers() : error;
}

bool SoakWork::hasFileDialogs() const
{
    constexpr int rounds = 5;
    return m_round % rounds == 1;
}

QString SoakWork::takeAnswers()
{
    m_log->update();
    QString error = wrongAnswer(m_log->sent(), m_log->answers());
    m_lines += m_log->sent().size();
    m_log = std::make_unique<support::DiveLog>(m_session);
    const int boxes = support::errorBoxes(m_session.takeDialogs());
    if (error.isEmpty() && boxes > 0) {
        error = QStringLiteral("%1 error boxes came up").arg(boxes);
    }
    return error;
}

QString SoakWork::exchange(Operation operation)
{
    ++m_exchanges;
    if (operation == Operation::Read) {
        return read();
    }
    if (operation == Operation::Write) {
        return write();
    }
    const QString error = begin(operation, nullptr);
    return error.isEmpty() && operation == Operation::Status ? checkStatus() : error;
}

QString SoakWork::begin(Operation operation, QStringList* records)
{
    m_log->update();
    const int before = static_cast<int>(m_log->sent().size());
    const int lines = support::linesOf(operation);
    QString error = support::begin(m_session, operation);
    if (error.isEmpty()) {
        error = complete(before, lines);
    }
    if (records != nullptr) {
        // In a read they are the answers.
        const QStringList& all = operation == Operation::Read ? m_log->answers() : m_log->sent();
        *records = all.mid(before + wordsOfTransfer, lines - wordsOfTransfer);
    }
    return error;
}

QString SoakWork::complete(int before, int lines)
{
    const bool isComplete = m_session.waitForNoDialog() && m_session.waitFor([&] {
        m_log->update();
        return m_log->sent().size() >= before + lines && m_log->isAnswered();
    });
    const int count = static_cast<int>(m_log->sent().size()) - before;
    return isComplete && count == lines
               ? QString()
               : QStringLiteral("%1 lines were sent instead of %2").arg(count).arg(lines);
}

QString SoakWork::checkStatus()
{
    const std::pair<const char*, QString> expected[] = {
        {"lMiolkaStatus", QStringLiteral("Self-test: Passed")},
        {"lVoiceLang", m_language},
        {"lVoiceVersion", m_version},
        {"lParamTytul", m_title}};
    for (const auto& [label, text] : expected) {
        const QString name = QString::fromLatin1(label);
        // The answer that came last is shown a moment later.
        if (!m_session.waitFor([&, &wanted = text] { return m_session.text(name) == wanted; })) {
            return QStringLiteral("%1 shows \"%2\" instead of \"%3\"")
                .arg(name, m_session.text(name), text);
        }
    }
    return {};
}

QString SoakWork::read()
{
    QString error = support::startAfresh(m_session);
    QStringList records;
    if (error.isEmpty()) {
        error = begin(Operation::Read, &records);
    }
    if (error.isEmpty() && records != m_settings) {
        error = QStringLiteral("other settings were read than the device holds");
    }
    return error.isEmpty() ? checkSettings() : error;
}

QString SoakWork::write()
{
    QString error = changeSettings();
    const QStringList before = m_settings;
    if (error.isEmpty()) {
        error = begin(Operation::Write, &m_settings);
    }
    if (error.isEmpty() && m_settings == before) {
        error = QStringLiteral("the same settings were written once more");
    }
    return error.isEmpty() ? checkSettings() : error;
}

QString SoakWork::changeSettings()
{
    constexpr int mostSpeed = 200;
    m_title = QStringLiteral("Exchange %1").arg(m_exchanges);
    const bool isChanged =
        m_session.page(parametersPage) &&
        m_session.setValue(QStringLiteral("par6Sb"), -m_random.bounded(mostSpeed)) &&
        m_session.type(QStringLiteral("leTitle"), m_title);
    return isChanged ? support::returnToStartPage(m_session) : m_session.error();
}

QString SoakWork::checkSettings()
{
    const QString shown = m_session.text(QStringLiteral("leTitle"));
    if (shown != m_title) {
        return QStringLiteral("the title is \"%1\" instead of \"%2\"").arg(shown, m_title);
    }
    if (!hasFileDialogs()) {
        return {};
    }
    const QString path = m_session.path(QStringLiteral("saved.mio"));
    QFile::remove(path);
    const QString error = support::saveAs(m_session, path);
    const bool isSame = support::contentsOf(path) == m_settings.join(QLatin1Char('\n')).toLatin1();
    return error.isEmpty() && !isSame
               ? QStringLiteral("other settings are saved than the device holds")
               : error;
}

QString SoakWork::upload()
{
    constexpr int librarySize = 0x64000;
    constexpr int recordSize = 16;
    constexpr int otherRecords = 8; // the addresses of seven segments, and the end
    constexpr int versions = 200;
    if (!hasFileDialogs()) {
        return {};
    }
    ++m_uploads;
    const int number = m_uploads % versions + 1;
    m_language = QStringLiteral("Language %1").arg(m_uploads);
    m_version = QStringLiteral("%1.2.3.4").arg(number);
    m_library = support::libraryImage(librarySize, m_random.generate(), m_language.toLatin1(),
                                      QByteArray(1, static_cast<char>(number)) + "\2\3\4");
    const QString path = m_session.path(QStringLiteral("library.mia"));
    if (!support::replaceContents(path, support::libraryText(m_library))) {
        return QStringLiteral("the library cannot be written");
    }
    m_log->update();
    const int before = static_cast<int>(m_log->sent().size());
    const QString error = support::beginUpload(m_session, path);
    return error.isEmpty()
               ? complete(before, wordsOfTransfer + librarySize / recordSize + otherRecords)
               : error;
}

QString SoakWork::simulate()
{
    constexpr int latency = 1; // or the trace would get long
    ++m_simulations;
    support::DiveLog log(m_session);
    QString error = m_session.latency(latency) ? QString() : m_session.error();
    for (const auto& step : std::initializer_list<std::function<QString()>>{
             [&] { return support::startDive(m_session, log); },
             [&] { return support::steer(m_session, "pbAdd1"); },
             [&] { return support::disagreement(support::compareValues(m_session, log)); },
             [&] { return support::stopDive(m_session, log); },
             [&] { return support::returnToStartPage(m_session); },
             [&] { return m_session.latency(0) ? QString() : m_session.error(); },
             [&] {
                 return checkStatus();
             }}) {
        if (error.isEmpty()) {
            error = step();
        }
    }
    return error;
}

bool SoakWork::areInDevice() const
{
    const auto devices = emulator::readState(m_session.path(QStringLiteral("state")));
    if (!devices || devices->size() != 1) {
        return false;
    }
    const QByteArray settings = devices->first().bytes(EEPROM);
    return written(m_settings, settings) == settings &&
           devices->first().bytes(FLASH).startsWith(m_library);
}

QString SoakWork::unplug()
{
    QString error = takeAnswers();
    if (!error.isEmpty()) {
        return error;
    }
    ++m_unpluggings;
    const QString untold = unplugAndCloseBox(m_session);
    const int boxes = support::errorBoxes(m_session.takeDialogs());
    if (!untold.isEmpty() || boxes != 1) {
        return QStringLiteral("%1 boxes told of the unplugging; ").arg(boxes) + untold;
    }
    return m_session.waitFor([this] { return areInDevice(); })
               ? QString()
               : QStringLiteral("the device does not hold what was written");
}
