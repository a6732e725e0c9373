// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/contrast.h"
#include "tests/support/offeredimage.h"
#include "tests/support/windowtest.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyleOption>
#include <QTabWidget>
#include <QTextDocument>
#include <QToolTip>

using support::child;
using support::contrast;

/// What the pages look like at the window's own size.
class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void captionsCanBeRead_data();
    void captionsCanBeRead();
    void quietRulesCanBeRead_data();
    void quietRulesCanBeRead();
    void thePageShowsItsGradient_data();
    void thePageShowsItsGradient();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void rulesFitBesideEachOther();
    void roomToSpareGoesToShortenedChoices();
    void listsShowTheirLongestChoice();
    void shortenedChoicesHaveAToolTip();
    void headingsStandOverTheirColumns();
    void headingsStayWhenTheRowsScroll();
    void inputsOfAFormHaveOneWidth();
    void arrowsAreDrawnOnceForEachPalette();

private:
    void show(int page)
    {
        m_window->show();
        child<QTabWidget>(*m_window, "tabWidget")->setCurrentIndex(page);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<MainWindow> m_window;
};

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x35, 0x35, 0x35), QColor(0x2A, 0x2A, 0x2A));
    palette.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    palette.setColor(QPalette::AlternateBase, QColor(0x2A, 0x2A, 0x2A));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(0xF0, 0xF0, 0xF0));
    }
    return palette;
}

/// What is painted behind a widget: its ancestors, without any other child of theirs.
QImage behind(const QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    QList<QWidget*> ancestors;
    for (QWidget* each = widget.parentWidget(); each != nullptr; each = each->parentWidget()) {
        ancestors.prepend(each);
    }
    for (QWidget* each : qAsConst(ancestors)) {
        const QPoint offset = widget.mapTo(each, QPoint(0, 0));
        auto* group = qobject_cast<QGroupBox*>(each);
        const QString title = group == nullptr ? QString() : group->title();
        if (group != nullptr) {
            group->setTitle(QString());
        }
        each->render(&painter, QPoint(0, 0), QRegion(QRect(offset, widget.size())),
                     each->isWindow() ? QWidget::DrawWindowBackground : QWidget::RenderFlags());
        if (group != nullptr) {
            group->setTitle(title);
        }
    }
    return image;
}

double leastContrast(const QColor& text, const QImage& background)
{
    double least = 21;
    for (int y = 0; y < background.height(); ++y) {
        for (int x = 0; x < background.width(); ++x) {
            least = std::min(least, contrast(text, background.pixelColor(x, y)));
        }
    }
    return least;
}

void palettes()
{
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<int>("page");
    for (int page = 0; page < 3; ++page) {
        QTest::addRow("light, page %d", page) << QApplication::palette() << page;
        QTest::addRow("dark, page %d", page) << darkPalette() << page;
    }
}

/// Gives the program a palette as long as it lives.
class WithPalette
{
public:
    explicit WithPalette(const QPalette& palette) : m_before(QApplication::palette())
    {
        QApplication::setPalette(palette);
    }
    ~WithPalette() { QApplication::setPalette(m_before); }
    Q_DISABLE_COPY_MOVE(WithPalette)

private:
    QPalette m_before;
};

} // namespace

void TestLook::init()
{
    m_window = std::make_unique<MainWindow>();
}

void TestLook::captionsCanBeRead_data()
{
    palettes();
}

