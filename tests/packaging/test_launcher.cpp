// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/packaging/desktopfiles.h"
#include "tests/support/posix.h"
#include "tests/support/skipped.h"

#include <QTemporaryDir>
#include <QtTest>

using support::desktopFile;
using support::Spoken;

/// Launcher and catalogue entry before the desktop's own validators, and a double click.
class TestLauncher : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void theValidatorIsContent_data();
    void theValidatorIsContent();
    void theProgramGetsTheFileThatWasClicked_data();
    void theProgramGetsTheFileThatWasClicked();

private:
    bool m_wasSkipped = false;
};

void TestLauncher::theValidatorIsContent_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("launcher") << "desktop-file-validate" << QStringList{desktopFile(".desktop")};
    QTest::newRow("catalogue entry")
        << "appstreamcli" << QStringList{"validate", "--no-net", desktopFile(".metainfo.xml")};
    QTest::newRow("catalogue entry as XML")
        << "xmllint" << QStringList{"--noout", desktopFile(".metainfo.xml")};
    QTest::newRow("file types as XML") << "xmllint" << QStringList{"--noout", desktopFile(".xml")};
}

void TestLauncher::theValidatorIsContent()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    if (!support::isInstalled(program)) {
        m_wasSkipped = true;
        QSKIP(qPrintable(program + " is missing"));
    }
    QVERIFY(QFile::exists(arguments.last()));
    const Spoken spoken = support::run(program, arguments);
    QVERIFY2(spoken.status == 0, qPrintable(spoken.text));
    if (program != "appstreamcli") { // which tells that all is well
        QCOMPARE(spoken.text, QString());
    }
}

void TestLauncher::theProgramGetsTheFileThatWasClicked_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "dive.mio";
    QTest::newRow("blanks") << "my dive 1.mio";
    QTest::newRow("accents") << QString::fromUtf8("żółw.mio");
    QTest::newRow("percent") << "100%20f.mio";
    QTest::newRow("quotes and dollars") << "it's \"$HOME\".mio";
}

/// A program of that name stands in for the real one and keeps what it was given.
void TestLauncher::theProgramGetsTheFileThatWasClicked()
{
    QFETCH(QString, name);
    if (!support::isInstalled("gio")) {
        m_wasSkipped = true;
        QSKIP("gio is missing");
    }
    const QTemporaryDir directory;
    const QString program = directory.filePath("miolkasoft");
    const QString given = directory.filePath("given");
    support::writeFile(program, QStringLiteral("#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" >'%1'.new\n"
                                               "mv '%1'.new '%1'\n")
                                    .arg(given)
                                    .toUtf8());
    QVERIFY(QFile(program).setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    support::writeFile(directory.filePath(name), {});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", directory.path() + ":" + environment.value("PATH"));
    environment.insert("LC_ALL", "C.UTF-8");
    const Spoken spoken = support::run(
        "gio", {"launch", desktopFile(".desktop"), directory.filePath(name)}, environment);
    QVERIFY2(spoken.status == 0, qPrintable(spoken.text));
    QTRY_VERIFY(QFile::exists(given));
    QCOMPARE(QString::fromUtf8(support::contentsOf(given)),
             QStringLiteral("1\n%1\n").arg(directory.filePath(name)));
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    TestLauncher test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_launcher.moc"
