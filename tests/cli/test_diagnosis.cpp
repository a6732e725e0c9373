// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/bootloader.h"
#include "cli/diagnosis.h"
#include "device/protocol.h"
#include "tests/cli/systemtree.h"
#include "tests/support/contents.h"

#include <QtTest>

using cli::ExitStatus;
using Access = cMyPortProbe::Access;

namespace {

const QString port = QStringLiteral("/dev/ttyACM0");

QStringList commandsOf(const cMyFinding& finding)
{
    QStringList commands;
    for (const cMyRemedy& remedy : finding.remedies) {
        commands += remedy.commands;
    }
    return commands;
}

} // namespace

class TestDiagnosis : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void noDevice();
    void aDeviceWithoutAPort_data();
    void aDeviceWithoutAPort();
    void aBootLoader();
    void aNamedBootLoaderIsLeftAlone_data();
    void aNamedBootLoaderIsLeftAlone();
    void aDeviceThatAnswers();
    void aDeviceThatIsSilent();
    void aSharedPortIsBusy();
    void aProgramThatCameMeanwhileIsTold();
    void aBusyPortNamesTheProgram();
    void eachProgramIsEnded_data();
    void eachProgramIsEnded();
    void aLeftLockFileIsNamed();
    void aBusyPortOfAnUnknownProgram();
    void aForbiddenPort_data();
    void aForbiddenPort();
    void theRuleGivesRightsInTime();
    void theRulesAreThoseOfThePackage();
    void theModemService_data();
    void theModemService();
    void severalDevices();
    void onlyTheChosenPortMatters();
    void aLinkStandsForItsPort_data();
    void aLinkStandsForItsPort();
    void noRemedyNeedsASwitch();
    void aChosenPortThatIsNotThere();
    void theStatus_data();
    void theStatus();

private:
    /// With one device at the port, which can be opened as the probe says.
    [[nodiscard]] cMyExamination examination(Access access, bool doesAnswer = true) const
    {
        cMyExamination made;
        made.system = cMySystemLook(m_tree->root());
        made.ports = {{"ttyACM0", port, device::productId, {}, false}};
        made.user = {"jan", {"jan"}, {"jan"}};
        made.probe = [access](const QString&) {
            return cMyPortProbe{access, "the reason"};
        };
        made.answers = [doesAnswer](const QString&) {
            return doesAnswer;
        };
        return made;
    }

    std::unique_ptr<support::SystemTree> m_tree;
};

void TestDiagnosis::init()
{
    m_tree = std::make_unique<support::SystemTree>();
}

void TestDiagnosis::noDevice()
{
    cMyExamination made = examination(Access::Free);
    made.ports.clear();
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "none");
    QCOMPARE(commandsOf(findings.first()), QStringList{"lsusb -d 03eb:"});
    QCOMPARE(cli::statusOf(findings), ExitStatus::NoDevice);
}

void TestDiagnosis::aDeviceWithoutAPort_data()
{
    QTest::addColumn<bool>("hasDriver");
    QTest::addColumn<QString>("command");
    QTest::newRow("driver missing") << false << "sudo modprobe cdc_acm";
    QTest::newRow("still coming") << true << "miolkactl doctor";
}

void TestDiagnosis::aDeviceWithoutAPort()
{
    QFETCH(bool, hasDriver);
    QFETCH(QString, command);
    m_tree->putUsbDevice("1-4", "03eb", "2018");
    if (hasDriver) {
        m_tree->put("/sys/bus/usb/drivers/cdc_acm/uevent", {});
    }
    cMyExamination made = examination(Access::Free);
    made.ports.clear();
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "noPort");
    QCOMPARE(findings.first().port, QStringLiteral("1-4"));
    QCOMPARE(commandsOf(findings.first()).first(), command);
    QCOMPARE(cli::statusOf(findings), ExitStatus::NoDevice);
}

void TestDiagnosis::aBootLoader()
{
    cMyExamination made = examination(Access::Free);
    made.ports = {{"1-4", {}, device::bootLoaderProductId, {}, true}};
    made.probe = [](const QString&) {
        return cMyPortProbe{Access::Faulty, "must not be opened"};
    };
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "bootLoader");
    QVERIFY(findings.first().remedies.first().text.contains(cli::bootLoaderWayOut()));
    QCOMPARE(cli::statusOf(findings), ExitStatus::NoDevice);
}

