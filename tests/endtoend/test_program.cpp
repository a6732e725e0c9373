// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/desktop.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

/// The program as it is installed, started by a shell, on a screen, with a keyboard.
class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void withoutArguments();
    void withASettingsFile();
    void onlyTheFirstArgumentIsUsed();
    void withAFileThatIsMissing();
    void withANameThatIsNoUtf8();
    void lettersInTheCLocale();
    void editingSession();
    void aRuleMadeByHandIsSaved();
    void helpGoesToTheDesktop();
    void screenshotsOfEveryPage();

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory->filePath(QString::fromUtf8(name));
    }
    /// Starts the program as a shell does with this command line behind its name, and waits for
    /// its window.
    void start(const QString& arguments, const QString& locale = QStringLiteral("C.UTF-8"));
    /// Types a path into the file dialog with this title and confirms it.
    void chooseFile(const QString& title, const QString& file);
    void quit();

    std::unique_ptr<support::Desktop> m_desktop;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_program;
    QString m_window;
};

namespace {

const QString bareTitle = QStringLiteral("MIOLKAsoft v1.0.4.0");

} // namespace

void TestProgram::start(const QString& arguments, const QString& locale)
{
    QProcessEnvironment environment = m_desktop->environment();
    environment.insert(QStringLiteral("LC_ALL"), locale);
    environment.insert(QStringLiteral("PROGRAM"), QStringLiteral(MIOLKA_PROGRAM));
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(environment);
    m_program->setWorkingDirectory(m_directory->path());
    m_program->setProcessChannelMode(QProcess::ForwardedChannels);
    m_program->start(QStringLiteral("sh"),
                     {QStringLiteral("-c"), QStringLiteral("exec \"$PROGRAM\" ") + arguments});
    m_window = m_desktop->focus(QStringLiteral("^MIOLKAsoft"));
    QVERIFY2(!m_window.isEmpty(), "no window came up");
}

void TestProgram::chooseFile(const QString& title, const QString& file)
{
    QVERIFY(!m_desktop->focus(QLatin1Char('^') + title + QLatin1Char('$')).isEmpty());
    m_desktop->type(file);
    m_desktop->photograph(title);
    m_desktop->press({QStringLiteral("Return")});
}

void TestProgram::quit()
{
    m_desktop->focus(QStringLiteral("^MIOLKAsoft"));
    m_desktop->press({QStringLiteral("ctrl+q")});
    QVERIFY(m_program->waitForFinished());
    QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program->exitCode(), 0);
}

void TestProgram::initTestCase()
{
    m_desktop = std::make_unique<support::Desktop>();
    QVERIFY2(m_desktop->isRunning(), "Xvfb does not start");
}

void TestProgram::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    support::writeFile(path("dive 1.mio"), support::settingsText(support::markedImage('x')));
    support::writeFile(path("other.mio"), support::settingsText(support::markedImage('o')));
}

void TestProgram::cleanup()
{
    if (m_program != nullptr && m_program->state() != QProcess::NotRunning) {
        m_program->kill();
        m_program->waitForFinished();
    }
}

void TestProgram::withoutArguments()
{
    start({});
    QCOMPARE(m_desktop->title(m_window), bareTitle);
    m_desktop->photograph(QStringLiteral("fresh-window"));
    m_desktop->press({QStringLiteral("ctrl+s")});
    chooseFile(QStringLiteral("Save to file"), path("fresh.mio"));
    QTRY_COMPARE(m_desktop->title(m_window),
                 bareTitle + QStringLiteral(" --- ") + path("fresh.mio"));
    QCOMPARE(support::readFile(path("fresh.mio")), support::settingsText(support::templateImage()));
    quit();
}

void TestProgram::withASettingsFile()
{
    const QByteArray before = support::readFile(path("dive 1.mio"));
    start(QStringLiteral("'dive 1.mio'"));
    QCOMPARE(m_desktop->title(m_window), bareTitle + QStringLiteral(" --- ") + path("dive 1.mio"));
    m_desktop->press({QStringLiteral("ctrl+shift+s")});
    chooseFile(QStringLiteral("Save to file"), path("copy.mio"));
    QTRY_COMPARE(m_desktop->title(m_window),
                 bareTitle + QStringLiteral(" --- ") + path("copy.mio"));
    QCOMPARE(support::readFile(path("copy.mio")), before);
    QCOMPARE(support::readFile(path("dive 1.mio")), before);
    quit();
}

void TestProgram::onlyTheFirstArgumentIsUsed()
{
    start(QStringLiteral("other.mio 'dive 1.mio' --help"));
    QCOMPARE(m_desktop->title(m_window), bareTitle + QStringLiteral(" --- ") + path("other.mio"));
    quit();
}

void TestProgram::withAFileThatIsMissing()
{
    start(QStringLiteral("missing.mio"));
    QCOMPARE(m_desktop->title(m_window), bareTitle);
    quit();
    QVERIFY(!QFile::exists(path("missing.mio")));
}