void TestLook::captionsCanBeRead()
{
    QFETCH(QPalette, palette);
    QFETCH(int, page);
    const WithPalette with(palette);
    m_window = std::make_unique<MainWindow>();
    child<QComboBox>(*m_window, "par01Cb1")->setCurrentIndex(0);
    child<QComboBox>(*m_window, "tim1Cb1")->setCurrentIndex(0);
    show(page);
    const QWidget* shown = child<QTabWidget>(*m_window, "tabWidget")->currentWidget();
    int captions = 0;
    for (const QLabel* label : shown->findChildren<QLabel*>()) {
        if (label->isVisible() && !label->text().isEmpty()) {
            const QColor text = label->palette().color(label->foregroundRole());
            const double least = leastContrast(text, behind(*label));
            QVERIFY2(least >= 4.5, qPrintable(label->text() + QString::number(least)));
            ++captions;
        }
    }
    for (QGroupBox* group : shown->findChildren<QGroupBox*>()) {
        // The title lies on the group's own ground, which its first child shows.
        const auto* inner =
            group->findChild<QWidget*>(group->objectName() + QStringLiteral("Contents"));
        const double least =
            leastContrast(group->palette().color(QPalette::WindowText), behind(*inner));
        QVERIFY2(least >= 4.5, qPrintable(group->title() + QString::number(least)));
        ++captions;
    }
    QVERIFY(captions >= 8);
}

void TestLook::quietRulesCanBeRead_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QApplication::palette();
    QTest::newRow("dark") << darkPalette();
}

void TestLook::quietRulesCanBeRead()
{
    QFETCH(QPalette, palette);
    const WithPalette with(palette);
    m_window = std::make_unique<MainWindow>();
    show(2);
    // Every rule is "never": of a word, some points are painted in its full colour.
    for (const char* name : {"par01Cb1", "par02Cb1", "par02Cb4"}) {
        auto* cell = child<QWidget>(*m_window, name);
        const QImage image =
            cell->grab(QRect(2, 2, cell->width() / 2, cell->height() - 4)).toImage();
        const QImage ground = behind(*cell);
        double most = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                most = std::max(most, contrast(image.pixelColor(x, y), ground.pixelColor(0, 2)));
            }
        }
        QVERIFY2(most >= 4.5, qPrintable(QString::number(most)));
    }
}

void TestLook::thePageShowsItsGradient_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("parameters") << 1;
    QTest::newRow("messages") << 2;
}

void TestLook::thePageShowsItsGradient()
{
    QFETCH(int, page);
    show(page);
    QWidget* shown = child<QTabWidget>(*m_window, "tabWidget")->currentWidget();
    const QImage image = shown->grab().toImage();
    const int left = qGray(image.pixel(2, image.height() / 2));
    const int right = qGray(image.pixel(image.width() - 3, image.height() / 2));
    QVERIFY2(left + 30 < right || page == 1, "no gradient behind the panels");
    // On the page that scrolls the margin between the panels shows it, too.
    const int top = qGray(image.pixel(image.width() / 4, 2));
    QVERIFY2(left != right && top != right, "no gradient behind the panels");
}

void TestLook::nothingIsCutOff_data()
{
    palettes();
}

void TestLook::nothingIsCutOff()
{
    QFETCH(int, page);
    QRandomGenerator random(3006);
    support::load(*m_window, support::offeredImage(random));
    show(page);
    QCOMPARE(m_window->size(), QSize(1116, 761));
    const QWidget* shown = child<QTabWidget>(*m_window, "tabWidget")->currentWidget();
    for (const QLabel* label : shown->findChildren<QLabel*>()) {
        if (!label->isVisible()) {
            continue;
        }
        // Texts of a file may be as long as they like.
        const bool isForeign =
            label->objectName().startsWith(QLatin1String("lParam")) && label->buddy() == nullptr;
        QVERIFY2(isForeign || label->width() >= label->sizeHint().width(),
                 qPrintable(label->text()));
        QVERIFY2(label->height() >= label->fontMetrics().height(), qPrintable(label->text()));
        QVERIFY2(label->parentWidget()->rect().contains(label->geometry()),
                 qPrintable(label->text()));
    }
    for (const auto* spin : shown->findChildren<QAbstractSpinBox*>()) {
        const auto* line = spin->findChild<QLineEdit*>();
        const int needed = line->fontMetrics().horizontalAdvance(spin->text());
        QVERIFY2(line->width() >= needed, qPrintable(spin->objectName() + spin->text()));
        QVERIFY(spin->height() >= spin->fontMetrics().height());
    }
}

