// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"
#include "cli/system/interruption.h"
#include "cli/xmlmarkup.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

constexpr int deepestNesting = 100;
constexpr int mostAttributes = 256;    ///< of one element
constexpr double zeroCelsius = 273.15; ///< in kelvin

/// "12.3 m"; the unit may be missing.
std::optional<double> measure(const QString& text, const char* unit)
{
    QString number = text.trimmed();
    if (number.endsWith(QLatin1String(unit))) {
        number.chop(static_cast<int>(qstrlen(unit)));
    }
    bool isValid = false;
    const double value = number.toDouble(&isValid);
    return isValid ? std::optional<double>(value) : std::nullopt;
}

/// "1:30 min" in s; with hours in front, too.
std::optional<double> minutes(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A\\s*(?:(\\d{1,6}):)?(\\d{1,6}):(\\d{1,2})\\s*(?:min)?\\s*\\z"));
    constexpr int secondsPerMinute = 60;
    constexpr int minutesPerHour = 60;
    const auto match = form.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const double whole =
        match.captured(1).toDouble() * minutesPerHour + match.captured(2).toDouble();
    return whole * secondsPerMinute + match.captured(3).toDouble();
}

/// Reads one dive of a log, and counts all.
class LogReader
{
public:
    LogReader(const QByteArray& contents, QString file, int dive)
        : m_xml(contents), m_file(std::move(file)), m_wanted(dive)
    {
    }

    [[nodiscard]] cMyOutcome read(cMyDiveLog& log);

private:
    enum class Format { Unknown, Subsurface, Uddf };

    void take(QXmlStreamReader::TokenType token);
    void startElement();
    void endElement();
    void chooseFormat();
    void takeSample();
    void takeWaypointValue();
    void takeTemperature(double celsius);
    void addPoint();

    /// Ends the reading with what is wrong at this place.
    void fail(const QString& why) { m_xml.raiseError(why); }
    void failValue(const char* what, const QString& text, const char* example);
    [[nodiscard]] bool isParent(const char* name) const;
    [[nodiscard]] cMyOutcome failure(const QString& why) const;

    QXmlStreamReader m_xml;
    QString m_file;
    int m_wanted;
    int m_dives = 0;
    Format m_format = Format::Unknown;
    QStringList m_open;            ///< names of the elements around this place
    bool m_isSecondRecord = false; ///< of the same dive, by another device
    std::optional<double> m_time;  ///< of the point at hand
    cMyProfilePoint m_point;       ///< what it does not say is as it was before
    int m_strangeTemperatures = 0;
    cMyDiveProfile m_profile;
};

cMyOutcome LogReader::failure(const QString& why) const
{
    return {cli::ExitStatus::BadFile,
            {QStringLiteral("%1:%2: %3").arg(m_file).arg(m_xml.lineNumber()).arg(why)}};
}

void LogReader::failValue(const char* what, const QString& text, const char* example)
{
    constexpr int shownLength = 40;
    fail(QStringLiteral("the %1 \"%2\" is not understood, which should look like \"%3\"")
             .arg(QLatin1String(what), text.left(shownLength), QLatin1String(example)));
}

bool LogReader::isParent(const char* name) const
{
    return !m_open.isEmpty() && m_open.last() == QLatin1String(name);
}

cMyOutcome LogReader::read(cMyDiveLog& log)
{
    while (!m_xml.atEnd()) {
        take(m_xml.readNext());
        if (cli::isInterrupted()) {
            return {cli::ExitStatus::Cancelled, {QStringLiteral("cancelled")}};
        }
    }
    if (m_xml.hasError()) {
        return failure(m_xml.errorString());
    }
    if (m_dives < m_wanted) {
        return failure(
            QStringLiteral("there is no dive %1 (dives: %2)").arg(m_wanted).arg(m_dives));
    }
    const QString fault = m_profile.fault();
    if (!fault.isEmpty()) {
        return failure(QStringLiteral("dive %1: %2").arg(m_wanted).arg(fault));
    }
    log.profile = m_profile;
    log.dive = m_wanted;
    log.dives = m_dives;
    log.strangeTemperatures = m_strangeTemperatures;
    return {};
}

void LogReader::take(QXmlStreamReader::TokenType token)
{
    if (token == QXmlStreamReader::DTD && !m_xml.entityDeclarations().isEmpty()) {
        fail(QStringLiteral("entities of its own have no place in a log of dives"));
    } else if (token == QXmlStreamReader::StartElement) {
        startElement();
    } else if (token == QXmlStreamReader::EndElement) {
        endElement();
    }
}