void TestDiagnosis::aNamedBootLoaderIsLeftAlone_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::newRow("name") << "ttyACM0";
    QTest::newRow("path") << port;
    QTest::newRow("link") << "/dev/miolka";
}

void TestDiagnosis::aNamedBootLoaderIsLeftAlone()
{
    QFETCH(QString, chosen);
    m_tree->put(port, {});
    m_tree->link("/dev/miolka", m_tree->path(port));
    cMyExamination made = examination(Access::Free);
    made.ports = {{"ttyACM0", port, device::bootLoaderProductId, {}, true},
                  {"ttyACM1", "/dev/ttyACM1", device::productId, {}, false},
                  {"1-4", {}, device::bootLoaderProductId, {}, true}};
    made.chosenPort = chosen;
    bool wasTouched = false;
    made.probe = [&](const QString&) {
        wasTouched = true;
        return cMyPortProbe();
    };
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QVERIFY(!wasTouched);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "bootLoader");
    QCOMPARE(findings.first().port, port);
    QCOMPARE(cli::statusOf(findings), ExitStatus::NoDevice);
}

void TestDiagnosis::aDeviceThatAnswers()
{
    m_tree->putUsbDevice("1-4", "03eb", "2018", "ttyACM0");
    const QVector<cMyFinding> findings = cli::diagnose(examination(Access::Free));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "well");
    QCOMPARE(cli::statusOf(findings), ExitStatus::Done);
}

void TestDiagnosis::aDeviceThatIsSilent()
{
    const QVector<cMyFinding> findings = cli::diagnose(examination(Access::Free, false));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "silent");
    QVERIFY(!findings.first().remedies.isEmpty());
    QCOMPARE(cli::statusOf(findings), ExitStatus::Protocol);
}

void TestDiagnosis::aSharedPortIsBusy()
{
    m_tree->put(port, {});
    m_tree->put("/proc/42/comm", "cat\n");
    m_tree->link("/proc/42/fd/3", m_tree->path(port));
    cMyExamination made = examination(Access::Free);
    bool wasAsked = false;
    made.answers = [&](const QString&) {
        wasAsked = true;
        return true;
    };
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "busy");
    QVERIFY(findings.first().text.contains("cat (process 42)"));
    QCOMPARE(cli::statusOf(findings), ExitStatus::NotAllowed);
    QVERIFY(!wasAsked);
}

void TestDiagnosis::aProgramThatCameMeanwhileIsTold()
{
    cMyExamination made = examination(Access::Free);
    made.answers = [&](const QString&) {
        m_tree->put(port, {});
        m_tree->put("/proc/42/comm", "cat\n");
        m_tree->link("/proc/42/fd/3", m_tree->path(port));
        return false;
    };
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "busy");
    QCOMPARE(cli::statusOf(findings), ExitStatus::NotAllowed);
}

void TestDiagnosis::aBusyPortNamesTheProgram()
{
    m_tree->put("/proc/42/comm", "gps daemon\n");
    m_tree->put("/run/lock/LCK..ttyACM0", "42\n");
    const QVector<cMyFinding> findings = cli::diagnose(examination(Access::Busy));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "busy");
    QVERIFY(findings.first().text.contains("gps daemon (process 42)"));
    QCOMPARE(cli::statusOf(findings), ExitStatus::NotAllowed);
}

void TestDiagnosis::eachProgramIsEnded_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("of this user") << cli::currentUser().name << QStringList{"kill 42", "kill 43"};
    QTest::newRow("of another user") << "jan" << QStringList{"sudo kill 42", "sudo kill 43"};
    QTest::newRow("for root") << "root" << QStringList{"kill 42", "kill 43"};
}

void TestDiagnosis::eachProgramIsEnded()
{
    QFETCH(QString, user);
    m_tree->put(port, {});
    for (const char* process : {"42", "43"}) {
        const QString directory = QStringLiteral("/proc/") + process;
        m_tree->put(directory + "/comm", "gps\n");
        m_tree->link(directory + "/fd/3", m_tree->path(port));
    }
    cMyExamination made = examination(Access::Busy);
    made.user.name = user;
    QStringList commands = commandsOf(cli::diagnose(made).first());
    commands.sort();
    QTEST(commands, "commands");
}

void TestDiagnosis::aLeftLockFileIsNamed()
{
    // A number above the greatest that the system gives to processes.
    m_tree->put("/run/lock/LCK..ttyACM0", "4194305\n");
    const QVector<cMyFinding> findings = cli::diagnose(examination(Access::Busy));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "staleLock");
    QVERIFY(findings.first().text.contains("/run/lock/LCK..ttyACM0"));
    QCOMPARE(commandsOf(findings.first()), QStringList{"sudo rm /run/lock/LCK..ttyACM0"});
    QCOMPARE(cli::statusOf(findings), ExitStatus::NotAllowed);
}

