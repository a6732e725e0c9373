// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/windowtest.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <memory>

using support::child;

/// What the start page calls the values that it shows, in Polish and in English.
class TestStartPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();
    void groups();
    void figures();
    void buttons();

private:
    std::unique_ptr<support::WithoutCatalogue> m_polish;
    std::unique_ptr<MainWindow> m_window;
};

namespace {

struct Text
{
    const char* polish;
    const char* english;
};

struct Value
{
    Text caption;
    const char* name;
};

struct Group
{
    const char* name;
    Text title;
    QVector<Value> values;
};

/// Top to bottom, the settings' group beside the others.
QVector<Group> expectedGroups()
{
    return {{"gbStatus",
             {"Status urządzenia", "Device status"},
             {{{"Miolka:", "Miolka:"}, "lMiolkaStatus"},
              {{"Połączenie:", "Connection:"}, "lMiolkaPort"},
              {{"Wielkość pamięci:", "Memory size:"}, "lMemoryAmount"},
              {{"Nr seryjny:", "Serial number:"}, "lSerialNumber"},
              {{"Wersja sprzętu:", "Hardware version:"}, "lHardwareVesrion"}}},
            {"gbSoftware",
             {"Oprogramowanie", "Software"},
             {{{"Wersja\noprogramowania:", "Firmware\nversion:"}, "lFirmwareVersion"},
              {{"Wersja\nbiblioteki dźwięków:", "Sound library\nversion:"}, "lVoiceVersion"},
              {{"Język:", "Language:"}, "lVoiceLang"}}},
            {"gbSettings",
             {"Nastawy", "Settings"},
             {{{"Wersja:", "Version:"}, "lParamVersion"},
              {{"Autor:", "Author:"}, "lParamAutor"},
              {{"Tytuł:", "Title:"}, "lParamTytul"},
              {{"Opis:", "Description:"}, "pteParamDesc"}}}};
}

QString chosen(const Text& text)
{
    QFETCH_GLOBAL(bool, isPolish);
    return QString::fromUtf8(isPolish ? text.polish : text.english);
}

/// The captions of a group and the objects beside them, row by row.
QStringList rowsOf(const QGroupBox& group)
{
    const auto* grid = group.findChild<QGridLayout*>();
    QStringList rows;
    for (int row = 0; row < grid->rowCount(); ++row) {
        const std::pair<QLayoutItem*, QLayoutItem*> items = {grid->itemAtPosition(row, 0),
                                                             grid->itemAtPosition(row, 1)};
        // What has no widget is the buttons, or room.
        if (items.first != nullptr && items.first->widget() != nullptr && items.second != nullptr) {
            rows.append(items.first->widget()->property("text").toString() + QLatin1Char(' ') +
                        items.second->widget()->objectName());
        }
    }
    return rows;
}

/// The title of the group that a widget lies in.
QString titleAround(const QWidget& widget)
{
    for (const QWidget* each = &widget; each != nullptr; each = each->parentWidget()) {
        if (const auto* group = qobject_cast<const QGroupBox*>(each)) {
            return group->title();
        }
    }
    return {};
}

} // namespace

void TestStartPage::initTestCase_data()
{
    QTest::addColumn<bool>("isPolish");
    QTest::newRow("Polish") << true;
    QTest::newRow("English") << false;
}

void TestStartPage::init()
{
    QFETCH_GLOBAL(bool, isPolish);
    if (isPolish) {
        m_polish = std::make_unique<support::WithoutCatalogue>();
    }
    m_window = std::make_unique<MainWindow>();
}

void TestStartPage::cleanup()
{
    m_window.reset();
    m_polish.reset();
}

void TestStartPage::groups()
{
    const auto* page = child<QWidget>(*m_window, "tabStart");
    for (const Group& group : expectedGroups()) {
        const auto* box = child<QGroupBox>(*m_window, group.name);
        QVERIFY(page->isAncestorOf(box));
        QCOMPARE(box->title(), chosen(group.title));
        QStringList rows;
        for (const Value& value : group.values) {
            rows.append(chosen(value.caption) + QLatin1Char(' ') + QLatin1String(value.name));
        }
        QCOMPARE(rowsOf(*box).join(QLatin1Char('|')), rows.join(QLatin1Char('|')));
    }
}

void TestStartPage::figures()
{
    const std::pair<const char*, const char*> expected[] = {{"Max Depth", "lmaxDepth"},
                                                            {"Dive Time", "lDiveTime"}};
    for (const auto& [title, name] : expected) {
        QCOMPARE(titleAround(*child<QLabel>(*m_window, name)), QLatin1String(title));
    }
}

void TestStartPage::buttons()
{
    auto* details = child<QPushButton>(*m_window, "pbDetails");
    auto* refresh = child<QPushButton>(*m_window, "pbGetStatus");
    QCOMPARE(details->text(), chosen({"Szczegóły", "Details"}));
    QCOMPARE(refresh->text(), chosen({"Odśwież status", "Refresh status"}));
    const auto* group = child<QGroupBox>(*m_window, "gbStatus");
    QCOMPARE(group->findChildren<QPushButton*>(), QList<QPushButton*>({details, refresh}));
}

MIOLKA_GUI_TEST_MAIN(TestStartPage)
#include "test_startpage.moc"
