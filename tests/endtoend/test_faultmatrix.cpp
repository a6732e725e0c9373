// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/exchanges.h"

#include <QElapsedTimer>
#include <QtTest>

using support::Operation;
using support::SentLines;

namespace {

/// How an exchange has to end.
enum class End {
    Completed, ///< every line is answered by something
    Silence,   ///< given up: by itself, a transfer by whoever waits for it
    Loss,      ///< told by one error box
};

struct Fault
{
    const char* name;
    const char* spec; ///< "%1" is the line in question, counted from the device's plugging
    End end;
};

constexpr Fault faults[] = {
    {"split", "split", End::Completed},
    {"join", "join", End::Completed},
    {"nul", "nul", End::Completed},
    {"notice", "notice=1", End::Completed},
    {"garbage", "garbage=0.5", End::Completed},
    {"bad-checksum", "bad-checksum=1", End::Completed},
    {"long", "long=1", End::Completed},
    {"silent-after", "silent-after=%1", End::Silence},
    {"vanish-at", "vanish-at=%1", End::Loss},
};

} // namespace

Q_DECLARE_METATYPE(End)

/// Every fault of the wire in every kind of exchange: it ends as it has to, the window answers all
/// the time, and with the fault gone everything works again. Prints a table.
class TestFaultMatrix : public QObject
{
    Q_OBJECT

private slots:
    void endsAndRecovers_data();
    void endsAndRecovers();
    void cleanupTestCase();

private:
    /// A program of its own for each fault, so that traces stay short; one for all operations.
    void useSessionFor(const QString& fault);
    /// Waits for the end that is due. Nothing if it came, else what is wrong.
    QString waitForEnd(End end, Operation operation, const SentLines& sent, int answered);
    QString waitForCompletion(Operation operation, const SentLines& sent);
    QString waitForSurrender(Operation operation, const SentLines& sent, int answered);
    QString waitForLoss();
    void checkGap();

    std::unique_ptr<support::Session> m_session;
    std::unique_ptr<SentLines> m_sentSincePlugged;
    QString m_fault;
    QString m_outcome;
    int m_gap = 0;
};

void TestFaultMatrix::endsAndRecovers_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("spec");
    QTest::addColumn<End>("end");
    QTest::addColumn<Operation>("operation");
    for (const Fault& fault : faults) {
        for (const Operation operation : support::everyOperation) {
            QTest::addRow("%s, %s", fault.name, support::nameOf(operation))
                << QString::fromLatin1(fault.name) << QString::fromLatin1(fault.spec) << fault.end
                << operation;
        }
    }
}

