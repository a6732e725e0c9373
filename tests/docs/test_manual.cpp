// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"
#include "docs/manual/optiontables.h"
#include "editor/settingslayout.h"
#include "editor/tablemodel.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

/// The manual as it is printed.
class TestManual : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isAWholeBook();
    void saysWhoseAndWhatItIs();
    void saysTheVersion();
    void namesEveryField_data();
    void namesEveryField();
    void namesEveryChoiceOfRules_data();
    void namesEveryChoiceOfRules();
    void spellsCaptionsAsTheScreenDoes_data();
    void spellsCaptionsAsTheScreenDoes();
    void isFinished_data();
    void isFinished();
    void isInEnglish();
    void contentsNameTheTruePages();
    void contentsNameEveryChapter();
    void everyPictureIsThere();
    void everyPictureIsPrinted();
    void picturesNeedAVirtualDevice();

private:
    QTranslator m_translator;
    QMap<QString, QString> m_info;
    QVector<QStringList> m_pages; ///< lines as they stand, without blanks beside them
    QString m_text;               ///< all words in the order in which they were written
};

namespace {

struct Entry
{
    QString title; ///< with its number
    int page;      ///< counted from 1
    bool isChapter;
};

/// The one text that the program shows in Polish in every language, and the manual explains.
const QString bootWarning = QStringLiteral(
    "Miolka znajduje się w trybie serwisowym. Kontynuacja możliwa tylko z poziomu zewnętrznego "
    "oprogramowania FLIP firmy ATMEL. Wyjście z trybu serwisowego za pomocą [Start Application] "
    "(na formularzu FLIP). Dalsze informacje w pliku Pomocy");

const QString manualFile = QStringLiteral(MIOLKA_MANUAL);

QByteArray outputOf(const char* program, const QStringList& arguments)
{
    QProcess process;
    process.start(QString::fromLatin1(program), arguments);
    const bool isDone = process.waitForFinished() && process.exitCode() == 0;
    return isDone ? process.readAllStandardOutput() : QByteArray();
}

QStringList linesOf(const QString& page)
{
    QStringList lines;
    for (const QString& line : page.split(QLatin1Char('\n'))) {
        lines += line.simplified();
    }
    return lines;
}

QStringList chapterFiles()
{
    const QDir directory(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/manual/chapters"));
    QStringList paths;
    for (const QString& name : directory.entryList({QStringLiteral("*.md")})) {
        paths += directory.filePath(name);
    }
    return paths;
}

QString contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The names of the pictures that chapters show.
QStringList pictureNames()
{
    static const QRegularExpression picture(QStringLiteral("\\]\\(pictures/([a-z0-9-]+\\.png)\\)"));
    QStringList names;
    for (const QString& chapter : chapterFiles()) {
        auto matches = picture.globalMatch(contentsOf(chapter));
        while (matches.hasNext()) {
            names += matches.next().captured(1);
        }
    }
    names.removeDuplicates();
    return names;
}

/// What the contents say: titles with dots and a page number behind them.
QVector<Entry> entriesOf(const QVector<QStringList>& pages)
{
    static const QRegularExpression line(QStringLiteral("^(.+?) ?(?:\\. ?){3,}(\\d+)$"));
    static const QRegularExpression section(QStringLiteral("^\\d+\\.\\d"));
    QVector<Entry> entries;
    for (int page = 1; page < pages.size(); ++page) {
        bool isContents = false;
        for (const QString& each : pages.at(page)) {
            const QRegularExpressionMatch match = line.match(each);
            if (match.hasMatch()) {
                const QString title = match.captured(1);
                const bool isChapter =
                    (title.at(0).isDigit() && !section.match(title).hasMatch()) ||
                    title.startsWith(QLatin1String("Appendix"));
                entries.append({title, match.captured(2).toInt(), isChapter});
                isContents = true;
            }
        }
        if (!isContents) {
            break;
        }
    }
    return entries;
}

} // namespace

void TestManual::initTestCase()
{
    app::installCatalogue(m_translator);
    QVERIFY2(QFileInfo::exists(manualFile), "build the target manual first");
    const QByteArray layout =
        outputOf("pdftotext", {QStringLiteral("-layout"), manualFile, QStringLiteral("-")});
    QVERIFY2(!layout.isEmpty(), "pdftotext (Debian package poppler-utils) does not read it");
    for (const QString& page : QString::fromUtf8(layout).split(QLatin1Char('\f'))) {
        m_pages.append(linesOf(page));
    }
    m_pages.removeLast(); // behind the end of the last page
    m_text = QString::fromUtf8(
                 outputOf("pdftotext", {QStringLiteral("-raw"), manualFile, QStringLiteral("-")}))
                 .simplified();
    const QString info = QString::fromUtf8(outputOf("pdfinfo", {manualFile}));
    for (const QString& line : info.split(QLatin1Char('\n'))) {
        m_info.insert(line.section(QLatin1Char(':'), 0, 0),
                      line.section(QLatin1Char(':'), 1).trimmed());
    }
}

void TestManual::isAWholeBook()
{
    constexpr int fewestPages = 45;
    const int pages = m_info.value(QStringLiteral("Pages")).toInt();
    QVERIFY2(pages >= fewestPages, qPrintable(QString::number(pages)));
    QCOMPARE(m_pages.size(), pages);
}

void TestManual::saysWhoseAndWhatItIs()
{
    QCOMPARE(m_info.value(QStringLiteral("Title")), QStringLiteral("MIOLKAsoft user manual"));
    QCOMPARE(m_info.value(QStringLiteral("Author")), QStringLiteral("the MIOLKAsoft authors"));
    QVERIFY(m_info.value(QStringLiteral("Page size")).endsWith(QLatin1String("(A4)")));
}

void TestManual::saysTheVersion()
{
    QVERIFY2(m_pages.first().contains(QStringLiteral("Version " MIOLKA_VERSION)),
             qPrintable(m_pages.first().join(QLatin1Char('\n'))));
}

void TestManual::namesEveryField_data()
{
    QTest::addColumn<QString>("caption");
    for (const cMySettingsField& field : editor::settingsFields()) {
        QTest::newRow(qPrintable(field.name)) << editor::caption(field);
    }
}

void TestManual::namesEveryField()
{
    QFETCH(QString, caption);
    QVERIFY(m_text.contains(caption));
}

void TestManual::namesEveryChoiceOfRules_data()
{
    QTest::addColumn<QString>("label");
    for (const QString& table : manual::optionTables()) {
        const cMyTableModel options(editor::optionTableFile(table));
        for (int row = 0; row < options.rowCount(); ++row) {
            const QString label = options.cell(row, cMyTableModel::Label);
            QTest::newRow(qPrintable(QStringLiteral("%1: %2").arg(table, label))) << label;
        }
    }
}

void TestManual::namesEveryChoiceOfRules()
{
    QFETCH(QString, label);
    QVERIFY(m_text.contains(label));
}

void TestManual::spellsCaptionsAsTheScreenDoes_data()
{
    QTest::addColumn<QString>("caption");
    for (const char* caption :
         {"Save...", "Save as...", "Sound library update...", "Self-test... Passed",
          "Miolka -> PC Upload", "Transfers use ..."}) {
        QTest::newRow(caption) << QString::fromUtf8(caption);
    }
}

void TestManual::spellsCaptionsAsTheScreenDoes()
{
    QFETCH(QString, caption);
    QVERIFY(m_text.contains(caption));
}

void TestManual::isFinished_data()
{
    QTest::addColumn<QString>("leftover");
    for (const char* leftover :
         {"TODO", "FIXME", "To be written", "include:", "<!--", "-->", ":::", "{.", "](", "&lt;"}) {
        QTest::newRow(leftover) << QString::fromLatin1(leftover);
    }
}

void TestManual::isFinished()
{
    QFETCH(QString, leftover);
    const auto place = m_text.indexOf(leftover);
    QVERIFY2(place < 0, qPrintable(m_text.mid(qMax<QString::size_type>(0, place - 60), 120)));
}

void TestManual::isInEnglish()
{
    static const QRegularExpression polish(QStringLiteral(u"[ąćęłńóśźżĄĆĘŁŃÓŚŹŻ]"));
    QString text = m_text;
    text.remove(bootWarning);
    const auto place = text.indexOf(polish);
    QVERIFY2(place < 0, qPrintable(text.mid(qMax<QString::size_type>(0, place - 60), 120)));
}

void TestManual::contentsNameTheTruePages()
{
    const QVector<Entry> entries = entriesOf(m_pages);
    constexpr int fewestEntries = 40;
    QVERIFY2(entries.size() >= fewestEntries, qPrintable(QString::number(entries.size())));
    for (const Entry& entry : entries) {
        QVERIFY2(entry.page >= 1 && entry.page <= m_pages.size(), qPrintable(entry.title));
        const QStringList& lines = m_pages.at(entry.page - 1);
        // The number that is printed on the page is the one that is counted.
        QVERIFY2(lines.contains(QString::number(entry.page)), qPrintable(entry.title));
        QVERIFY2(lines.contains(entry.title), qPrintable(entry.title));
        if (entry.isChapter) {
            // Below the line at the top, which names the chapter, it begins with its heading.
            QStringList words = lines;
            words.removeAll(QString());
            QVERIFY2(words.first().endsWith(entry.title), qPrintable(words.first()));
            QCOMPARE(words.value(1), entry.title);
        }
    }
}

void TestManual::contentsNameEveryChapter()
{
    static const QRegularExpression heading(QStringLiteral("^# (.+?)( \\{.*\\})?$"),
                                            QRegularExpression::MultilineOption);
    const QVector<Entry> entries = entriesOf(m_pages);
    QStringList titles;
    for (const Entry& entry : entries) {
        if (entry.isChapter) {
            titles += entry.title;
        }
    }
    const QStringList chapters = chapterFiles();
    QCOMPARE(titles.size(), chapters.size());
    for (int i = 0; i < chapters.size(); ++i) {
        const QString title = heading.match(contentsOf(chapters.at(i))).captured(1);
        QVERIFY2(titles.at(i).endsWith(title), qPrintable(title));
    }
}

void TestManual::everyPictureIsThere()
{
    const QStringList names = pictureNames();
    constexpr int fewestPictures = 20;
    QVERIFY(names.size() >= fewestPictures);
    for (const QString& name : names) {
        const QImage image(QStringLiteral(MIOLKA_MANUAL_PICTURES "/") + name);
        QVERIFY2(!image.isNull(), qPrintable(name));
        QImage blank(image.size(), image.format());
        blank.fill(image.pixelColor(0, 0));
        QVERIFY2(image != blank, qPrintable(name));
    }
}

void TestManual::everyPictureIsPrinted()
{
    const QString list =
        QString::fromUtf8(outputOf("pdfimages", {QStringLiteral("-list"), manualFile}));
    QMap<QString, int> sizes;
    for (const QString& line : list.split(QLatin1Char('\n'))) {
        const QStringList cells = line.simplified().split(QLatin1Char(' '));
        ++sizes[cells.value(3) + QLatin1Char('x') + cells.value(4)];
    }
    for (const QString& name : pictureNames()) {
        const QImage image(QStringLiteral(MIOLKA_MANUAL_PICTURES "/") + name);
        const QString size = QStringLiteral("%1x%2").arg(image.width()).arg(image.height());
        QVERIFY2(sizes.contains(size), qPrintable(name + QLatin1Char(' ') + size));
    }
}

void TestManual::picturesNeedAVirtualDevice()
{
    const QTemporaryDir directory;
    const QString pipe = directory.filePath(QStringLiteral("nobody"));
    QProcess program;
    program.start(QStringLiteral(MIOLKA_MANUAL_PICTURES_PROGRAM),
                  {directory.path(), pipe, QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 1);
    const QString errors = QString::fromUtf8(program.readAllStandardError());
    QVERIFY2(errors.contains(QStringLiteral("no miolka-emulator listens at ") + pipe),
             qPrintable(errors));
}

QTEST_GUILESS_MAIN(TestManual)
#include "test_manual.moc"
