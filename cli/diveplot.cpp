// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/diveplot.h"

#include "cli/plotlabels.h"
#include "cli/rehearsal.h"

#include <QPointF>
#include <QSet>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// In pixels.
constexpr double plotLeft = 84;
constexpr double plotWidth = 1000;
constexpr double plotHeight = 360;
constexpr double leastMargin = 28;
constexpr double lanesTop = 72;
constexpr double laneHeight = 16;
constexpr double laneGap = 12; ///< between the lowest lane and the surface
constexpr double tickLength = 5;
constexpr double noteHeight = 18;
constexpr double textRise = 4; ///< from the middle of small text to its base line

constexpr double centimetres = 100;   ///< in a metre
constexpr double milliseconds = 1000; ///< in a second

constexpr int longestTitle = 80;
constexpr int longestSubtitle = 120;

// Told apart by everyone, and in print without colours.
constexpr const char* ink = "#1a1a1a";
constexpr const char* faintInk = "#595959";
constexpr const char* grid = "#d9d9d9";
constexpr const char* leader = "#8c8c8c";
constexpr const char* water = "#e6f2f7";
constexpr const char* curve = "#0b5c7f";
constexpr const char* mark = "#d55e00";

constexpr std::array<double, 9> depthSteps = {0.5, 1, 2, 5, 10, 20, 50, 100, 200};
constexpr std::array<double, 14> timeSteps = {1,   2,   5,   10,   15,   30,   60,
                                              120, 300, 600, 1200, 1800, 3600, 7200};

QString number(double value)
{
    return QString::number(value, 'f', 1);
}

/// The least step that leaves no more parts than that.
template <std::size_t Count>
double stepOf(const std::array<double, Count>& steps, double extent, int parts)
{
    const auto found = std::find_if(steps.cbegin(), steps.cend(),
                                    [=](double step) { return extent <= step * parts; });
    return found == steps.cend() ? steps.back() : *found;
}

/// Draws one plot.
class Plot
{
public:
    explicit Plot(const cMyRehearsal& rehearsal)
        : m_rehearsal(rehearsal), m_depthStep(stepOf(depthSteps, rehearsal.maximumDepth(), 6)),
          m_deepest(std::max(1.0, std::ceil(rehearsal.maximumDepth() / m_depthStep)) * m_depthStep),
          m_labels(cli::placeLabels(rehearsal.messages(), pixelsPerSecond())), m_out(&m_picture)
    {
        for (const cMyPlotLabel& label : qAsConst(m_labels)) {
            m_lanes = std::max(m_lanes, label.lane + 1);
            m_margin = std::max(m_margin, label.x + label.width - plotWidth);
        }
    }

    QByteArray draw(const QString& title, const QString& subtitle);

private:
    [[nodiscard]] double pixelsPerSecond() const
    {
        return plotWidth / std::max(1.0, m_rehearsal.duration());
    }
    [[nodiscard]] double top() const { return lanesTop + m_lanes * laneHeight + laneGap; }
    [[nodiscard]] double bottom() const { return top() + plotHeight; }
    [[nodiscard]] double xOf(double time) const { return plotLeft + time * pixelsPerSecond(); }
    [[nodiscard]] double yOf(double depth) const
    {
        return top() + plotHeight * std::min(depth / m_deepest, 1.0);
    }
    [[nodiscard]] QString way() const;
    [[nodiscard]] QVector<QPointF> marks() const;
    [[nodiscard]] QStringList notes() const;

    void drawAxes();
    void drawWater(const QString& points);
    void drawWay(const QString& points);
    void drawMarks();
    void drawDots(const QVector<QPointF>& places, const char* radius, const char* colour);
    void drawLabels();
    void drawNotes();
    void line(double x1, double y1, double x2, double y2, const char* colour);
    void text(double x, double y, const QString& words, int size, const char* colour,
              const char* anchor = "start");

    const cMyRehearsal& m_rehearsal;
    double m_depthStep;
    double m_deepest; ///< on the axis, in m
    QVector<cMyPlotLabel> m_labels;
    int m_lanes = 0;
    double m_margin = leastMargin; ///< on the right
    QByteArray m_picture;
    QXmlStreamWriter m_out;
};