void TestFaultMatrix::useSessionFor(const QString& fault)
{
    if (m_fault == fault && m_session != nullptr) {
        return;
    }
    m_fault = fault;
    m_session.reset();
    m_session = support::startSession();
    QVERIFY(m_session != nullptr);
    m_sentSincePlugged = std::make_unique<SentLines>(*m_session);
    const QString error = support::plugInAndSettle(*m_session);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestFaultMatrix::cleanupTestCase()
{
    m_session.reset();
}

QString TestFaultMatrix::waitForEnd(End end, Operation operation, const SentLines& sent,
                                    int answered)
{
    switch (end) {
    case End::Completed:
        return waitForCompletion(operation, sent);
    case End::Silence:
        return waitForSurrender(operation, sent, answered);
    case End::Loss:
        return waitForLoss();
    }
    return {};
}

QString TestFaultMatrix::waitForCompletion(Operation operation, const SentLines& sent)
{
    m_outcome = QStringLiteral("completed");
    if (!m_session->waitForNoDialog()) {
        return QStringLiteral("the progress does not go");
    }
    return sent.complete(support::linesOf(operation));
}

QString TestFaultMatrix::waitForSurrender(Operation operation, const SentLines& sent, int answered)
{
    constexpr int answerPatience = 10000;
    constexpr int cancelPatience = 3000;
    constexpr int margin = 1000;
    const bool byHand = support::isTransfer(operation);
    if (!sent.reach(answered + 1)) {
        return QStringLiteral("the line that stays unanswered was not sent");
    }
    if (byHand && (!m_session->cancel() || !m_session->waitForNoDialog())) {
        return QStringLiteral("it cannot be cancelled: ") + m_session->error();
    }
    QElapsedTimer clock;
    clock.start();
    const int patience = byHand ? cancelPatience : answerPatience;
    m_session->waitFor([&] { return sent.count() > answered + 1; }, 2 * patience);
    const qint64 waited = clock.elapsed();
    if (sent.count() != answered + 2 || sent.lines().last() != QLatin1String("#ROOT")) {
        return QStringLiteral("it does not leave the device in its root mode");
    }
    if (waited < patience - margin) {
        return QStringLiteral("it was given up after %1 ms").arg(waited);
    }
    m_outcome = QStringLiteral("%1, #ROOT after %2 s")
                    .arg(byHand ? QStringLiteral("cancelled") : QStringLiteral("given up"))
                    .arg(static_cast<double>(waited) / 1000, 0, 'f', 1);
    return {};
}

QString TestFaultMatrix::waitForLoss()
{
    m_outcome = QStringLiteral("one error box");
    QString error = support::closeErrorBox(*m_session);
    return error.isEmpty() ? support::waitForNoDevice(*m_session) : error;
}

void TestFaultMatrix::checkGap()
{
    // What kept the window until now shows only when it has looked at its events once more.
    m_gap = std::max(m_gap, m_session->takeLongestGap());
    int last = 0;
    QVERIFY(m_session->waitFor([&] {
        last = m_session->takeLongestGap();
        return last > 0;
    }));
    m_gap = std::max(m_gap, last);
#ifdef NDEBUG
    constexpr int longest = 200;
    QVERIFY2(m_gap < longest, qPrintable(QStringLiteral("%1 ms").arg(m_gap)));
#endif
}

void TestFaultMatrix::endsAndRecovers()
{
    QFETCH(QString, fault);
    QFETCH(QString, spec);
    QFETCH(End, end);
    QFETCH(Operation, operation);
    useSessionFor(fault);
    if (QTest::currentTestFailed()) {
        return;
    }
    const int answered = support::linesOf(operation) / 2;
    if (spec.contains(QStringLiteral("%1"))) {
        const int first = end == End::Loss ? 1 : 0;
        spec = spec.arg(m_sentSincePlugged->count() + answered + first);
    }
    const SentLines sent(*m_session);
    m_session->takeDialogs();
    m_gap = 0;
    static_cast<void>(m_session->takeLongestGap()); // begins anew
    QVERIFY(m_session->fault(spec));
    QString error = support::begin(*m_session, operation);
    if (error.isEmpty()) {
        error = waitForEnd(end, operation, sent, answered);
    }
    QVERIFY2(error.isEmpty(), qPrintable(error));
    checkGap();
    QVERIFY(m_session->fault(QStringLiteral("none")));
    QJsonArray dialogs = m_session->takeDialogs();
    if (end == End::Loss) {
        m_sentSincePlugged = std::make_unique<SentLines>(*m_session);
        error = support::plugInAndSettle(*m_session);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        checkGap();
        const QJsonArray later = m_session->takeDialogs();
        std::copy(later.begin(), later.end(), std::back_inserter(dialogs));
    }
    qInfo("%-12s | %-7s | %-31s | %d ms", qPrintable(fault), support::nameOf(operation),
          qPrintable(m_outcome), m_gap);
    QCOMPARE(support::errorBoxes(dialogs), end == End::Loss ? 1 : 0);
    error = support::exchangeEverything(*m_session);
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

QTEST_GUILESS_MAIN(TestFaultMatrix)
#include "test_faultmatrix.moc"
