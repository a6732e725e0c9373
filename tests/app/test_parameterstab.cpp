// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/tablemodel.h"
#include "tests/support/offeredimage.h"
#include "tests/support/windowtest.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

using support::child;

/// The thirteen parameters, the periods and the distances, as a person edits them.
class TestParametersTab : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void captionsAndInputs_data();
    void captionsAndInputs();
    void groups_data();
    void groups();
    void linesBetweenTheRows();
    void theOptionTablesBelongToTheWindow();
    void numbersShowTheirRangeAndUnit_data();
    void numbersShowTheirRangeAndUnit();
    void defaultsAreShown();
    void anEditWritesItsFieldOnly_data();
    void anEditWritesItsFieldOnly();
    void choicesAreStored();
    void anUnknownRateStaysUntilAChoiceIsMade();
    void numbersOutOfRangeAreClamped_data();
    void numbersOutOfRangeAreClamped();
    void gravityFollowsThePlace();
    void gravityIsThatOfThePlaceWhateverWasShown();
    void truncatedNotRounded();
    void toolTips();
    void decimalsOfTheLocale_data();
    void decimalsOfTheLocale();
    void theHiddenFieldsReachTheStartPage();
    void theVersionInBytes();

private:
    [[nodiscard]] QAbstractSpinBox* spin(const QString& name) const
    {
        return child<QAbstractSpinBox>(*m_window, name);
    }

    [[nodiscard]] QDoubleSpinBox* number(const char* name) const
    {
        return child<QDoubleSpinBox>(*m_window, name);
    }

    [[nodiscard]] QComboBox* choice(const char* name) const
    {
        return child<QComboBox>(*m_window, name);
    }

    /// A window as it is without the English catalogue.
    [[nodiscard]] const MainWindow& polishWindow()
    {
        if (m_polish == nullptr) {
            const support::WithoutCatalogue without;
            m_polish = std::make_unique<MainWindow>();
        }
        return *m_polish;
    }

    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<MainWindow> m_polish;
};

namespace {

/// The default image with these bytes at that address.
QByteArray imageWith(int address, std::initializer_list<int> bytes)
{
    QByteArray image = support::templateImage();
    for (const int byte : bytes) {
        image[address++] = static_cast<char>(byte);
    }
    return image;
}

} // namespace

void TestParametersTab::init()
{
    if (m_window == nullptr) {
        m_window = std::make_unique<MainWindow>();
    }
    support::load(*m_window, support::templateImage());
}

void TestParametersTab::captionsAndInputs_data()
{
    QTest::addColumn<QString>("polish");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("type");
    const auto row = [](const char* name, const char* polish, const char* english,
                        const char* type) {
        QTest::newRow(name) << QString::fromUtf8(polish) << QString::fromUtf8(english)
                            << QString::fromLatin1(type);
    };
    const char* const bound = "cMyDoubleSpinBoxInt";
    const char* const list = "cMyComboBoxW2";
    row("par13Sb", "1. Głośność", "1. Speaker volume", "QSpinBox");
    row("par1Cb", "2. Częstotliwość próbkowania głębokości", "2. Depth sampling rate", list);
    row("par2Cb", "3. Czas przejścia w tryb uśpienia po wynurzeniu",
        "3. Time to suspend mode after surfacing", list);
    row("par3Cb", "4. Okres próbkowania głębokości w trybie uśpienia",
        "4. Depth sampling period in suspend mode", list);
    row("par4Sb", "5. Próg zanurzenia", "5. Dive start depth threshold", bound);
    row("par5Sb", "6. Próg wynurzenia", "6. Surfacing depth threshold", bound);
    row("par6Sb", "7. Próg rozpoczęcia wynurzania", "7. Ascent phase speed threshold", bound);
    row("par7Sb", "8. Próg rozpoczęcia pobytu na dnie", "8. Bottom phase speed threshold", bound);
    row("par8Sb", "9. Zasolenie wody", "9. Local salinity", bound);
    row("par9Cb", "10. Żródło temperatury do wyliczenia gęstości wody",
        "10. Temperature source for the water density", list);
    row("par10Sb", "11. Stała temperatura do wyliczenia gęstości wody",
        "11. Fixed temperature for the water density", bound);
    row("par11Sb", "12. Wysokość n.p.m.", "12. AMSL", "QDoubleSpinBox");
    row("par12Sb", "13. Szerokość geograficzna", "13. Latitude (N or S)", "QDoubleSpinBox");
    row("lOkresA", "Okres A", "Period A", bound);
    row("lOkresB", "Okres B", "Period B", bound);
    row("lOkresC", "Okres C", "Period C", bound);
    row("lOkresD", "Okres D", "Period D", bound);
    row("lDystansE", "Dystans E", "Distance E", bound);
    row("lDystansF", "Dystans F", "Distance F", bound);
    row("lDystansG", "Dystans G", "Distance G", bound);
    row("lDystansH", "Dystans H", "Distance H", bound);
    row("leAuthor", "Autor", "Author", "QLineEdit");
    row("leTitle", "Tytuł", "Title", "QLineEdit");
    row("pteDescription", "Opis", "Description", "cMyDescriptionEdit");
}

