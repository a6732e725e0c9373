// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_MANUALEXAMPLE_H
#define MIOLKA_TESTS_EMULATOR_MANUALEXAMPLE_H

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

/// The worked examples of the manual, as its readers have them before their eyes.
namespace support {

/// The cells of one row of a table.
using Cells = QStringList;

/// For so long, the slider of a simulation stands at this speed.
struct DivePart
{
    int seconds = 0;
    int speed = 0; ///< in cm/s, positive downwards
};

/// One section of the chapter.
struct ManualExample
{
    QString name; ///< of its settings file, without the extension
    QVector<Cells> settings;
    QVector<Cells> timerRules;
    QVector<Cells> messageRules;
    QVector<DivePart> dive;
    QStringList heard;
};

/// Takes the lines of a section one after another.
class ManualExampleReader
{
public:
    explicit ManualExampleReader(const QString& section)
    {
        for (const QString& line : section.split(QLatin1Char('\n'))) {
            take(line);
        }
    }

    [[nodiscard]] const ManualExample& example() const { return m_example; }

private:
    void take(const QString& line)
    {
        static const QRegularExpression file(QStringLiteral("^File: `([a-z0-9-]+)\\.mio`$"));
        const auto named = file.match(line);
        if (named.hasMatch()) {
            m_example.name = named.captured(1);
        }
        if (line.startsWith(QLatin1String("```"))) {
            m_block = line.mid(3);
        } else if (m_block == QLatin1String("dive")) {
            takeDive(line);
        } else if (m_block == QLatin1String("heard")) {
            m_example.heard += line;
        }
        if (line.startsWith(QLatin1Char('|'))) {
            takeRow(line);
        } else {
            m_table = nullptr;
        }
    }

    void takeDive(const QString& line)
    {
        static const QRegularExpression part(
            QStringLiteral("^(\\d+) s at (-?\\d+)\\.(\\d\\d) m/s$"));
        const auto match = part.match(line);
        if (!match.hasMatch()) {
            qFatal("no part of a dive: %s", qPrintable(line));
        }
        const int speed = (match.captured(2) + match.captured(3)).toInt();
        m_example.dive.append({match.captured(1).toInt(), speed});
    }

    void takeRow(const QString& line)
    {
        Cells cells;
        for (const QString& cell : line.mid(1, line.size() - 2).split(QLatin1Char('|'))) {
            cells += cell.trimmed();
        }
        if (m_table == nullptr) {
            const bool isOfTimers = cells.contains(QLatin1String("Action"));
            m_table = cells.first() == QLatin1String("Setting") ? &m_example.settings
                      : isOfTimers                              ? &m_example.timerRules
                                                                : &m_example.messageRules;
        } else if (!cells.first().startsWith(QLatin1String("--"))) {
            m_table->append(cells);
        }
    }

    ManualExample m_example;
    QString m_block;
    QVector<Cells>* m_table = nullptr;
};

/// Every section of the chapter that names a settings file.
inline QVector<ManualExample> manualExamples()
{
    QFile chapter(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/manual/chapters/09-examples.md"));
    if (!chapter.open(QIODevice::ReadOnly)) {
        qFatal("the chapter of the examples is not there");
    }
    QVector<ManualExample> examples;
    const QString text = QString::fromUtf8(chapter.readAll());
    for (const QString& section : text.split(QLatin1String("\n## "))) {
        const ManualExample example = ManualExampleReader(section).example();
        if (!example.name.isEmpty()) {
            examples.append(example);
        }
    }
    return examples;
}

} // namespace support

#endif