void TestLook::rulesFitBesideEachOther()
{
    show(2);
    const auto* scroll = child<QScrollArea>(*m_window, "messagesScroll");
    QCOMPARE(scroll->horizontalScrollBar()->maximum(), 0);
    // The shares at which the tests of short labels find every label unlike its neighbours.
    const QFontMetrics metrics = m_window->fontMetrics();
    for (const QComboBox* box : scroll->findChildren<QComboBox*>()) {
        int longest = 0;
        for (int row = 0; row < box->count(); ++row) {
            longest = std::max(longest, metrics.horizontalAdvance(box->itemText(row)));
        }
        constexpr int margins = 8;
        constexpr double leastShare = 0.58;
        QVERIFY2(box->width() - margins >= longest * leastShare - 1, qPrintable(box->objectName()));
        const QString end = box->objectName().right(3);
        if (end == QLatin1String("Cb3") || end == QLatin1String("Cb6")) {
            QVERIFY2(box->width() - margins >= longest, qPrintable(box->objectName()));
        }
    }
    show(1);
    QCOMPARE(child<QScrollArea>(*m_window, "parametersScroll")->horizontalScrollBar()->maximum(),
             0);
}

void TestLook::roomToSpareGoesToShortenedChoices()
{
    show(2);
    const auto widths = [this](const QByteArrayList& names) {
        QVector<int> all;
        for (const QByteArray& name : names) {
            all.append(child<QWidget>(*m_window, name.constData())->width());
        }
        return all;
    };
    const QByteArrayList whole = {"par01Cb3", "par01Sb1", "par01Cb6"};
    const QByteArrayList shortened = {"par01Cb1", "par01Cb2", "par01Cb4", "par01Cb5"};
    const QVector<int> wholeBefore = widths(whole);
    const QVector<int> shortenedBefore = widths(shortened);
    constexpr int more = 80;
    m_window->resize(m_window->width() + more, m_window->height());
    QTRY_VERIFY(widths(shortened) != shortenedBefore);
    QCOMPARE(widths(whole), wholeBefore);
    int gained = 0;
    for (int i = 0; i < shortened.size(); ++i) {
        gained += widths(shortened).at(i) - shortenedBefore.at(i);
    }
    QCOMPARE(gained, more);
}

void TestLook::listsShowTheirLongestChoice()
{
    show(2);
    for (const char* name : {"par01Cb1", "par01Cb2", "par01Cb4", "par01Cb5", "par01Cb6"}) {
        auto* box = child<QComboBox>(*m_window, name);
        box->showPopup();
        int longest = 0;
        for (int row = 0; row < box->count(); ++row) {
            longest =
                std::max(longest, box->view()->fontMetrics().horizontalAdvance(box->itemText(row)));
        }
        const int padding = 2 * box->view()->fontMetrics().height();
        QVERIFY2(box->view()->viewport()->width() >= longest + padding, name);
        box->hidePopup();
    }
}

void TestLook::shortenedChoicesHaveAToolTip()
{
    show(2);
    auto* box = child<QComboBox>(*m_window, "par01Cb5");
    const QString longest = QStringLiteral("(caption & value & point & unit)");
    box->setFixedWidth(150);
    QCoreApplication::processEvents();
    box->setCurrentIndex(box->findText(longest));
    QHelpEvent ask(QEvent::ToolTip, QPoint(5, 5), box->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(box, &ask);
    QVERIFY(Qt::mightBeRichText(QToolTip::text()));
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText(), longest);
    QToolTip::hideText();
}