void TestParametersTab::captionsAndInputs()
{
    QFETCH(QString, polish);
    QFETCH(QString, english);
    QFETCH(QString, type);
    const auto captionIn = [](const MainWindow& window) {
        auto* input = child<QWidget>(window, QTest::currentDataTag());
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            if (label->buddy() == input) {
                return label->text();
            }
        }
        return QString();
    };
    QCOMPARE(captionIn(*m_window), english);
    auto* input = child<QWidget>(*m_window, QTest::currentDataTag());
    QCOMPARE(QString::fromLatin1(input->metaObject()->className()), type);
    QCOMPARE(input->accessibleName(), english);
    QCOMPARE(captionIn(polishWindow()), polish);
    QCOMPARE(child<QWidget>(polishWindow(), QTest::currentDataTag())->accessibleName(), polish);
}

void TestParametersTab::groups_data()
{
    QTest::addColumn<QString>("polish");
    QTest::addColumn<QString>("english");
    const auto row = [](const char* name, const char* polish, const char* english) {
        QTest::newRow(name) << QString::fromUtf8(polish) << QString::fromLatin1(english);
    };
    row("gbTimers", "Reguły timerów", "Timers formulas");
    row("gbPeriods", "Okresy komunikatów", "Message intervals");
    row("gbParameters", "Parametry", "Parameters");
    row("gbDescription", "Informacje", "Information");
}

void TestParametersTab::groups()
{
    const auto titleIn = [](const MainWindow& window) {
        return child<QGroupBox>(window, QTest::currentDataTag())->title();
    };
    QTEST(titleIn(*m_window), "english");
    QTEST(titleIn(polishWindow()), "polish");
}

void TestParametersTab::linesBetweenTheRows()
{
    // Lines follow rows 1, 4 and 8.
    const auto* form = child<QFormLayout>(*m_window, "parametersForm");
    QString rows;
    for (int row = 0; row < form->rowCount(); ++row) {
        const QLayoutItem* item = form->itemAt(row, QFormLayout::SpanningRole);
        rows += QLatin1Char(item == nullptr ? 'x' : '-');
    }
    QCOMPARE(rows, QStringLiteral("x-xxx-xxxx-xxxxx"));
}

void TestParametersTab::theOptionTablesBelongToTheWindow()
{
    // Four of the parameters, four of the timer rules, six of the message rules.
    QCOMPARE(m_window->findChildren<cMyTableModel*>(QString(), Qt::FindDirectChildrenOnly).size(),
             4 + 4 + 6);
}

void TestParametersTab::numbersShowTheirRangeAndUnit_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("suffix");
    const auto row = [](const char* name, double minimum, double maximum, int decimals,
                        const char* suffix) {
        QTest::newRow(name) << minimum << maximum << decimals << QString::fromUtf8(suffix);
    };
    row("par4Sb", 5, 255, 0, " [cm]");
    row("par5Sb", 5, 250, 0, " [cm]");
    row("par6Sb", -200, 0, 0, " [cm/s]");
    row("par7Sb", -100, 100, 0, " [cm/s]");
    row("par8Sb", 0, 100, 0, " [‰]");
    row("par10Sb", 0, 60, 1, " [°C]");
    row("par11Sb", -1000, 10000, 2, " [m]");
    row("par12Sb", 0, 90, 2, " [°]");
    row("lOkresA", 1, 240, 0, " [s]");
    row("lOkresB", 1, 240, 0, " [s]");
    row("lOkresC", 1, 240, 0, " [s]");
    row("lOkresD", 1, 240, 0, " [s]");
    row("lDystansE", 0, 99.99, 2, " [m]");
    row("lDystansF", 0, 99.99, 2, " [m]");
    row("lDystansG", 0, 99.99, 2, " [m]");
    row("lDystansH", 0, 99.99, 2, " [m]");
}

