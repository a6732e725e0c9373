// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/helptext.h"
#include "cli/papers/completions.h"
#include "cli/papers/manpage.h"
#include "cli/papers/quoting.h"
#include "editor/settingslayout.h"
#include "tests/support/posix.h"
#include "tests/support/skipped.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char trap[] = R"(it's "so" $(touch caught) `touch caught` [x]: \ %1 ~ ^ .end)";

QVector<cMyCommand> commandsWithTraps()
{
    return {{"trapped",
             {{"FILE", Completion::File}},
             {{'t', "trap", "", Completion::None, trap},
              {'\0', "value", "V:[A]'", Completion::ImageSource, trap}},
             trap,
             ".so trap\n\n'tis a trap -x",
             nullptr}};
}

/// A shell and how it is asked what it offers.
struct Shell
{
    const char* name;
    QString (*write)(const QVector<cMyCommand>& commands);
    const char* script; ///< file name of the completion
    QStringList options;
    bool takesDirectory; ///< the completion is found by its directory
};

const QVector<Shell>& shells()
{
    static const QVector<Shell> all = {
        {"bash", papers::bashCompletion, "miolkactl", {"--norc"}, false},
        {"zsh", papers::zshCompletion, "_miolkactl", {"-f"}, true},
        {"fish", papers::fishCompletion, "miolkactl.fish", {"--no-config"}, false}};
    return all;
}

/// A line that is typed up to its end, and what is offered then.
struct Row
{
    const char* name;
    const char* line;
    QStringList expected;
    const char* absent;
};
const QVector<Row>& rows()
{
    const QString field = editor::settingsFields().first().name;
    static const QVector<Row> all = {
        {"command", "miolkactl wr", {"write"}, "read"},
        {"after a value", "miolkactl --port ttyACM0 wr", {"write"}, "read"},
        {"settings file", "miolkactl write ", {"one.mio"}, "two.mia"},
        {"library", "miolkactl upload ", {"two.mia", "three.mic"}, "one.mio"},
        {"source", "miolkactl diff d", {"device", "default"}, "one.mio"},
        {"second source", "miolkactl diff default ", {"device", "one.mio"}, "two.mia"},
        {"no third", "miolkactl diff default device ", {}, "default"},
        {"profile", "miolkactl rehearse default --profile ", {"square", "four.csv"}, "one.mio"},
        {"profile by letter", "miolkactl rehearse default -p s", {"square", "sawtooth"}, "one.mio"},
        {"picture", "miolkactl rehearse default --plot ", {"five.png"}, "one.mio"},
        {"any file", "miolkactl --trace ", {"one.mio", "five.png"}, "write"},
        {"field", "miolkactl get default ", {field}, "device"},
        {"another field", "miolkactl get default x ", {field}, "device"},
        {"assignment", "miolkactl set one.mio ", {field + '='}, "one.mio"},
    };
    return all;
}

} // namespace

Q_DECLARE_METATYPE(Shell)

class TestPapers : public QObject
{
    Q_OBJECT

public:
    /// Whether a program is missing that reads what was written.
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void init();
    void roffKeepsEveryCharacter_data();
    void roffKeepsEveryCharacter();
    void theManualPageHasTheWholeTable();
    void theManualPageIsClean_data() { addPrinters("style"); }
    void theManualPageIsClean();
    void everyWrittenPageIsClean_data() { addPrinters("warning"); }
    void everyWrittenPageIsClean();
    void trapsAreTextInTheManualPage();
    void everyCommandAndOptionIsOffered_data() { addShells(); }
    void everyCommandAndOptionIsOffered();
    void operandsAndValuesAreOffered_data();
    void operandsAndValuesAreOffered();
    void trapsAreTextInScripts_data() { addShells(); }
    void trapsAreTextInScripts();

private:
    static void addShells()
    {
        QTest::addColumn<Shell>("shell");
        for (const Shell& shell : shells()) {
            QTest::newRow(shell.name) << shell;
        }
    }
    /// Programs that find fault with manual pages from that grade on, where they have grades.
    static void addPrinters(const QString& grade)
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("mandoc") << "mandoc" << QStringList{"-T", "lint", "-W", grade};
        QTest::newRow("groff") << "groff" << QStringList{"-man", "-ww", "-z", "-Tutf8"};
    }
    [[nodiscard]] bool isThere(const QString& program)
    {
        const bool isFound = !QStandardPaths::findExecutable(program).isEmpty();
        m_wasSkipped = m_wasSkipped || !isFound;
        return isFound;
    }
    /// Runs a program in the test's directory; its errors follow its output.
    [[nodiscard]] QString output(const QString& program, const QStringList& arguments) const;
    /// What the shell offers after each line.
    [[nodiscard]] QVector<QStringList> offered(const Shell& shell,
                                               const QVector<cMyCommand>& commands,
                                               const QStringList& lines) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QHash<QString, QVector<QStringList>> m_offeredAtRows; ///< by the shell's name
    bool m_wasSkipped = false;
};

