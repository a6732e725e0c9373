// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexrecord.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "tests/support/posix.h"
#include "tests/support/skipped.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <vector>

/// What is made of Intel HEX text that is not as it should be: by us, and by other tools that read
/// the format.
class TestMalformedRecords : public QObject
{
    Q_OBJECT

public:
    /// Whether a tool is not there, so that something was not compared.
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void ourVerdict_data();
    void ourVerdict();
    void verdictsOfSrecCat();
    void verdictsOfObjcopy();
    void verdictsOfIntelhexForPython();

private:
    QTemporaryDir m_directory;
    bool m_wasSkipped = false;
};

namespace {

/// What is not 0 in the bytes that were read, or that none were.
const QByteArray first = "0:AABBCCDD";
const QByteArray both = "0:AABBCCDD 10:1122";
const QByteArray all = "0:AABBCCDD 10:1122 20:3344";
const QByteArray nothing = "nothing";
const QByteArray refused = "refused";

const QByteArray firstRecord = ":04000000AABBCCDDEE";
const QByteArray secondRecord = ":020010001122BB";
const QByteArray thirdRecord = ":02002000334467";
const QByteArray endRecord = ":00000001FF";

/// A file, a line of it, and what is made of them.
struct Case
{
    const char* name;
    QByteArray file;
    QByteArray line;
    bool isLineRead;    ///< by the record alone
    QByteArray ours;    ///< what takes effect of the file
    QByteArray srecCat; ///< srec_cat and the others refuse a file as a whole
    QByteArray objcopy;
    QByteArray intelhex;
};

QByteArray lines(const QByteArrayList& list)
{
    return list.join('\n') + '\n';
}

/// A file with the line between its first record and its second.
Case odd(const char* name, const QByteArray& line, bool isLineRead, const QByteArray& ours,
         const QByteArrayList& theirs)
{
    return {name,
            lines({firstRecord, line, secondRecord, endRecord}),
            line,
            isLineRead,
            ours,
            theirs.first(),
            theirs.value(1, theirs.first()),
            theirs.value(2, theirs.first())};
}

/// A file by all of its lines.
Case whole(const char* name, const QByteArray& file, const QByteArray& line, bool isLineRead,
           const QByteArray& ours, const QByteArrayList& theirs)
{
    Case whole = odd(name, line, isLineRead, ours, theirs);
    whole.file = file;
    return whole;
}

QByteArray utf16(const QByteArray& text)
{
    QByteArray wide("\xFF\xFE");
    for (const char character : text) {
        wide.append(character).append('\0');
    }
    return wide;
}

/// Digits and lengths. A file is read up to its first bad record, and what was read before stays:
/// each record is whole in itself, and its own sum vouches for it.
std::vector<Case> fields()
{
    const QByteArray longest = ":FF010000" + QByteArray("01").repeated(255) + "01";
    const QByteArray withLongest = both + " 100:" + QByteArray("01").repeated(255);
    return {
        odd("sign for a digit", ":02002000+3-467", false, first, {refused}),
        odd("blank inside", ":02002000 33 4467", false, first, {refused}),
        odd("letters beyond F", ":02002000GG4467", false, first, {refused}),
        odd("prefix of a number", ":0x002000334467", false, first, {refused}),
        odd("full-width digit",
            ":\xEF\xBC\x90"
            "2002000334467",
            false, first, {refused}),
        odd("full-width line", QString(":02002000334467").replace('0', QChar(0xFF10)).toUtf8(),
            false, first, {refused}),
        odd("superscript digit",
            ":0\xB2"
            "2000334467",
            false, first, {refused}),
        odd("NUL inside",
            QByteArray(":0200\0"
                       "000334467",
                       15),
            false, first, {refused}),
        odd("odd digits", ":0200200033467", false, first, {refused}),
        odd("one digit of the sum", ":0200200033446", false, first, {refused}),
        // A number at the very end of a line may have one digit; it is read as a number is.
        odd("sum of one digit", ":01002000DA5", true, "0:AABBCCDD 10:1122 20:DA", {refused}),
        odd("wrong sum", ":02002000334468", false, first, {refused}),
        odd("count over the data", ":0A002000334467", false, first, {refused}),
        odd("count under the data", ":01002000334467", false, first, {refused}),
        // The count says where the sum is; what is behind the sum is not looked at.
        odd("count under the data, sum in its place", ":020020003344675566", true, all, {refused}),
        odd("start code alone", ":", false, first, {refused}),
        odd("no bytes", ":00002000E0", true, both, {both}),
        odd("longest record", longest, true, withLongest, {withLongest}),
        // The image holds 1024 bytes; what lies behind them is read and never saved.
        odd("across 64 KiB", ":02FFFF00334489", true, "0:AABBCCDD 10:1122 FFFF:3344",
            {"0:AABBCCDD 10:1122 FFFF:3344"}),
    };
}

/// Types. The device sums the data of data records only, and so do we: records of other types that
/// have data are wrong by that rule if they are right by the public one. Settings need none.
std::vector<Case> types()
{
    const QByteArray overwritten = "2:CCDD 10:1122"; // data takes effect whatever its type
    return {
        odd("address of two bytes", ":020000040000FA", false, first, {both}),
        odd("address of one byte", ":0100000400FB", false, first, {refused}),
        odd("address without bytes", ":00000004FC", true, both, {refused}),
        // As we print it for the device, which sends none back.
        odd("address that is not counted", ":000000040000FC", false, first, {refused}),
        odd("address that is not summed", ":020000040000FC", true, overwritten, {refused}),
        odd("type 2", ":020000020000FC", false, first, {both}),
        odd("type 3", ":0400000300000000F9", false, first, {both}),
        odd("type 5", ":0400000500000000F7", false, first, {both}),
        odd("type 6 with its data summed", ":02002006334461", false, first, {refused}),
        odd("type FF with its data summed", ":020020FF334468", false, first, {refused}),
        odd("type 6 with its data not summed", ":020020063344DA", true, all, {refused}),
    };
}

/// What stands around records. They are words between white space, not lines, and what follows a
/// sum without any is not looked at; what is no record ends the reading, where srec_cat would pass
/// over it: a guess at what a damaged file means is worse than a part of it.
std::vector<Case> surroundings()
{
    const QByteArray two = thirdRecord + " :01003000557A";
    const QByteArray four = all + " 30:55";
    return {
        odd("text behind the sum", thirdRecord + "junk", true, all, {refused}),
        odd("long text behind the sum", thirdRecord + QByteArray(10000, '0'), true, all, {refused}),
        odd("comment behind the sum", thirdRecord + " ; junk", true, "0:AABBCCDD 20:3344",
            {refused}),
        odd("NUL behind the sum", thirdRecord + '\0', true, all, {refused}),
        odd("tab and form feed behind the sum", thirdRecord + "\t\f", true, all, {refused}),
        odd("two records on a line", two, true, four, {refused}),
        odd("two records without a blank", thirdRecord + ":01003000557A", true, all,
            {refused, four, refused}),
        odd("nothing but zeros", ':' + QByteArray(100000, '0'), true, both, {refused}),
        odd("tab in front", '\t' + thirdRecord, false, all, {both, refused, refused}),
        odd("blank in front", ' ' + thirdRecord, false, all, {both, refused, refused}),
        odd("NUL in front", '\0' + thirdRecord, false, first, {both, refused, refused}),
        odd("no start code", thirdRecord.mid(1), false, first, {both, refused, refused}),
        odd("two start codes", ':' + thirdRecord, false, first, {refused}),
        odd("other start code", ';' + thirdRecord.mid(1), false, first, {both, refused, refused}),
        odd("comment", "; comment", false, first, {both, refused, refused}),
        odd("comment of a script", "# comment", false, first, {both, refused, refused}),
        odd("long comment", ';' + QByteArray(10000, 'x'), false, first, {both, refused, refused}),
        // The last one wins, as it does for the device.
        odd("overlapping addresses", ":030002003344552F", true, "0:AABB334455 10:1122",
            {refused, "0:AABB334455 10:1122", refused}),
        odd("the same record again", firstRecord, true, both, {both, both, refused}),
        whole("unsorted addresses", lines({secondRecord, firstRecord, endRecord}), secondRecord,
              true, both, {both}),
    };
}

/// Line ends, encodings, and the end. Only the end record as everybody writes it ends the reading.
std::vector<Case> files()
{
    const QByteArray text = lines({firstRecord, secondRecord, endRecord});
    const QByteArray mark = "\xEF\xBB\xBF";
    const QByteArray endWithData = ":02000001334486";
    const QByteArray endNotSummed = ":020000013344FF";
    const auto end = [](const char* name, const QByteArray& line, bool isLineRead,
                        const QByteArray& ours, const QByteArrayList& theirs) {
        return odd(name, line, isLineRead, ours, theirs);
    };
    return {
        whole("no end record", lines({firstRecord, secondRecord}), secondRecord, true, both,
              {both}),
        end("end record with data", endWithData, false, first, {refused, first, refused}),
        end("end record with data that is not summed", endNotSummed, true, "0:3344CCDD 10:1122",
            {refused}),
        end("end record with an offset", ":00123401B9", true, both, {first}),
        end("records behind the end", endRecord, true, first, {first}),
        end("lower-case end record", endRecord.toLower(), true, both, {first}),
        whole("two end records", text + endRecord, endRecord, true, both, {both}),
        whole("only the end record", endRecord, endRecord, true, nothing,
              {refused, refused, nothing}),
        whole("empty", QByteArray(), QByteArray(), false, nothing, {refused, refused, nothing}),
        whole("only line ends", "\n\r\n\n", "\r", false, nothing, {refused, refused, nothing}),
        whole("carriage returns for line ends", QByteArray(text).replace('\n', '\r'),
              firstRecord + '\r' + secondRecord, true, both, {refused, both, both}),
        whole("mixed line ends", firstRecord + "\r\n" + secondRecord + '\n' + endRecord + "\r\n",
              firstRecord + '\r', true, both, {both}),
        whole("no line end at the end", text.chopped(1), endRecord, true, both, {both}),
        whole("blank lines", "\n" + QByteArray(text).replace("\n", "\n\r\n"), "\r", false, both,
              {both, refused, both}),
        whole("lower case", text.toLower(), firstRecord.toLower(), true, both, {both}),
        whole("byte-order mark", mark + text, mark + firstRecord, false, nothing,
              {"10:1122", refused, refused}),
        whole("UTF-16", utf16(text), utf16(firstRecord), false, nothing, {refused}),
    };
}

const std::vector<Case>& cases()
{
    static const std::vector<Case> table = [] {
        std::vector<Case> joined;
        for (const auto& part : {fields(), types(), surroundings(), files()}) {
            joined.insert(joined.end(), part.cbegin(), part.cend());
        }
        return joined;
    }();
    return table;
}

/// Runs of bytes that are not 0, each with the address of its first.
QByteArray runsOf(const QByteArray& bytes)
{
    QByteArrayList runs;
    char before = 0;
    for (int address = 0; address < bytes.size(); ++address) {
        const char byte = bytes.at(address);
        if (byte != 0 && before == 0) {
            runs.append(QByteArray::number(address, 16).toUpper() + ':');
        }
        if (byte != 0) {
            runs.last() += QByteArray(1, byte).toHex().toUpper();
        }
        before = byte;
    }
    return runs.isEmpty() ? nothing : runs.join(' ');
}

QByteArray allOf(const cMyMemoryArea& area)
{
    QByteArray bytes;
    quint8 byte = 0;
    while (area.data(static_cast<int>(bytes.size()), &byte)) {
        bytes.append(static_cast<char>(byte));
    }
    return bytes;
}

/// A tool, and the one command that has it turn each *.hex here into a *.hex.bin. It leaves none
/// for a file that it refuses.
struct Tool
{
    QStringList check; ///< ends well where the tool is there
    QStringList command;
    QByteArray Case::*verdict;
};

Tool shellTool(const QString& program, const QString& command, QByteArray Case::*verdict)
{
    const QString loop = QStringLiteral("for f in *.hex; do %1 || rm -f $f.bin; done");
    return {{program, QStringLiteral("--version")},
            {QStringLiteral("sh"), QStringLiteral("-c"), loop.arg(command)},
            verdict};
}

Tool pythonTool()
{
    // Where Debian's packages are, whatever other Python there is.
    const QString python = QStringLiteral("/usr/bin/python3");
    const QString script = QStringLiteral("import glob, intelhex\n"
                                          "for name in glob.glob('*.hex'):\n"
                                          "    try:\n"
                                          "        image = intelhex.IntelHex(name)\n"
                                          "    except Exception:\n"
                                          "        continue\n"
                                          "    image.padding = 0\n"
                                          "    known = bool(image.addresses())\n"
                                          "    data = image.tobinstr(start=0) if known else b''\n"
                                          "    open(name + '.bin', 'wb').write(data)\n");
    return {{python, QStringLiteral("-c"), QStringLiteral("import intelhex")},
            {python, QStringLiteral("-c"), script},
            &Case::intelhex};
}

/// Whether the command could be run and ended well; nothing that it says is shown.
bool run(QStringList command, const QString& directory)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const QString program = command.takeFirst();
    process.start(program, command);
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

void compareWith(const Tool& tool, bool& wasSkipped)
{
    const QTemporaryDir directory;
    if (!run(tool.check, directory.path())) {
        wasSkipped = true;
        QSKIP("it is not installed");
    }
    const auto path = [&directory](std::size_t number, const char* suffix) {
        return directory.filePath(QString::number(number) + QString::fromLatin1(suffix));
    };
    for (std::size_t number = 0; number < cases().size(); ++number) {
        support::writeFile(path(number, ".hex"), cases()[number].file);
    }
    QVERIFY(run(tool.command, directory.path()));
    QStringList others;
    for (std::size_t number = 0; number < cases().size(); ++number) {
        const Case& row = cases()[number];
        const QString taken = path(number, ".hex.bin");
        const QByteArray verdict =
            QFile::exists(taken) ? runsOf(support::readFile(taken)) : refused;
        if (verdict != row.*tool.verdict) {
            others.append(QString::fromLatin1(row.name + (": " + verdict)));
        }
    }
    QCOMPARE(others.join(QLatin1Char('\n')), QString());
}

} // namespace