void TestParametersTab::numbersShowTheirRangeAndUnit()
{
    const QDoubleSpinBox* input = number(QTest::currentDataTag());
    QTEST(input->minimum(), "minimum");
    QTEST(input->maximum(), "maximum");
    QTEST(input->decimals(), "decimals");
    QTEST(input->suffix(), "suffix");
    const auto* volume = child<QSpinBox>(*m_window, "par13Sb");
    QCOMPARE(volume->minimum(), -57);
    QCOMPARE(volume->maximum(), 6);
    QCOMPARE(volume->suffix(), QStringLiteral(" [dB]"));
}

void TestParametersTab::defaultsAreShown()
{
    QStringList shown;
    for (const char* name : {"par13Sb", "par4Sb", "par5Sb", "par6Sb", "par7Sb", "par8Sb", "par10Sb",
                             "par11Sb", "par12Sb", "lOkresA", "lOkresD", "lDystansE"}) {
        shown << spin(QString::fromLatin1(name))->text();
    }
    QCOMPARE(shown.join(QLatin1Char('|')),
             QString::fromUtf8("-5 [dB]|100 [cm]|50 [cm]|-50 [cm/s]|-10 [cm/s]|0 [‰]|0.0 [°C]|0.00 "
                               "[m]|45.00 [°]|3 [s]|30 [s]|0.00 [m]"));
    QCOMPARE(choice("par1Cb")->currentText(), QStringLiteral("1 [Hz]"));
    QCOMPARE(choice("par2Cb")->currentText(), QStringLiteral("1 [h]"));
    QCOMPARE(choice("par3Cb")->currentText(), QStringLiteral("2 [s]"));
    QCOMPARE(choice("par9Cb")->currentText(), QStringLiteral("Min"));
}

void TestParametersTab::anEditWritesItsFieldOnly_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("changes");
    const auto row = [](const char* name, const char* typed, const char* changes) {
        QTest::newRow(name) << QString::fromLatin1(typed) << QString::fromLatin1(changes);
    };
    row("par13Sb", "6", "129:fb->06");
    row("par4Sb", "255", "136:64->ff");
    row("par5Sb", "40", "138:32->28");
    row("par6Sb", "-200", "144:ce->38");
    row("par7Sb", "20", "146:f6->14 147:ff->00");
    row("par8Sb", "35", "152:00->23");
    row("par10Sb", "12.5", "156:00->7d");
    row("par11Sb", "-200", "158:84->86 220:00->38 221:00->ff");
    row("par12Sb", "0", "158:84->30 222:2d->00");
    row("lOkresA", "240", "240:03->f0");
    row("lOkresB", "6", "241:05->06");
    row("lOkresC", "16", "242:0f->10");
    row("lOkresD", "31", "243:1e->1f");
    row("lDystansE", "99.99", "248:00->0f 249:00->27");
    row("lDystansF", "1", "250:00->64");
    row("lDystansG", "2.56", "253:00->01");
    row("lDystansH", "0.01", "254:00->01");
}

void TestParametersTab::anEditWritesItsFieldOnly()
{
    QFETCH(QString, typed);
    m_window->show();
    const QByteArray before = support::imageOf(*m_window);
    QAbstractSpinBox* input = spin(QString::fromLatin1(QTest::currentDataTag()));
    input->setFocus();
    input->selectAll();
    QTest::keyClicks(input, typed);
    QTest::keyClick(input, Qt::Key_Return);
    QTEST(support::differences(before, support::imageOf(*m_window)), "changes");
}

void TestParametersTab::choicesAreStored()
{
    const QByteArray before = support::imageOf(*m_window);
    choice("par1Cb")->setCurrentIndex(5);
    choice("par2Cb")->setCurrentIndex(6);
    choice("par3Cb")->setCurrentIndex(0);
    choice("par9Cb")->setCurrentIndex(3);
    QCOMPARE(support::differences(before, support::imageOf(*m_window)),
             QStringLiteral("128:96->0f 130:10->c0 131:0e->a8 132:06->05 154:01->03"));
}

