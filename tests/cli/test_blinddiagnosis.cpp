// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/diagnosis.h"
#include "device/protocol.h"

#include <QtTest>

using cli::ExitStatus;
using Access = cMyPortProbe::Access;

Q_DECLARE_METATYPE(Access)
Q_DECLARE_METATYPE(ExitStatus)

namespace {

const QString port = QStringLiteral("/dev/ttyACM0");

QStringList kindsOf(const QVector<cMyFinding>& findings)
{
    QStringList kinds;
    for (const cMyFinding& finding : findings) {
        kinds.append(QLatin1String(finding.kind));
    }
    return kinds;
}

cMyExamination examination(Access access, bool doesAnswer = true)
{
    cMyExamination made;
    made.ports = {{"ttyACM0", port, device::productId, {}, false}};
    made.probe = [access](const QString&) {
        return cMyPortProbe{access, "the reason"};
    };
    made.answers = [doesAnswer](const QString&) {
        return doesAnswer;
    };
    return made;
}

} // namespace

/// The look at a system that shows nothing but its serial ports.
class TestBlindDiagnosis : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsSeen();
    void whatCouldNotBeSeenIsTold_data();
    void whatCouldNotBeSeenIsTold();
    void noCommandOfAnotherSystemIsAdvised_data();
    void noCommandOfAnotherSystemIsAdvised();
    void aLinkStandsForItsPort();
};

void TestBlindDiagnosis::nothingIsSeen()
{
    const cMySystemLook look;
    QVERIFY(look.isBlind());
    QVERIFY(look.usbDevices().isEmpty());
    QVERIFY(look.holders(QStringLiteral("/dev/null")).isEmpty());
    QVERIFY(!look.node(QStringLiteral("/dev/null")));
}

void TestBlindDiagnosis::whatCouldNotBeSeenIsTold_data()
{
    QTest::addColumn<Access>("access");
    QTest::addColumn<bool>("doesAnswer");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<ExitStatus>("status");
    QTest::newRow("answers") << Access::Free << true << "well" << ExitStatus::Done;
    QTest::newRow("silent") << Access::Free << false << "silent" << ExitStatus::Protocol;
    QTest::newRow("busy") << Access::Busy << true << "busy" << ExitStatus::NotAllowed;
    QTest::newRow("forbidden") << Access::Forbidden << true << "forbidden"
                               << ExitStatus::NotAllowed;
}

void TestBlindDiagnosis::whatCouldNotBeSeenIsTold()
{
    QFETCH(Access, access);
    QFETCH(bool, doesAnswer);
    QFETCH(QString, kind);
    QFETCH(ExitStatus, status);
    const QVector<cMyFinding> findings = cli::diagnose(examination(access, doesAnswer));
    QCOMPARE(kindsOf(findings), QStringList({kind, QStringLiteral("unseen")}));
    QCOMPARE(cli::statusOf(findings), status);
}

void TestBlindDiagnosis::noCommandOfAnotherSystemIsAdvised_data()
{
    QTest::addColumn<bool>("hasPort");
    QTest::addColumn<Access>("access");
    QTest::newRow("no device") << false << Access::Free;
    QTest::newRow("silent") << true << Access::Free;
    QTest::newRow("busy") << true << Access::Busy;
    QTest::newRow("forbidden") << true << Access::Forbidden;
    QTest::newRow("faulty") << true << Access::Faulty;
}

void TestBlindDiagnosis::noCommandOfAnotherSystemIsAdvised()
{
    QFETCH(bool, hasPort);
    QFETCH(Access, access);
    cMyExamination made = examination(access, false);
    if (!hasPort) {
        made.ports.clear();
    }
    const QVector<cMyFinding> findings = cli::diagnose(made);
    for (const cMyFinding& finding : findings) {
        QVERIFY2(!finding.text.contains(QLatin1String("on USB")) ||
                     qstrcmp(finding.kind, "unseen") == 0,
                 qPrintable(finding.text));
        for (const cMyRemedy& remedy : finding.remedies) {
            for (const QString& command : remedy.commands) {
                QVERIFY2(command.startsWith(QLatin1String("miolkactl ")), qPrintable(command));
            }
        }
    }
}

void TestBlindDiagnosis::aLinkStandsForItsPort()
{
    QTemporaryDir directory;
    const QString link = directory.filePath(QStringLiteral("device"));
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), link));
    const cMySystemLook look;
    QCOMPARE(look.target(link), QStringLiteral("/dev/null"));
    QVERIFY(look.isSamePort(link, QStringLiteral("/dev/null")));
    QVERIFY(!look.isSamePort(link, QStringLiteral("/dev/zero")));
}

QTEST_GUILESS_MAIN(TestBlindDiagnosis)
#include "test_blinddiagnosis.moc"