void TestPapers::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    for (const char* name : {"one.mio", "two.mia", "three.mic", "four.csv", "five.png"}) {
        support::writeFile(m_directory->filePath(name), {});
    }
    QVERIFY(QDir(m_directory->path()).mkdir("deep"));
}

QString TestPapers::output(const QString& program, const QStringList& arguments) const
{
    QProcess process;
    process.setWorkingDirectory(m_directory->path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", m_directory->path());
    environment.insert("TERM", "dumb");
    environment.insert("LC_ALL", "C.UTF-8");
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.closeWriteChannel();
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

QVector<QStringList> TestPapers::offered(const Shell& shell, const QVector<cMyCommand>& commands,
                                         const QStringList& lines) const
{
    const QDir directory(m_directory->path());
    directory.mkpath("papers");
    const QString file = directory.filePath(QStringLiteral("papers/") + shell.script);
    support::writeFile(file, shell.write(commands).toUtf8());
    QFile::remove(directory.filePath("papers/offered"));
    const QString asker = QStringLiteral(MIOLKA_SOURCE_DIR "/tests/cli/complete.") + shell.name;
    const QStringList parts =
        output(shell.name,
               shell.options +
                   QStringList{asker, shell.takesDirectory ? directory.filePath("papers") : file} +
                   lines)
            .split("----\n");
    QVector<QStringList> lists;
    for (const QString& part : parts) {
        QStringList words = part.split('\n', Qt::SkipEmptyParts);
        for (QString& word : words) {
            word = word.section('\t', 0, 0);
        }
        lists.append(words);
    }
    // Behind the last mark stands nothing, or what the shell complained of.
    return lists.last().isEmpty() ? lists.mid(0, lists.size() - 1) : QVector<QStringList>();
}

void TestPapers::roffKeepsEveryCharacter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("source");
    QTest::newRow("dot in front") << ".so x"
                                  << "\\&.so x";
    QTest::newRow("quote in front") << "'tis"
                                    << "\\(aqtis";
    QTest::newRow("backslash") << "a\\b"
                               << "a\\eb";
    QTest::newRow("option") << "--all"
                            << "\\-\\-all";
    QTest::newRow("dot inside") << "a.b"
                                << "a.b";
}

void TestPapers::roffKeepsEveryCharacter()
{
    QFETCH(QString, text);
    QTEST(papers::roff(text), "source");
}

void TestPapers::theManualPageHasTheWholeTable()
{
    const QString page = papers::manPage(cli::commands());
    for (const cMyCommand& command : cli::commands()) {
        const QString name = papers::roff(command.name);
        const auto start = page.indexOf(QStringLiteral("\n.SS \\fB%1\\fR").arg(name));
        QVERIFY2(start >= 0, command.name);
        const QString section = page.mid(start, page.indexOf("\n.S", start + 1) - start);
        for (const cMyOption& option : command.options) {
            QVERIFY2(section.contains(papers::roff(QStringLiteral("--") + option.name)),
                     option.name);
        }
    }
    for (const char* title : {"NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "OPTIONS",
                              "EXIT STATUS", "FILES", "EXAMPLES", "SEE ALSO"}) {
        QVERIFY2(page.contains(QStringLiteral("\n.SH %1\n").arg(title)), title);
    }
    for (const cli::StatusMeaning& row : cli::exitStatuses()) {
        const int number = static_cast<int>(row.status);
        QVERIFY2(page.contains(QStringLiteral("\n\\fB%1\\fR\n").arg(number)), row.meaning);
    }
}

void TestPapers::theManualPageIsClean()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    if (!isThere(program)) {
        QSKIP("the program is missing that looks over the page");
    }
    support::writeFile(m_directory->filePath("page.1"), papers::manPage(cli::commands()).toUtf8());
    QCOMPARE(output(program, arguments + QStringList{"page.1"}), QString());
}