void LogReader::startElement()
{
    const QString name = m_xml.name().toString();
    if (m_open.isEmpty()) {
        chooseFormat();
    }
    if (m_open.size() == deepestNesting) {
        fail(QStringLiteral("elements are nested more than %1 deep").arg(deepestNesting));
        return;
    }
    if (m_xml.attributes().size() + m_xml.namespaceDeclarations().size() > mostAttributes) {
        fail(QStringLiteral("an element has more than %1 attributes").arg(mostAttributes));
        return;
    }
    const bool isOfDive = m_dives == m_wanted && m_open.contains(QLatin1String("dive"));
    if (name == QLatin1String("dive")) {
        ++m_dives;
    } else if (isOfDive && name == QLatin1String("divecomputer")) {
        m_isSecondRecord = !m_profile.points().isEmpty();
    } else if (isOfDive && m_format == Format::Subsurface && name == QLatin1String("sample")) {
        takeSample();
    } else if (isOfDive && m_format == Format::Uddf && isParent("waypoint")) {
        takeWaypointValue();
        return; // with its end
    }
    m_open.append(name);
}

void LogReader::endElement()
{
    if (m_format == Format::Uddf && isParent("waypoint") && m_dives == m_wanted &&
        m_open.contains(QLatin1String("dive"))) {
        addPoint();
    }
    if (!m_open.isEmpty()) {
        m_open.removeLast();
    }
}

void LogReader::chooseFormat()
{
    const QString root = m_xml.name().toString();
    if (root == QLatin1String("divelog")) {
        m_format = Format::Subsurface;
    } else if (root == QLatin1String("uddf")) {
        m_format = Format::Uddf;
    } else {
        constexpr int shownLength = 40;
        fail(
            QStringLiteral("the file begins with <%1>, and a log of dives with <divelog> or <uddf>")
                .arg(root.left(shownLength)));
    }
}

void LogReader::takeSample()
{
    if (m_isSecondRecord) {
        return;
    }
    const QXmlStreamAttributes attributes = m_xml.attributes();
    const QString time = attributes.value(QLatin1String("time")).toString();
    m_time = minutes(time);
    if (!m_time) {
        failValue("time of a sample", time, "1:30 min");
        return;
    }
    if (attributes.hasAttribute(QLatin1String("depth"))) {
        const QString text = attributes.value(QLatin1String("depth")).toString();
        const auto depth = measure(text, "m");
        if (!depth) {
            failValue("depth of a sample", text, "12.3 m");
            return;
        }
        m_point.depth = *depth;
    }
    if (attributes.hasAttribute(QLatin1String("temp"))) {
        const QString text = attributes.value(QLatin1String("temp")).toString();
        const auto temperature = measure(text, "C");
        if (!temperature) {
            failValue("temperature of a sample", text, "12.3 C");
            return;
        }
        takeTemperature(*temperature);
    }
    addPoint();
}

void LogReader::takeWaypointValue()
{
    const QString name = m_xml.name().toString();
    const bool isDepth = name == QLatin1String("depth");
    const bool isTime = name == QLatin1String("divetime");
    if (!isDepth && !isTime && name != QLatin1String("temperature")) {
        m_xml.skipCurrentElement();
        return;
    }
    const QString text = m_xml.readElementText();
    if (m_xml.hasError()) {
        return;
    }
    const auto number = measure(text, "");
    if (!number) {
        failValue(isDepth  ? "depth of a waypoint"
                  : isTime ? "time of a waypoint"
                           : "temperature of a waypoint",
                  text, "12.3");
    } else if (isDepth) {
        m_point.depth = *number;
    } else if (isTime) {
        m_time = *number;
    } else {
        takeTemperature(*number - zeroCelsius);
    }
}

void LogReader::takeTemperature(double celsius)
{
    if (cMyDiveProfile::isWarmthOfWater(celsius)) {
        m_point.temperature = celsius;
    } else {
        ++m_strangeTemperatures;
    }
}

void LogReader::addPoint()
{
    if (!m_time) {
        fail(QStringLiteral("a waypoint has no <divetime>"));
        return;
    }
    m_point.time = *m_time;
    m_time.reset();
    const QString fault = m_profile.add(m_point);
    if (!fault.isEmpty()) {
        fail(fault);
    }
}

} // namespace

namespace cli {

cMyOutcome parseDiveXml(const QByteArray& contents, const QString& file, int dive, cMyDiveLog& log)
{
    const cMyMarkupFault markup = markupFault(contents);
    if (!markup.reason.isEmpty()) {
        return {ExitStatus::BadFile,
                {QStringLiteral("%1:%2: %3").arg(file).arg(markup.line).arg(markup.reason)}};
    }
    return LogReader(contents, file, dive).read(log);
}

} // namespace cli