void TestParametersTab::anUnknownRateStaysUntilAChoiceIsMade()
{
    choice("par1Cb")->setCurrentIndex(2);
    const QByteArray image = imageWith(128, {100});
    support::load(*m_window, image);
    QCOMPARE(choice("par1Cb")->currentText(), QStringLiteral("3 [Hz]"));
    QCOMPARE(support::imageOf(*m_window), image);
    choice("par1Cb")->setCurrentIndex(1);
    QCOMPARE(support::differences(image, support::imageOf(*m_window)),
             QStringLiteral("128:64->4b"));
}

void TestParametersTab::numbersOutOfRangeAreClamped_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("changes");
    const auto row = [](const char* name, const QByteArray& image, const char* input,
                        const char* shown, const char* changes) {
        QTest::newRow(name) << image << QString::fromLatin1(input) << QString::fromUtf8(shown)
                            << QString::fromLatin1(changes);
    };
    row("volume in range", imageWith(129, {0xFB}), "par13Sb", "-5 [dB]", "");
    row("volume too low", imageWith(129, {0x80}), "par13Sb", "-57 [dB]", "129:80->c7");
    row("volume too high", imageWith(129, {0x7F}), "par13Sb", "6 [dB]", "129:7f->06");
    row("dive threshold", imageWith(136, {4}), "par4Sb", "5 [cm]", "136:04->05");
    row("surfacing threshold", imageWith(138, {251}), "par5Sb", "250 [cm]", "138:fb->fa");
    row("ascent threshold", imageWith(144, {1, 0}), "par6Sb", "0 [cm/s]", "144:01->00");
    row("bottom threshold", imageWith(146, {0, 0x80}), "par7Sb", "-100 [cm/s]",
        "146:00->9c 147:80->ff");
    row("salinity", imageWith(152, {255}), "par8Sb", "100 [‰]", "152:ff->64");
    row("temperature", imageWith(156, {0x59, 0x02}), "par10Sb", "60.0 [°C]", "156:59->58");
    row("altitude with its gravity", imageWith(220, {0x11, 0x27}), "par11Sb", "10000.00 [m]",
        "158:84->1f 220:11->10");
    row("latitude with its gravity", imageWith(222, {91}), "par12Sb", "90.00 [°]",
        "158:84->da 222:5b->5a");
    row("period", imageWith(241, {0}), "lOkresB", "1 [s]", "241:00->01");
    row("period too long", imageWith(243, {241}), "lOkresD", "240 [s]", "243:f1->f0");
    row("greatest distance", imageWith(248, {0x0F, 0x27}), "lDystansE", "99.99 [m]", "");
    row("distance too great", imageWith(248, {0x10, 0x27}), "lDystansE", "99.99 [m]", "248:10->0f");
    row("negative distance", imageWith(254, {0xF0, 0xD8}), "lDystansH", "0.00 [m]",
        "254:f0->00 255:d8->00");
}

void TestParametersTab::numbersOutOfRangeAreClamped()
{
    QFETCH(QByteArray, image);
    QFETCH(QString, input);
    QFETCH(QString, changes);
    QRandomGenerator random(3003);
    // Whatever was shown before, and when it is loaded once more.
    for (const QByteArray& before :
         {support::templateImage(), support::offeredImage(random), image}) {
        support::load(*m_window, before);
        support::load(*m_window, image);
        QTEST(spin(input)->text(), "shown");
        QCOMPARE(support::differences(image, support::imageOf(*m_window)), changes);
    }
}

void TestParametersTab::gravityFollowsThePlace()
{
    number("par12Sb")->setValue(0);
    QCOMPARE(support::imageOf(*m_window).mid(158, 2), QByteArray("\x30\x7D"));
    QCOMPARE(support::imageOf(*m_window).at(222), '\0');
    number("par12Sb")->setValue(90);
    QCOMPARE(support::imageOf(*m_window).mid(158, 2), QByteArray("\xDA\x7D"));
    number("par11Sb")->setValue(10000);
    QCOMPARE(support::imageOf(*m_window).mid(158, 2), QByteArray("\x74\x7D"));
}

void TestParametersTab::gravityIsThatOfThePlaceWhateverWasShown()
{
    const QByteArray wrong = imageWith(158, {1, 2});
    support::load(*m_window, wrong);
    QCOMPARE(support::imageOf(*m_window), support::templateImage());
    support::load(*m_window, wrong);
    QCOMPARE(support::imageOf(*m_window), support::templateImage());
}

