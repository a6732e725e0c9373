// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/nextlogin.h"

#include <algorithm>

#include <QtTest>

#include "cli/system/currentuser.h"
#include "tests/support/skipped.h"
#include "tests/support/smalldisk.h"

#include <pwd.h>

namespace {

const quint32 joinedGroup = 47110;
const QString joinedName = QStringLiteral("miolka-joined");

/// What id says of a user, in order; empty if it fails.
QStringList answerOf(const QString& option, const QString& user)
{
    QProcess process;
    process.start(QStringLiteral("id"), {option, user});
    if (!process.waitForFinished() || process.exitCode() != 0) {
        return {};
    }
    QStringList words = QString::fromLocal8Bit(process.readAll()).simplified().split(' ');
    words.sort();
    return words;
}

QStringList textsOf(const std::vector<quint32>& numbers)
{
    QStringList texts;
    for (const quint32 number : numbers) {
        texts.append(QString::number(number));
    }
    texts.sort();
    return texts;
}

/// Puts a list of groups in place of the system's, for this thread and the programs that it starts.
bool replaceGroups(const QString& file)
{
    return unshare(CLONE_NEWNS) == 0 &&
           mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount(qPrintable(file), "/etc/group", nullptr, MS_BIND, nullptr) == 0;
}

} // namespace

/// The groups as the system's own list has them, whatever the login at hand was given.
class TestNextLogin : public QObject
{
    Q_OBJECT

public:
    /// Whether the list could not be changed, so that nobody joined a group.
    [[nodiscard]] bool wasSkipped() const { return !m_hasJoined; }

private slots:
    void initTestCase();
    void groupsAreThoseOfTheList_data();
    void groupsAreThoseOfTheList();
    void aUserWhomNobodyKnowsHasTheOwnGroupOnly();
    void aGroupJoinedSinceTheLoginIsThere();
    void theUserAtHandIsToldOfThem();

private:
    QTemporaryDir m_folder;
    bool m_hasJoined = false;
};

/// games and who runs this join a group that this login was not given.
void TestNextLogin::initTestCase()
{
    QVERIFY(m_folder.isValid());
    const QString list = m_folder.filePath(QStringLiteral("group"));
    QVERIFY(QFile::copy(QStringLiteral("/etc/group"), list));
    QFile file(list);
    QVERIFY(file.open(QIODevice::Append));
    file.write(QStringLiteral("%1:x:%2:games,%3\n")
                   .arg(joinedName, QString::number(joinedGroup), cli::currentUser().name)
                   .toLocal8Bit());
    QVERIFY(file.flush());
    m_hasJoined = replaceGroups(list);
}

void TestNextLogin::groupsAreThoseOfTheList_data()
{
    QTest::addColumn<QString>("user");
    for (const char* const user : {"root", "daemon", "games"}) {
        QTest::newRow(user) << QString::fromLatin1(user);
    }
}

void TestNextLogin::groupsAreThoseOfTheList()
{
    QFETCH(QString, user);
    const passwd* const entry = getpwnam(qPrintable(user));
    QVERIFY(entry != nullptr);
    QCOMPARE(textsOf(cli::groupsOfNextLogin(qPrintable(user), entry->pw_gid)),
             answerOf(QStringLiteral("-G"), user));
}

void TestNextLogin::aUserWhomNobodyKnowsHasTheOwnGroupOnly()
{
    QCOMPARE(cli::groupsOfNextLogin("nobody-of-this-name", 4711), std::vector<quint32>{4711});
}

void TestNextLogin::aGroupJoinedSinceTheLoginIsThere()
{
    if (!m_hasJoined) {
        QSKIP("this system does not let the test change its list of groups");
    }
    std::vector<quint32> groups = cli::groupsOfNextLogin("games", 4711);
    std::sort(groups.begin(), groups.end());
    QCOMPARE(groups, (std::vector<quint32>{4711, joinedGroup}));
}

void TestNextLogin::theUserAtHandIsToldOfThem()
{
    const cMyUser user = cli::currentUser();
    QStringList groups = user.futureGroups;
    groups.sort();
    QCOMPARE(groups, answerOf(QStringLiteral("-Gn"), user.name));
    QCOMPARE(groups.contains(joinedName), m_hasJoined);
    QVERIFY(!user.groups.contains(joinedName));
}

int main(int argc, char* argv[])
{
    support::enterNamespaceUnlessRoot();
    const QCoreApplication application(argc, argv);
    TestNextLogin test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_nextlogin.moc"