void TestLook::headingsStandOverTheirColumns()
{
    for (const int page : {1, 2}) {
        show(page);
        const auto* grid = child<QGridLayout>(*m_window, page == 1 ? "timLayout" : "msgLayout");
        const auto* heading = child<QWidget>(*m_window, page == 1 ? "timHeading" : "msgHeading");
        QVector<const QLabel*> labels;
        for (const QLabel* label : heading->findChildren<QLabel*>()) {
            labels.append(label);
        }
        int next = 0;
        for (int column = 0; column < grid->columnCount(); ++column) {
            const QWidget* cell = grid->itemAtPosition(0, column)->widget();
            if (column == 5 && page == 2) {
                continue; // "say"
            }
            const QLabel* label = labels.at(next++);
            const bool isRight = label->alignment().testFlag(Qt::AlignRight);
            const int over =
                label->mapTo(m_window.get(), QPoint(isRight ? label->width() : 0, 0)).x();
            const int under =
                cell->mapTo(m_window.get(), QPoint(isRight ? cell->width() : 0, 0)).x();
            QCOMPARE(over, under);
        }
        QCOMPARE(next, labels.size());
        for (int i = 1; i < labels.size(); ++i) {
            // Texts side by side do not touch.
            const auto textOf = [](const QLabel& label) {
                QRect text(QPoint(), label.sizeHint());
                text.moveLeft(label.alignment().testFlag(Qt::AlignRight)
                                  ? label.geometry().right() + 1 - text.width()
                                  : label.x());
                return text;
            };
            QVERIFY2(textOf(*labels.at(i - 1)).right() < textOf(*labels.at(i)).left(),
                     qPrintable(labels.at(i)->text()));
        }
    }
}

void TestLook::headingsStayWhenTheRowsScroll()
{
    m_window->resize(700, 400);
    show(2);
    auto* scroll = child<QScrollArea>(*m_window, "messagesScroll");
    const auto* heading = child<QWidget>(*m_window, "msgHeading");
    const auto* value = heading->findChildren<QLabel*>().at(2);
    const auto* cell = child<QWidget>(*m_window, "par10Cb2");
    const auto x = [this](const QWidget& widget) {
        return widget.mapTo(m_window.get(), QPoint(0, 0)).x();
    };
    const int y = heading->mapTo(m_window.get(), QPoint(0, 0)).y();
    const int before = x(*value);
    scroll->verticalScrollBar()->setValue(200);
    scroll->horizontalScrollBar()->setValue(100);
    QCoreApplication::processEvents();
    QCOMPARE(heading->mapTo(m_window.get(), QPoint(0, 0)).y(), y);
    QCOMPARE(x(*value), before - 100);
    QCOMPARE(x(*value), x(*cell));
}

void TestLook::inputsOfAFormHaveOneWidth()
{
    show(1);
    QSet<int> parameters;
    for (const char* name : {"par13Sb", "par1Cb", "par2Cb", "par4Sb", "par9Cb", "par12Sb"}) {
        parameters.insert(child<QWidget>(*m_window, name)->width());
    }
    QCOMPARE(parameters.size(), 1);
    QVector<int> intervals;
    for (const char* name : {"lOkresA", "lOkresD", "lDystansE", "lDystansH"}) {
        intervals.append(child<QWidget>(*m_window, name)->width());
    }
    const auto [narrowest, widest] = std::minmax_element(intervals.begin(), intervals.end());
    QVERIFY(*widest - *narrowest <= 1); // an odd pixel goes to one of two columns
}

/// Notes the key of the palette that arrows are drawn by; styles keep their pictures by it.
class ArrowWatch : public QProxyStyle
{
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element == PE_IndicatorArrowDown) {
            m_keys.append(option->palette.cacheKey());
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    /// Forgets them.
    QVector<qint64> takeKeys() { return std::exchange(m_keys, {}); }

private:
    mutable QVector<qint64> m_keys;
};

void TestLook::arrowsAreDrawnOnceForEachPalette()
{
    auto* style = new ArrowWatch;
    style->setParent(m_window.get()); // which has it longer than the inputs
    auto* box = child<QComboBox>(*m_window, "par01Cb1");
    box->setStyle(style);
    show(2);
    style->takeKeys();
    const auto keyOfTwoPaintings = [&] {
        box->grab();
        box->grab();
        const QVector<qint64> keys = style->takeKeys();
        return keys.size() == 2 && keys.first() == keys.last() ? keys.first() : 0;
    };
    const qint64 before = keyOfTwoPaintings();
    QVERIFY(before != 0);
    box->setPalette(darkPalette());
    const qint64 after = keyOfTwoPaintings();
    QVERIFY(after != 0 && after != before);
}

MIOLKA_GUI_TEST_MAIN(TestLook)
#include "test_look.moc"