void TestParametersTab::truncatedNotRounded()
{
    number("par11Sb")->setValue(99.9);
    number("par12Sb")->setValue(44.9);
    QCOMPARE(support::imageOf(*m_window).mid(220, 3), QByteArray("\x63\x00\x2C", 3));
    number("par11Sb")->setValue(-99.9);
    QCOMPARE(support::imageOf(*m_window).mid(220, 2), QByteArray("\x9D\xFF"));
    // Once it is typed, the place and its gravity are those that are stored.
    m_window->show();
    QAbstractSpinBox* latitude = spin(QStringLiteral("par12Sb"));
    latitude->setFocus();
    latitude->selectAll();
    QTest::keyClicks(latitude, QStringLiteral("0.9"));
    QTest::keyClick(latitude, Qt::Key_Return);
    number("par11Sb")->setValue(0);
    QCOMPARE(latitude->text(), QString::fromUtf8("0.00 [°]"));
    QCOMPARE(support::imageOf(*m_window).mid(158, 2), QByteArray("\x30\x7D"));
    QCOMPARE(support::imageOf(*m_window).at(222), '\0');
    m_window->param13Changed(-57);
    QCOMPARE(support::imageOf(*m_window).at(129), '\xC7');
}

void TestParametersTab::toolTips()
{
    QCOMPARE(number("par10Sb")->toolTip(), QStringLiteral("-10.0 - 100.0"));
    QCOMPARE(number("par4Sb")->toolTip(), number("par5Sb")->toolTip());
    const QString tip = child<QWidget>(polishWindow(), "par4Sb")->toolTip();
    QCOMPARE(tip.count(QStringLiteral("<p align=\"justify\">")), 3);
    QCOMPARE(tip.count(QStringLiteral("font-size:10pt")), 3);
    for (const char* paragraph :
         {"Próg zanurzenia powinien być co najmniej 10cm większy od progu wynurzenia.",
          "Małe wartości (poniżej 50cm) mogą powodować problemy związane z transportem Miolki "
          "(nieoczekiwane wejście i pozostanie w trybie nurkowania).",
          "Powrót po podłączeniu USB lub manewrze &quot;sztucznego wynurzenia&quot; (szczegóły w "
          "instrukcji)."}) {
        QVERIFY2(tip.contains(QString::fromUtf8(paragraph)), paragraph);
    }
}

void TestParametersTab::decimalsOfTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("typed");
    QTest::newRow("C") << QLocale::c() << QStringLiteral("12.5");
    QTest::newRow("pl_PL") << QLocale(QLocale::Polish, QLocale::Poland) << QStringLiteral("12,5");
}

void TestParametersTab::decimalsOfTheLocale()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, typed);
    const QLocale before;
    QLocale::setDefault(locale);
    MainWindow window;
    window.show();
    for (const char* name : {"par10Sb", "lDystansE"}) {
        auto* input = child<QAbstractSpinBox>(window, name);
        input->setFocus();
        input->selectAll();
        QTest::keyClicks(input, typed);
    }
    QLocale::setDefault(before);
    QCOMPARE(support::imageOf(window).mid(156, 2), QByteArray("\x7D\x00", 2));
    QCOMPARE(support::imageOf(window).mid(248, 2), QByteArray("\xE2\x04"));
}

void TestParametersTab::theHiddenFieldsReachTheStartPage()
{
    child<QLineEdit>(*m_window, "lsetDiveTime")->setText(QStringLiteral("12:34"));
    child<QLineEdit>(*m_window, "lsetMaxDepth")->setText(QStringLiteral("<b>30 m</b>"));
    QCOMPARE(child<QLabel>(*m_window, "lDiveTime")->text(), QStringLiteral("12:34"));
    const auto* depth = child<QLabel>(*m_window, "lmaxDepth");
    QCOMPARE(depth->text(), QStringLiteral("<b>30 m</b>"));
    QCOMPARE(depth->textFormat(), Qt::PlainText);
}

void TestParametersTab::theVersionInBytes()
{
    QCOMPARE(m_window->parseSettingsVersion(), (QVector<quint8>{1, 0, 4, 0}));
}

MIOLKA_GUI_TEST_MAIN(TestParametersTab)
#include "test_parameterstab.moc"
