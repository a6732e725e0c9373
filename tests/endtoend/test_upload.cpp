// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/statefile.h"
#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"
#include "tests/support/librarytext.h"
#include "tests/support/posix.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

/// Sound libraries on their way into the device's flash memory.
class TestUpload : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void aWholeFlashMemory();
    void cancelledAndRepeated();
    void unpluggedAndRepeated();
    void twoOneAfterTheOther();
    void closedInTheMiddle();
    void aDeviceThatAnswersWithNonsense();

private:
    void start(bool withTrace = true);

    /// The flash memory that the device holds, once the program was closed.
    [[nodiscard]] QByteArray flash()
    {
        m_session->close();
        m_session->exitStatus();
        const auto devices = emulator::readState(m_session->path(QStringLiteral("state")));
        return devices && devices->size() == 1 ? devices->first().bytes(FLASH) : QByteArray();
    }

    QString write(const char* name, const QByteArray& contents)
    {
        QString path = m_session->path(QString::fromLatin1(name));
        support::writeFile(path, contents);
        return path;
    }

    std::unique_ptr<support::Session> m_session;
};

namespace {

constexpr int startPage = 0;
constexpr int smallSize = 0x10000; ///< with language and version at its end
constexpr int smallLines = smallSize / 16 + 2 + 4;

QByteArray small()
{
    return support::libraryImage(smallSize, 2, "English", QByteArray("\1\2\3\4", 4));
}

/// What another program makes of an Intel HEX file.
QByteArray binaryBy(const QString& program, QStringList arguments, const QString& hexFile,
                    const QString& binaryFile)
{
    arguments.replaceInStrings(QStringLiteral("HEX"), hexFile);
    arguments.replaceInStrings(QStringLiteral("BINARY"), binaryFile);
    if (QProcess::execute(program, arguments) != 0) {
        return {};
    }
    return support::readFile(binaryFile);
}

QByteArray binaryByObjcopy(const QString& hexFile)
{
    return binaryBy(QStringLiteral("objcopy"), {"-I", "ihex", "-O", "binary", "HEX", "BINARY"},
                    hexFile, hexFile + QStringLiteral(".objcopy"));
}

QByteArray binaryBySrecCat(const QString& hexFile)
{
    return binaryBy(QStringLiteral("srec_cat"), {"HEX", "-intel", "-o", "BINARY", "-binary"},
                    hexFile, hexFile + QStringLiteral(".srec_cat"));
}

/// The most memory that a process has held so far, in KiB.
int peakMemoryOf(qint64 process)
{
    static const QRegularExpression peak(QStringLiteral("VmHWM:\\s+([0-9]+) kB"));
    const QByteArray status = support::readFile(QStringLiteral("/proc/%1/status").arg(process));
    return peak.match(QString::fromLatin1(status)).captured(1).toInt();
}

/// The values of the progress until it is gone, one for each change.
QVector<int> watchProgress(support::Session& session, int* maximum)
{
    QVector<int> values;
    constexpr unsigned long pause = 50;
    for (QJsonObject dialog = session.dialog(); !dialog.isEmpty(); dialog = session.dialog()) {
        const int value = dialog.value(QLatin1String("value")).toInt();
        if (values.isEmpty() || value != values.last()) {
            values.append(value);
        }
        *maximum = dialog.value(QLatin1String("maximum")).toInt();
        QThread::msleep(pause);
    }
    return values;
}

} // namespace

void TestUpload::cleanup()
{
    m_session.reset();
}

void TestUpload::start(bool withTrace)
{
    support::SessionOptions options;
    options.withTrace = withTrace;
    // Relative to the session's own directory.
    options.emulatorOptions = QStringList{QStringLiteral("--unplugged"), QStringLiteral("--state"),
                                          QStringLiteral("state")};
    // A library is a million lines to log.
    options.environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                               QStringLiteral("miolka.link.debug=false"));
    m_session = std::make_unique<support::Session>(options);
    QVERIFY2(m_session->isRunning(), qPrintable(m_session->error()));
    if (withTrace) {
        QCOMPARE(support::plugInAndSettle(*m_session), QString());
        return;
    }
    QCOMPARE(support::plugIn(*m_session), QString());
    QVERIFY(m_session->page(startPage));
    QCOMPARE(support::waitForStatus(*m_session), QString());
}