void TestDiagnosis::aBusyPortOfAnUnknownProgram()
{
    const QVector<cMyFinding> findings = cli::diagnose(examination(Access::Busy));
    QVERIFY(findings.first().text.contains("the reason"));
    QCOMPARE(commandsOf(findings.first()), QStringList{"sudo fuser -v /dev/ttyACM0"});
}

void TestDiagnosis::aForbiddenPort_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isInGroup");
    QTest::addColumn<bool>("willBeInGroup");
    QTest::addColumn<QString>("word");
    QTest::addColumn<bool>("isGroupAdvised");
    QTest::addColumn<bool>("isRuleAdvised");
    QTest::newRow("not in the group")
        << 0660 << false << false << "not in that group" << true << true;
    QTest::newRow("in the group at the next login")
        << 0660 << false << true << "will be in the next" << false << false;
    QTest::newRow("group may not either")
        << 0600 << true << true << "is in that group" << false << true;
}

void TestDiagnosis::aForbiddenPort()
{
    QFETCH(int, mode);
    QFETCH(bool, isInGroup);
    QFETCH(bool, willBeInGroup);
    QFETCH(QString, word);
    m_tree->put(port, {});
    const QString file = m_tree->path(port);
    QCOMPARE(chmod(QFile::encodeName(file).constData(), static_cast<mode_t>(mode)), 0);
    if (geteuid() == 0) {
        constexpr gid_t dialout = 20;
        QCOMPARE(chown(QFile::encodeName(file).constData(), 0, dialout), 0);
    }
    const QString group = QFileInfo(file).group();
    cMyExamination made = examination(Access::Forbidden);
    made.user.groups += isInGroup ? QStringList{group} : QStringList();
    made.user.futureGroups += willBeInGroup ? QStringList{group} : QStringList();
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "forbidden");
    QVERIFY2(findings.first().text.contains(word), qPrintable(findings.first().text));
    QVERIFY(findings.first().text.contains(group));
    const QString commands = commandsOf(findings.first()).join('\n');
    QTEST(commands.contains(QStringLiteral("sudo usermod -aG %1 \"$USER\"").arg(group)),
          "isGroupAdvised");
    QTEST(commands.contains("TAG+=\"uaccess\""), "isRuleAdvised");
    QCOMPARE(cli::statusOf(findings), ExitStatus::NotAllowed);
}

void TestDiagnosis::theRuleGivesRightsInTime()
{
    m_tree->put(port, {});
    const QStringList commands = commandsOf(cli::diagnose(examination(Access::Forbidden)).first());
    const QRegularExpression file("/etc/udev/rules.d/(\\d\\d)-");
    const auto match = file.match(commands.first());
    QVERIFY(match.hasMatch());
    constexpr int numberOfRights = 73;
    QVERIFY(match.captured(1).toInt() < numberOfRights);
}

void TestDiagnosis::theRulesAreThoseOfThePackage()
{
    m_tree->put(port, {});
    const QStringList commands = commandsOf(cli::diagnose(examination(Access::Forbidden)).first());
    const int first = 1 + static_cast<int>(commands.indexOf(
                              "sudo tee /etc/udev/rules.d/70-miolkasoft.rules <<'END'"));
    const int end = static_cast<int>(commands.indexOf("END"));
    QVERIFY(first > 0 && end > first);
    const QString packaged = QString::fromUtf8(support::contentsOf(
        QStringLiteral(MIOLKA_SOURCE_DIR "/packaging/desktop/70-miolkasoft.rules")));
    const QStringList expected = packaged.split('\n').filter(QRegularExpression("^[^#]"));
    QCOMPARE(commands.mid(first, end - first), expected);
    QVERIFY(expected.size() > 2);
}

void TestDiagnosis::theModemService_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<QByteArray>("properties");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("runs") << QByteArray("ModemManager") << QByteArray() << true;
    QTest::newRow("runs and ignores")
        << QByteArray("ModemManager") << QByteArray("E:ID_MM_DEVICE_IGNORE=1\n") << false;
    QTest::newRow("does not run") << QByteArray("other") << QByteArray() << false;
}