void TestProgram::withANameThatIsNoUtf8()
{
    const QStringList before = QDir(m_directory->path()).entryList();
    start(QStringLiteral("\"$(printf 'a\\377.mio')\""));
    QCOMPARE(m_desktop->title(m_window), bareTitle);
    m_desktop->press({QStringLiteral("ctrl+s")});
    QVERIFY(!m_desktop->focus(QStringLiteral("^Save to file$")).isEmpty());
    m_desktop->press({QStringLiteral("Escape")});
    // Its window takes the keyboard with it when it goes.
    QTRY_VERIFY(!m_desktop->isShown(QStringLiteral("^Save to file$")));
    quit();
    QCOMPARE(QDir(m_directory->path()).entryList(), before);
}

void TestProgram::lettersInTheCLocale()
{
    QVERIFY(QFile::remove(path("dive 1.mio")));
    support::writeFile(path("żółw.mio"), support::settingsText(support::markedImage('x'), "\r\n"));
    start(QStringLiteral("żółw.mio"), QStringLiteral("C"));
    m_desktop->press({QStringLiteral("ctrl+s")});
    QTRY_COMPARE(support::readFile(path("żółw.mio")),
                 support::settingsText(support::markedImage('x')));
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files),
             (QStringList{QStringLiteral("other.mio"), QStringLiteral("żółw.mio")}));
    quit();
}

void TestProgram::editingSession()
{
    start(QStringLiteral("'dive 1.mio'"));
    m_desktop->press({QStringLiteral("ctrl+o")});
    QVERIFY(!m_desktop->focus(QStringLiteral("^Miolka$")).isEmpty());
    m_desktop->photograph(QStringLiteral("question"));
    m_desktop->press({QStringLiteral("alt+n")});
    chooseFile(QStringLiteral("Open file"), path("other.mio"));
    QTRY_COMPARE(m_desktop->title(m_window),
                 bareTitle + QStringLiteral(" --- ") + path("other.mio"));
    m_desktop->focus(QStringLiteral("^MIOLKAsoft"));
    m_desktop->press({QStringLiteral("ctrl+s"), QStringLiteral("ctrl+n")});
    QTRY_COMPARE(m_desktop->title(m_window), bareTitle);
    QVERIFY(!m_desktop->isShown(QStringLiteral("^Miolka$")));
    quit();
}

void TestProgram::aRuleMadeByHandIsSaved()
{
    start(QStringLiteral("'dive 1.mio'"));
    // From the bar of pages to "When" of the first rule. A click would open its list, and where
    // nothing manages the windows, a list that closes may leave the keyboard to nobody.
    m_desktop->press({QStringLiteral("Tab")});
    // One letter finds each choice: of two, a busy machine would take the second for a new search.
    const auto choose = [this](const char* letter) {
        m_desktop->type(QString::fromLatin1(letter));
        m_desktop->press({QStringLiteral("Tab")});
    };
    choose("u");
    choose("d");
    choose("");
    choose("5");
    choose("d");
    m_desktop->press({QStringLiteral("Down"), QStringLiteral("Tab"), QStringLiteral("Down")});
    m_desktop->photograph(QStringLiteral("rule-made-by-hand"));
    m_desktop->press({QStringLiteral("ctrl+s")});
    QByteArray expected = support::markedImage('x');
    expected.replace(320, 8, QByteArray::fromHex("00 20 00 F4 01 20 01 01"));
    QTRY_COMPARE(support::readFile(path("dive 1.mio")), support::settingsText(expected));
    quit();
}

void TestProgram::helpGoesToTheDesktop()
{
    // In the place of what opens documents on a desktop.
    support::writeFile(path("xdg-open"), "#!/bin/sh\nprintf '%s\\n' \"$@\" >>opened\n");
    QVERIFY(QFile::setPermissions(path("xdg-open"), QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray searched = qgetenv("PATH");
    const auto restore = qScopeGuard([&searched] { qputenv("PATH", searched); });
    qputenv("PATH", m_directory->path().toLocal8Bit() + ':' + searched);
    start({});
    m_desktop->press({QStringLiteral("F1")});
    const QString manual =
        QFileInfo(QStringLiteral(MIOLKA_PROGRAM)).path() + QStringLiteral("/MIOLKAsoftHELP.pdf");
    QTRY_VERIFY(QFile::exists(path("opened")));
    QTRY_COMPARE(support::readFile(path("opened")), QUrl::fromLocalFile(manual).toEncoded() + '\n');
    quit();
}

void TestProgram::screenshotsOfEveryPage()
{
    QProcess screenshots;
    screenshots.start(QStringLiteral(MIOLKA_SCREENSHOTS), {path("pictures"), path("other.mio")});
    QVERIFY(screenshots.waitForFinished());
    QCOMPARE(screenshots.exitCode(), 0);
    QCOMPARE(
        QDir(path("pictures")).entryList(QDir::Files),
        (QStringList{QStringLiteral("0-tabStart.png"), QStringLiteral("1-tabTimery.png"),
                     QStringLiteral("2-tabKomunikaty.png"), QStringLiteral("3-simWidget.png")}));
}

QTEST_GUILESS_MAIN(TestProgram)
#include "test_program.moc"
