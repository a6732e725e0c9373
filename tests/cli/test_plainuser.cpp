// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/currentuser.h"

#include <QtTest>

namespace {

QString answerOf(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("id"), arguments);
    return process.waitForFinished() ? QString::fromLocal8Bit(process.readAll()).trimmed()
                                     : QString();
}

} // namespace

/// The user as every Unix tells of him.
class TestPlainUser : public QObject
{
    Q_OBJECT

private slots:
    void nameAndGroupsAreTheSystemsOwn();
};

void TestPlainUser::nameAndGroupsAreTheSystemsOwn()
{
    const cMyUser user = cli::currentUser();
    QCOMPARE(user.name, answerOf({"-un"}));
    QStringList groups = user.groups;
    groups.removeDuplicates();
    groups.sort();
    QStringList expected = answerOf({"-Gn"}).split(QLatin1Char(' '));
    expected.sort();
    QCOMPARE(groups, expected);
    QVERIFY(user.futureGroups.isEmpty());
}

QTEST_GUILESS_MAIN(TestPlainUser)
#include "test_plainuser.moc"