QByteArray Plot::draw(const QString& title, const QString& subtitle)
{
    constexpr double titleLine = 28;
    constexpr double subtitleLine = 50;
    constexpr int titleSize = 17;
    constexpr int subtitleSize = 13;
    constexpr double axisHeight = 52;
    const QString width = number(plotLeft + plotWidth + m_margin);
    const QString height =
        number(bottom() + axisHeight + noteHeight * static_cast<int>(notes().size()));
    m_out.setAutoFormatting(true);
    m_out.writeStartDocument();
    m_out.writeStartElement(QStringLiteral("svg"));
    m_out.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    m_out.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    m_out.writeAttribute(QStringLiteral("width"), width);
    m_out.writeAttribute(QStringLiteral("height"), height);
    m_out.writeAttribute(QStringLiteral("viewBox"), QStringLiteral("0 0 %1 %2").arg(width, height));
    m_out.writeAttribute(QStringLiteral("font-family"),
                         QStringLiteral("DejaVu Sans, Verdana, Arial, sans-serif"));
    m_out.writeTextElement(QStringLiteral("title"), cli::plotText(title, longestTitle));
    m_out.writeEmptyElement(QStringLiteral("rect"));
    m_out.writeAttribute(QStringLiteral("width"), width);
    m_out.writeAttribute(QStringLiteral("height"), height);
    m_out.writeAttribute(QStringLiteral("fill"), QStringLiteral("#ffffff"));
    text(plotLeft, titleLine, cli::plotText(title, longestTitle), titleSize, ink);
    text(plotLeft, subtitleLine, cli::plotText(subtitle, longestSubtitle), subtitleSize, faintInk);
    const QString points = way();
    drawWater(points);
    drawAxes();
    drawLabels();
    drawWay(points);
    drawMarks();
    drawNotes();
    m_out.writeEndDocument();
    return m_picture;
}

QString Plot::way() const
{
    QStringList coordinates;
    QPointF last;
    const QVector<cMyRehearsedDepth>& depths = m_rehearsal.depths();
    for (int i = 0; i < depths.size(); ++i) {
        const QPointF point(xOf(depths.at(i).time), yOf(depths.at(i).depth));
        const bool isAway = i == 0 || (point - last).manhattanLength() >= 1;
        if (isAway || i + 1 == depths.size()) {
            coordinates.append(number(point.x()) + QLatin1Char(',') + number(point.y()));
            last = point;
        }
    }
    return coordinates.join(QLatin1Char(' '));
}

void Plot::drawWater(const QString& points)
{
    m_out.writeEmptyElement(QStringLiteral("polygon"));
    m_out.writeAttribute(QStringLiteral("points"), QStringLiteral("%1,%2 %3 %4,%2")
                                                       .arg(number(plotLeft), number(top()), points,
                                                            number(xOf(m_rehearsal.duration()))));
    m_out.writeAttribute(QStringLiteral("fill"), QLatin1String(water));
}

void Plot::drawWay(const QString& points)
{
    m_out.writeEmptyElement(QStringLiteral("polyline"));
    m_out.writeAttribute(QStringLiteral("points"), points);
    m_out.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
    m_out.writeAttribute(QStringLiteral("stroke"), QLatin1String(curve));
    m_out.writeAttribute(QStringLiteral("stroke-width"), QStringLiteral("2"));
    m_out.writeAttribute(QStringLiteral("stroke-linejoin"), QStringLiteral("round"));
}

void Plot::drawAxes()
{
    constexpr int size = 12;
    constexpr double below = 20;
    constexpr double captionBelow = 40;
    constexpr int mostTimes = 12;
    const double right = plotLeft + plotWidth;
    for (int i = 0; i * m_depthStep <= m_deepest; ++i) {
        const double depth = i * m_depthStep;
        const double y = yOf(depth);
        line(plotLeft - tickLength, y, right, y, i == 0 ? ink : grid);
        text(plotLeft - 2 * tickLength, y + textRise,
             QString::number(depth, 'f', m_depthStep < 1 ? 1 : 0), size, ink, "end");
    }
    const double timeStep = stepOf(timeSteps, m_rehearsal.duration(), mostTimes);
    for (int i = 0; i * timeStep <= m_rehearsal.duration(); ++i) {
        const double x = xOf(i * timeStep);
        line(x, bottom(), x, bottom() + tickLength, ink);
        text(x, bottom() + below, cli::minutesAndSeconds(i * timeStep), size, ink, "middle");
    }
    line(plotLeft, top(), plotLeft, bottom(), ink);
    line(plotLeft, bottom(), right, bottom(), ink);
    text(plotLeft + plotWidth / 2, bottom() + captionBelow, QStringLiteral("Time (min:s)"), size,
         ink, "middle");
    text(plotLeft - 2 * tickLength, top() - laneGap, QStringLiteral("Depth (m)"), size, ink, "end");
}