void TestUpload::aWholeFlashMemory()
{
    start(false);
    const QByteArray image =
        support::libraryImage(MIOLKA_LIBRARY_SIZE, 1, "Esperanto", QByteArray("\7\6\5\4", 4));
    const QByteArray text = support::libraryText(image);
    const int lines = static_cast<int>(text.count('\n')) + 4;
    const QString file = write("library.mia", text);
    const int memoryBefore = peakMemoryOf(m_session->programId());
    QVERIFY(m_session->takeLongestGap() >= 0); // counts anew

    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(m_session->waitFor(
        [&] { return !m_session->dialog().value(QLatin1String("label")).isUndefined(); }));
    int maximum = 0;
    QVector<int> values = watchProgress(*m_session, &maximum);
    QCOMPARE(maximum, lines);
    QVERIFY(std::is_sorted(values.cbegin(), values.cend()));
    constexpr int fewest = 20;
    QVERIFY2(values.size() >= fewest, qPrintable(QString::number(values.size())));
    const int gap = m_session->takeLongestGap();
    const qint64 memory = peakMemoryOf(m_session->programId()) - memoryBefore;
    const double bytesPerLine = 1024.0 * static_cast<double>(memory) / lines;
    qInfo("%d lines; progress seen at %d values; longest gap %d ms; %.0f bytes a line", lines,
          static_cast<int>(values.size()), gap, bytesPerLine);
#ifdef MIOLKA_MEASURES_MEMORY
    constexpr double most = 600;
    QVERIFY(bytesPerLine < most);
#endif

    QVERIFY(m_session->click(QStringLiteral("pbGetStatus")));
    QVERIFY(m_session->waitFor([&] {
        return m_session->text(QStringLiteral("lVoiceLang")) == QLatin1String("Esperanto");
    }));
    QCOMPARE(m_session->text(QStringLiteral("lVoiceVersion")), QStringLiteral("7.6.5.4"));
    QVERIFY(m_session->takeDialogs().size() >= 3);
    const QByteArray held = flash().left(image.size());
    // Compared as a whole: the texts of a failure would be megabytes long.
    QVERIFY(held == binaryByObjcopy(file));
    QVERIFY(held == binaryBySrecCat(file));
    QVERIFY(held == image);
}

void TestUpload::cancelledAndRepeated()
{
    start();
    const QString file = write("library.mia", support::libraryText(small()));
    const support::SentLines sent(*m_session);
    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(sent.reach(100));
    QVERIFY(m_session->cancel());
    QVERIFY(m_session->waitForNoDialog());
    QVERIFY(m_session->waitFor([&] { return sent.lines().last() == QLatin1String("#ROOT"); }));
    QVERIFY(sent.count() < smallLines);
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);

    const support::SentLines again(*m_session);
    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(again.reach(smallLines));
    QVERIFY(m_session->waitForNoDialog());
    QCOMPARE(again.count(), smallLines);
    QCOMPARE(support::exchangeEverything(*m_session), QString());
    QVERIFY(flash().left(smallSize) == small());
}

void TestUpload::unpluggedAndRepeated()
{
    start();
    const QString file = write("library.mia", support::libraryText(small()));
    const support::SentLines sent(*m_session);
    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(sent.reach(100));
    QCOMPARE(support::unplug(*m_session), QString());
    QVERIFY(m_session->dialog().isEmpty());
    QVERIFY(sent.count() < smallLines);
    QCOMPARE(m_session->isEnabled(QStringLiteral("actionLibraryUpdate")),
             std::make_optional(false));
    QVERIFY(!m_session->trigger(QStringLiteral("actionLibraryUpdate")));
    QCOMPARE(m_session->statusMessage(),
             QStringLiteral("The connection to the Miolka was lost before the transfer was "
                            "complete."));

    QCOMPARE(support::plugInAndSettle(*m_session), QString());
    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(m_session->waitForNoDialog());
    QCOMPARE(support::exchangeEverything(*m_session), QString());
    QVERIFY(flash().left(smallSize) == small());
}

void TestUpload::twoOneAfterTheOther()
{
    start();
    // The user's messages lie behind the library, in the second half of another one.
    const QByteArray both =
        small() + support::libraryImage(smallSize, 3, "Suomi", QByteArray("\4\3\2\1", 4));
    const QByteArray text = support::libraryText(both);
    const auto half = text.indexOf(":020000040001");
    const QString library = write("library.mia", text.left(half) + ":00000001FF\n");
    const QString messages = write("messages.mic", text.mid(half));
    const support::SentLines sent(*m_session);
    QCOMPARE(support::beginUpload(*m_session, library), QString());
    QVERIFY(m_session->waitForNoDialog());
    QCOMPARE(support::beginUpload(*m_session, messages), QString());
    QVERIFY(m_session->waitForNoDialog());
    QVERIFY(sent.reach(2 * smallLines));
    QCOMPARE(sent.count(), 2 * smallLines);
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
    QVERIFY(flash().left(both.size()) == both);
}

void TestUpload::closedInTheMiddle()
{
    start();
    const QString file = write("library.mia", support::libraryText(small()));
    const support::SentLines sent(*m_session);
    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(sent.reach(100));
    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
    QVERIFY(sent.count() < smallLines);
    QCOMPARE(sent.lines().last(), QStringLiteral("#ROOT"));
}

void TestUpload::aDeviceThatAnswersWithNonsense()
{
    start();
    const QByteArray settings = support::saved(*m_session);
    const QString file = write("library.mia", support::libraryText(small()));
    QVERIFY(m_session->fault(QStringLiteral("split,notice=0.1,nul=0.1,bad-checksum=0.1")));
    QCOMPARE(support::beginUpload(*m_session, file), QString());
    QVERIFY(m_session->waitForNoDialog());
    QVERIFY(m_session->fault(QStringLiteral("none")));
    QCOMPARE(support::saved(*m_session), settings);
    QCOMPARE(support::exchangeEverything(*m_session), QString());
    QVERIFY(flash().left(smallSize) == small());
}

QTEST_GUILESS_MAIN(TestUpload)
#include "test_upload.moc"
