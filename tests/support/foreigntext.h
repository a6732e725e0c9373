// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_FOREIGNTEXT_H
#define MIOLKA_TESTS_SUPPORT_FOREIGNTEXT_H

#include <QElapsedTimer>
#include <QLabel>
#include <QTextDocument>
#include <QtTest>

#include <algorithm>

/// Texts that come from a device, a file or a name and mean something to those who show texts.
namespace support {

/// A column "text" of them. They are in Latin-1, and what stands in one begins within its first 14
/// characters, since some fields take no more. The picture is a PipeTrap in the working directory.
inline void addForeignTexts()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("less than") << QStringLiteral("a < b");
    QTest::newRow("a picture") << QStringLiteral("<img src=pipe>");
    // Each takes twice as long to lay out as the one that it stands in.
    constexpr int depth = 18;
    QTest::newRow("nested tables") << QStringLiteral("<table><tr><td>").repeated(depth);
    QTest::newRow("entities") << QStringLiteral("&lt;b&gt; &amp;");
    QTest::newRow("mnemonics") << QStringLiteral("R&D && &Co");
    QTest::newRow("places") << QStringLiteral("%1 %L2 [*]%n");
    QTest::newRow("controls") << QStringLiteral("a\x01"
                                                "b\tc\x7F"
                                                "d\r");
    QTest::newRow("a mark of lengths") << QString::fromLatin1("long\x9Cshort");
    QTest::newRow("wide") << QString(511, QLatin1Char('W'));
}

/// A label of plain text that shows all of it. Failures name the label, since they lie in here.
inline void verifyLiteral(const QLabel& label, const QString& text)
{
    QVERIFY2(label.textFormat() == Qt::PlainText, qPrintable(label.objectName()));
    QVERIFY2(label.text().size() == text.size(), qPrintable(label.objectName()));
    // As wide as all of it; the measure itself would end at a mark of lengths.
    QString measured = text;
    measured.remove(QChar(0x9C)).remove(QLatin1Char('\t'));
    QVERIFY2(label.sizeHint().width() >= label.fontMetrics().horizontalAdvance(measured),
             qPrintable(label.objectName()));
}

/// How long it took until foreign texts were on the screen.
class Showing
{
public:
    Showing() { m_clock.start(); }

    /// Lets the window paint what it was given.
    void end(QWidget& window)
    {
        QCoreApplication::processEvents();
        window.grab();
        note(m_clock.elapsed());
    }

    /// The longest of all so far, in milliseconds.
    static qint64& longest()
    {
        static qint64 milliseconds = 0;
        return milliseconds;
    }

    static void report()
    {
        constexpr double aim = 100;
        qInfo("shown after %lld ms at most, %.2f of the aim", longest(),
              static_cast<double>(longest()) / aim);
    }

    /// Nothing that shows a text as it stands takes so long.
    static constexpr qint64 hang = 5000;

private:
    static void note(qint64 milliseconds) { longest() = std::max(longest(), milliseconds); }

    QElapsedTimer m_clock;
};

} // namespace support

#endif
