// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/divework.h"
#include "tests/endtoend/exchanges.h"
#include "tests/support/posix.h"
#include "tests/support/skipped.h"

#include <QRegularExpression>
#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

using support::Operation;
using support::SentLines;
using support::Session;

namespace {

/// What keeps the program from a port that is there.
class Obstacle
{
public:
    Obstacle() = default;
    virtual ~Obstacle() = default;
    Q_DISABLE_COPY_MOVE(Obstacle)

    /// Whether it is there now; gone with this object.
    [[nodiscard]] virtual bool isThere() = 0;
};

/// Another program that respects the lock files that serial programs tell each other by.
class OtherProgram : public Obstacle
{
public:
    explicit OtherProgram(const Session& session)
    {
        m_process.setProcessEnvironment(session.programEnvironment());
        m_process.start(QStringLiteral(MIOLKA_PORTHOLDER), {QStringLiteral("ttyACM0")});
    }
    ~OtherProgram() override
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    [[nodiscard]] bool isThere() override
    {
        return m_process.waitForReadyRead() && m_process.readAll() == "open\n";
    }

private:
    QProcess m_process;
};

/// Another program that has the kernel keep everybody else from the terminal.
class ExclusiveTerminal : public Obstacle
{
public:
    explicit ExclusiveTerminal(const Session& session)
        : m_terminal(::open(QFile::encodeName(session.terminal()).constData(),
                            O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
    }
    ~ExclusiveTerminal() override
    {
        ioctl(m_terminal, TIOCNXCL);
        ::close(m_terminal);
    }

    [[nodiscard]] bool isThere() override { return ioctl(m_terminal, TIOCEXCL) == 0; }

private:
    int m_terminal;
};

/// A port that its user was given no rights to.
class Forbidden : public Obstacle
{
public:
    explicit Forbidden(const Session& session) : m_path(QFile::encodeName(session.terminal())) {}
    ~Forbidden() override { ::chmod(m_path.constData(), S_IRUSR | S_IWUSR); }

    [[nodiscard]] bool isThere() override { return ::chmod(m_path.constData(), 0) == 0; }

private:
    QByteArray m_path;
};

struct Case
{
    const char* name;
    std::unique_ptr<Obstacle> (*make)(const Session&);
    QString text; ///< of the box
};

template <typename Kind>
std::unique_ptr<Obstacle> make(const Session& session)
{
    return std::make_unique<Kind>(session);
}

QVector<Case> cases()
{
    return {{"in use by lock file", make<OtherProgram>,
             QStringLiteral("Permission error while locking the device")},
            {"in exclusive use", make<ExclusiveTerminal>, qt_error_string(EBUSY)},
            {"forbidden", make<Forbidden>, qt_error_string(EACCES)}};
}

} // namespace

Q_DECLARE_METATYPE(Case)

/// A port that is there and cannot be opened: the user is told why, once for each attempt, and with
/// the obstacle gone the next attempt succeeds.
class TestPortsInUse : public QObject
{
    Q_OBJECT

public:
    /// Whether the program kept its privileges, so that nothing was tested.
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void anExchangeTellsWhyAndTheNextSucceeds_data();
    void anExchangeTellsWhyAndTheNextSucceeds();
    void aSimulationEndsAtOnceAndTheStatusTellsWhy_data();
    void aSimulationEndsAtOnceAndTheStatusTellsWhy();

private:
    /// Nothing if one box came up and said that, and the program goes on. Behind the box a transfer
    /// leaves its progress, which is cancelled.
    QString closeOnlyBox(const QString& text, bool isTransfer);
    QString closeBoxAndProgress();