void Plot::drawLabels()
{
    constexpr int size = 12;
    constexpr double behindLine = 4;
    double last = -1;
    for (const cMyPlotLabel& label : qAsConst(m_labels)) {
        const double x = plotLeft + label.x;
        const double base = top() - laneGap - label.lane * laneHeight;
        if (x != last) { // else the line from above comes by here
            line(x, base - laneHeight + textRise, x, yOf(label.depth), leader);
        }
        text(x + behindLine, base, label.text, size, ink);
        last = x;
    }
}

QVector<QPointF> Plot::marks() const
{
    QVector<QPointF> places;
    QSet<QPair<int, int>> taken; // what lies on another one is not seen
    for (const cMySpokenMessage& message : m_rehearsal.messages()) {
        const QPointF place(xOf(static_cast<double>(message.time) / milliseconds),
                            yOf(message.depth / centimetres));
        const QPair<int, int> pixel(qRound(place.x()), qRound(place.y()));
        if (!taken.contains(pixel)) {
            taken.insert(pixel);
            places.append(place);
        }
    }
    return places;
}

void Plot::drawMarks()
{
    // The rims first, or a row of dots would be a row of rims.
    const QVector<QPointF> places = marks();
    drawDots(places, "4.5", "#ffffff");
    drawDots(places, "3.5", mark);
}

void Plot::drawDots(const QVector<QPointF>& places, const char* radius, const char* colour)
{
    m_out.writeStartElement(QStringLiteral("g"));
    m_out.writeAttribute(QStringLiteral("fill"), QLatin1String(colour));
    for (const QPointF& place : places) {
        m_out.writeEmptyElement(QStringLiteral("circle"));
        m_out.writeAttribute(QStringLiteral("cx"), number(place.x()));
        m_out.writeAttribute(QStringLiteral("cy"), number(place.y()));
        m_out.writeAttribute(QStringLiteral("r"), QLatin1String(radius));
    }
    m_out.writeEndElement();
}

QStringList Plot::notes() const
{
    const auto count = m_rehearsal.messages().size();
    const auto left = count - m_labels.size();
    QStringList lines;
    if (count == 0) {
        lines.append(QStringLiteral("The device says nothing on this dive."));
    } else {
        lines.append(QStringLiteral("Each dot is a message; the number in front of its words is "
                                    "that of the rule."));
    }
    if (left > 0) {
        lines.append(
            QStringLiteral("%1 messages have their words here, and %2 more only their dots.")
                .arg(m_labels.size())
                .arg(left));
    }
    lines.append(QStringLiteral("Rules as the virtual device reads them, which is no promise of "
                                "what the real one says."));
    return lines;
}

void Plot::drawNotes()
{
    constexpr int size = 12;
    constexpr double below = 64;
    double y = bottom() + below;
    for (const QString& note : notes()) {
        text(plotLeft, y, note, size, faintInk);
        y += noteHeight;
    }
}

void Plot::line(double x1, double y1, double x2, double y2, const char* colour)
{
    m_out.writeEmptyElement(QStringLiteral("line"));
    m_out.writeAttribute(QStringLiteral("x1"), number(x1));
    m_out.writeAttribute(QStringLiteral("y1"), number(y1));
    m_out.writeAttribute(QStringLiteral("x2"), number(x2));
    m_out.writeAttribute(QStringLiteral("y2"), number(y2));
    m_out.writeAttribute(QStringLiteral("stroke"), QLatin1String(colour));
}

void Plot::text(double x, double y, const QString& words, int size, const char* colour,
                const char* anchor)
{
    m_out.writeStartElement(QStringLiteral("text"));
    m_out.writeAttribute(QStringLiteral("x"), number(x));
    m_out.writeAttribute(QStringLiteral("y"), number(y));
    m_out.writeAttribute(QStringLiteral("font-size"), QString::number(size));
    m_out.writeAttribute(QStringLiteral("fill"), QLatin1String(colour));
    m_out.writeAttribute(QStringLiteral("text-anchor"), QLatin1String(anchor));
    m_out.writeCharacters(words);
    m_out.writeEndElement();
}

} // namespace

namespace cli {

QByteArray drawDive(const cMyRehearsal& rehearsal, const QString& title, const QString& subtitle)
{
    return Plot(rehearsal).draw(title, subtitle);
}

QString minutesAndSeconds(double seconds)
{
    constexpr int secondsPerMinute = 60;
    const auto whole = static_cast<int>(seconds);
    return QStringLiteral("%1:%2")
        .arg(whole / secondsPerMinute)
        .arg(whole % secondsPerMinute, 2, 10, QLatin1Char('0'));
}

} // namespace cli