void TestDiagnosis::theModemService()
{
    QFETCH(QByteArray, process);
    QFETCH(QByteArray, properties);
    m_tree->put("/proc/5/comm", process + '\n');
    m_tree->put("/sys/class/tty/ttyACM0/dev", "166:0\n");
    m_tree->put("/run/udev/data/c166:0", properties);
    const QVector<cMyFinding> findings = cli::diagnose(examination(Access::Free));
    const bool isTold = findings.size() == 2 && qstrcmp(findings.last().kind, "modemService") == 0;
    QTEST(isTold, "isTold");
    if (isTold) {
        QVERIFY(commandsOf(findings.last()).join('\n').contains("ID_MM_DEVICE_IGNORE"));
    }
    // The device can be worked with all the same.
    QCOMPARE(cli::statusOf(findings), ExitStatus::Done);
}

void TestDiagnosis::severalDevices()
{
    cMyExamination made = examination(Access::Free);
    made.ports.append({"ttyACM1", "/dev/ttyACM1", device::productId, {}, false});
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 3);
    QCOMPARE(findings.last().kind, "several");
    QCOMPARE(commandsOf(findings.last()), QStringList{"miolkactl --port /dev/ttyACM0 status"});
    QCOMPARE(cli::statusOf(findings), ExitStatus::Done);
}

void TestDiagnosis::onlyTheChosenPortMatters()
{
    cMyExamination made = examination(Access::Free);
    made.ports.append({"ttyACM1", "/dev/ttyACM1", device::productId, {}, false});
    made.chosenPort = "ttyACM1";
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().port, QStringLiteral("/dev/ttyACM1"));
}

void TestDiagnosis::aLinkStandsForItsPort_data()
{
    QTest::addColumn<bool>("isKnown");
    QTest::newRow("of a device") << true;
    QTest::newRow("of something else") << false;
}

void TestDiagnosis::aLinkStandsForItsPort()
{
    QFETCH(bool, isKnown);
    m_tree->put(port, {});
    m_tree->link("/dev/miolka", m_tree->path(port));
    cMyExamination made = examination(Access::Free);
    if (!isKnown) {
        made.ports.clear();
    }
    made.chosenPort = "/dev/miolka";
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().port, port);
}

void TestDiagnosis::noRemedyNeedsASwitch()
{
    cMyExamination none = examination(Access::Free);
    none.ports.clear();
    cMyExamination waiting = examination(Access::Free);
    waiting.ports = {{"1-4", {}, device::bootLoaderProductId, {}, true}};
    const QVector<cMyFinding> findings = cli::diagnose(none) + cli::diagnose(waiting) +
                                         cli::diagnose(examination(Access::Free, false));
    QCOMPARE(findings.size(), 3);
    for (const cMyFinding& finding : findings) {
        for (const cMyRemedy& remedy : finding.remedies) {
            QVERIFY2(!remedy.text.contains("switch"), qPrintable(remedy.text));
        }
    }
}

void TestDiagnosis::aChosenPortThatIsNotThere()
{
    cMyExamination made = examination(Access::Faulty);
    made.chosenPort = "ttyACM9";
    const QVector<cMyFinding> findings = cli::diagnose(made);
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().kind, "faulty");
    QCOMPARE(findings.first().port, QStringLiteral("/dev/ttyACM9"));
    QCOMPARE(cli::statusOf(findings), ExitStatus::NoDevice);
}

void TestDiagnosis::theStatus_data()
{
    QTest::addColumn<QVector<int>>("statuses");
    QTest::addColumn<bool>("isAnyWell");
    QTest::addColumn<int>("status");
    QTest::newRow("a boot loader beside a device") << QVector<int>{3} << true << 0;
    QTest::newRow("a busy port beside a device") << QVector<int>{4} << true << 4;
    QTest::newRow("the first counts") << QVector<int>{6, 4} << false << 6;
    QTest::newRow("nothing at all") << QVector<int>{} << false << 0;
}

void TestDiagnosis::theStatus()
{
    QFETCH(QVector<int>, statuses);
    QFETCH(bool, isAnyWell);
    QVector<cMyFinding> findings;
    for (const int status : statuses) {
        findings.append({"other", {}, {}, {}, static_cast<ExitStatus>(status)});
    }
    if (isAnyWell) {
        findings.append({"well", {}, {}, {}});
    }
    QTEST(static_cast<int>(cli::statusOf(findings)), "status");
}

QTEST_GUILESS_MAIN(TestDiagnosis)
#include "test_diagnosis.moc"