void TestMalformedRecords::ourVerdict_data()
{
    QTest::addColumn<int>("number");
    int number = 0;
    for (const Case& row : cases()) {
        QTest::newRow(row.name) << number++;
    }
}

void TestMalformedRecords::ourVerdict()
{
    QFETCH(int, number);
    const Case& row = cases().at(static_cast<std::size_t>(number));
    const QString line = QString::fromLatin1(row.line.constData(), row.line.size());
    QCOMPARE(cMyHexRecord().fromString(line), row.isLineRead);
    const QString path = m_directory.filePath(QStringLiteral("settings.mio"));
    support::writeFile(path, row.file);
    cMyMemoryArea area;
    QVERIFY(image::readSettingsFile(path, area));
    QCOMPARE(runsOf(allOf(area)), row.ours);
}

void TestMalformedRecords::verdictsOfSrecCat()
{
    const QString command = QStringLiteral("srec_cat $f -intel -o $f.bin -binary");
    compareWith(shellTool(QStringLiteral("srec_cat"), command, &Case::srecCat), m_wasSkipped);
}

void TestMalformedRecords::verdictsOfObjcopy()
{
    const QString command = QStringLiteral("objcopy -I ihex -O binary $f $f.bin");
    compareWith(shellTool(QStringLiteral("objcopy"), command, &Case::objcopy), m_wasSkipped);
}

void TestMalformedRecords::verdictsOfIntelhexForPython()
{
    compareWith(pythonTool(), m_wasSkipped);
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    TestMalformedRecords test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_malformedrecords.moc"