void TestPapers::everyWrittenPageIsClean()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    if (!isThere(program)) {
        QSKIP("the program is missing that looks over the pages");
    }
    const QDir pages(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/man"));
    const QStringList names = pages.entryList({QStringLiteral("*.1")});
    QVERIFY(names.contains(QStringLiteral("miolkasoft.1")));
    for (const QString& name : names) {
        QCOMPARE(output(program, arguments + QStringList{pages.filePath(name)}), QString());
    }
}

void TestPapers::trapsAreTextInTheManualPage()
{
    if (!isThere("mandoc")) {
        QSKIP("the program is missing that prints the page");
    }
    support::writeFile(m_directory->filePath("page.1"),
                       papers::manPage(commandsWithTraps()).toUtf8());
    QString text = output("mandoc", {"-T", "utf8", "page.1"});
    text.remove(QRegularExpression(".\b"));
    text = text.simplified();
    QVERIFY2(text.count(cli::sentence(trap).mid(1).simplified()) == 3, qPrintable(text));
    QVERIFY2(text.contains(".so trap 'tis a trap -x"), qPrintable(text));
}

void TestPapers::everyCommandAndOptionIsOffered()
{
    QFETCH(Shell, shell);
    if (!isThere(shell.name)) {
        QSKIP("the shell is missing");
    }
    QStringList lines{"miolkactl "};
    for (const cMyCommand& command : cli::commands()) {
        lines.append(QStringLiteral("miolkactl %1 --").arg(command.name));
    }
    const QVector<QStringList> lists = offered(shell, cli::commands(), lines);
    QCOMPARE(lists.size(), lines.size());
    for (int i = 0; i < cli::commands().size(); ++i) {
        const cMyCommand& command = cli::commands().at(i);
        QVERIFY2(lists.first().contains(command.name), command.name);
        for (const cMyOption& option : cli::commonOptions() + command.options) {
            const QString typed = QStringLiteral("--") + option.name;
            QVERIFY2(lists.at(i + 1).contains(typed), qPrintable(lines.at(i + 1) + typed));
        }
    }
}

void TestPapers::operandsAndValuesAreOffered_data()
{
    QTest::addColumn<Shell>("shell");
    QTest::addColumn<int>("row");
    for (const Shell& shell : shells()) {
        for (int row = 0; row < rows().size(); ++row) {
            QTest::addRow("%s: %s", shell.name, rows().at(row).name) << shell << row;
        }
    }
}

void TestPapers::operandsAndValuesAreOffered()
{
    QFETCH(Shell, shell);
    QFETCH(int, row);
    if (!isThere(shell.name)) {
        QSKIP("the shell is missing");
    }
    // A shell takes long to start, so it is asked everything at once.
    QVector<QStringList>& lists = m_offeredAtRows[shell.name];
    if (lists.isEmpty()) {
        QStringList lines;
        for (const Row& each : rows()) {
            lines.append(each.line);
        }
        lists = offered(shell, cli::commands(), lines);
    }
    QCOMPARE(lists.size(), rows().size());
    const QStringList list = lists.at(row);
    for (const QString& word : rows().at(row).expected) {
        QVERIFY2(list.contains(word), qPrintable(list.join(' ')));
    }
    QVERIFY2(!list.contains(rows().at(row).absent), qPrintable(list.join(' ')));
}

void TestPapers::trapsAreTextInScripts()
{
    QFETCH(Shell, shell);
    if (!isThere(shell.name)) {
        QSKIP("the shell is missing");
    }
    const QVector<QStringList> lists =
        offered(shell, commandsWithTraps(),
                {"miolkactl tr", "miolkactl trapped x --tra", "miolkactl trapped --value d"});
    QCOMPARE(lists.size(), 3);
    QCOMPARE(lists.at(0), QStringList{"trapped"});
    QVERIFY2(lists.at(1).contains("--trap"), qPrintable(lists.at(1).join(' ')));
    QVERIFY2(lists.at(2).contains("default"), qPrintable(lists.at(2).join(' ')));
    QVERIFY(!QFile::exists(m_directory->filePath("caught")));
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    TestPapers test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_papers.moc"