    std::unique_ptr<Session> m_session;
    bool m_wasSkipped = false;
};

void TestPortsInUse::initTestCase()
{
    support::SessionOptions options;
    options.withPrivileges = false;
    options.emulatorOptions = QStringList{QStringLiteral("--unplugged")};
    m_session = std::make_unique<Session>(options);
    QVERIFY2(m_session->isRunning(), qPrintable(m_session->error()));
    static const QRegularExpression noPrivileges(QStringLiteral("\nCapEff:\\s+0+\n"));
    const QString status = QStringLiteral("/proc/%1/status").arg(m_session->programId());
    if (!QString::fromLatin1(support::readFile(status)).contains(noPrivileges)) {
        m_wasSkipped = true;
        QSKIP("the program has privileges that this system does not let it give up, and opens all");
    }
    QCOMPARE(support::plugInAndSettle(*m_session), QString());
}

void TestPortsInUse::cleanupTestCase()
{
    m_session.reset();
}

QString TestPortsInUse::closeBoxAndProgress()
{
    const bool isClosed = m_session->waitForDialog(QStringLiteral("Error")) &&
                          m_session->answer(QStringLiteral("Ok")) &&
                          m_session->waitForDialog(QStringLiteral("Miolka")) &&
                          m_session->cancel() && m_session->waitForNoDialog();
    return isClosed ? QString() : QStringLiteral("box and progress do not come and go");
}

QString TestPortsInUse::closeOnlyBox(const QString& text, bool isTransfer)
{
    QString error = isTransfer ? closeBoxAndProgress() : support::closeErrorBox(*m_session);
    if (!error.isEmpty()) {
        return error;
    }
    QStringList texts;
    const QJsonArray dialogs = m_session->takeDialogs();
    for (const QJsonValue& dialog : dialogs) {
        if (dialog.toObject().value(QLatin1String("title")).toString() == QLatin1String("Error")) {
            texts += dialog.toObject().value(QLatin1String("text")).toString();
        }
    }
    return texts == QStringList(text)
               ? support::checkDeviceActions(*m_session, true)
               : QStringLiteral("the boxes say: ") + texts.join(QStringLiteral(" / "));
}

void TestPortsInUse::anExchangeTellsWhyAndTheNextSucceeds_data()
{
    QTest::addColumn<Case>("obstacle");
    QTest::addColumn<Operation>("operation");
    for (const Case& each : cases()) {
        for (const Operation operation : support::everyOperation) {
            QTest::addRow("%s, %s", each.name, support::nameOf(operation)) << each << operation;
        }
    }
}

void TestPortsInUse::anExchangeTellsWhyAndTheNextSucceeds()
{
    QFETCH(Case, obstacle);
    QFETCH(Operation, operation);
    m_session->takeDialogs();
    const SentLines sent(*m_session);
    {
        const auto inTheWay = obstacle.make(*m_session);
        QVERIFY(inTheWay->isThere());
        QCOMPARE(support::begin(*m_session, operation), QString());
        QCOMPARE(closeOnlyBox(obstacle.text, support::isTransfer(operation)), QString());
    }
    QCOMPARE(support::exchangeOnce(*m_session, operation), QString());
    // Nothing before it, and nothing on its own account.
    QCOMPARE(sent.count(), support::linesOf(operation));
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

void TestPortsInUse::aSimulationEndsAtOnceAndTheStatusTellsWhy_data()
{
    QTest::addColumn<Case>("obstacle");
    for (const Case& each : cases()) {
        QTest::newRow(each.name) << each;
    }
}

void TestPortsInUse::aSimulationEndsAtOnceAndTheStatusTellsWhy()
{
    constexpr int startPage = 0;
    constexpr int simulationPage = 3;
    QFETCH(Case, obstacle);
    QVERIFY(m_session->page(simulationPage));
    m_session->takeDialogs();
    const SentLines sent(*m_session);
    {
        const auto inTheWay = obstacle.make(*m_session);
        QVERIFY(inTheWay->isThere());
        QVERIFY(m_session->click(QStringLiteral("pbStartSim")));
        QVERIFY(m_session->waitFor([this] { return support::isIdle(*m_session); }));
        QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
        QVERIFY(m_session->page(startPage));
        QCOMPARE(closeOnlyBox(obstacle.text, false), QString());
        QCOMPARE(sent.count(), 0);
    }
    QCOMPARE(support::diveShortly(*m_session), QString());
    QCOMPARE(support::returnToStartPage(*m_session), QString());
    QCOMPARE(support::waitForStatus(*m_session), QString());
    QCOMPARE(support::errorBoxes(m_session->takeDialogs()), 0);
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    TestPortsInUse test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_portsinuse.moc"
