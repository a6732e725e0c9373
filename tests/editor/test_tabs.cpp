// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/imagegate.h"
#include "editor/parameterstab.h"
#include "editor/rulegrid.h"
#include "editor/ruleheading.h"
#include "editor/rulerows.h"
#include "tests/support/guitest.h"
#include "tests/support/offeredimage.h"
#include "tests/support/template.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>

/// The parts of the tabs, built over an image that is there already.
class TestTabs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void buildingTheParametersWritesNothing();
    void buildingRulesWritesNothing_data();
    void buildingRulesWritesNothing();
    void showingThemWritesNothing();

private:
    QByteArray m_before;
    std::unique_ptr<cMyMemoryArea> m_image;
    std::unique_ptr<cMyImageGate> m_gate;
};

namespace {

/// A window with the places that a tab is built into.
struct Page
{
    QWidget window;
    QWidget parameters{&window};
    QWidget periods{&window};
    QWidget distances{&window};
    QFormLayout parametersForm{&parameters};
    QFormLayout periodsForm{&periods};
    QFormLayout distancesForm{&distances};
    cMyRuleRows rows{&window};
    QGridLayout grid{&rows};
    cMyRuleHeading heading{&window};
};

} // namespace

void TestTabs::init()
{
    QRandomGenerator random(3009);
    m_before = support::offeredImage(random);
    m_image = std::make_unique<cMyMemoryArea>();
    for (int i = 0; i < m_before.size(); ++i) {
        m_image->setData(static_cast<quint32>(i), static_cast<quint8>(m_before.at(i)));
    }
    m_image->clearModified();
    m_gate = std::make_unique<cMyImageGate>(*m_image);
}

void TestTabs::buildingTheParametersWritesNothing()
{
    Page page;
    const cMyParametersTab tab({&page.parametersForm, &page.periodsForm, &page.distancesForm},
                               *m_gate, page.window);
    QCOMPARE(support::bytesOf(*m_image), m_before);
    QVERIFY(!m_image->isModified());
    QVERIFY(page.window.findChild<QComboBox*>(QStringLiteral("par1Cb"))->count() > 0);
}

void TestTabs::buildingRulesWritesNothing_data()
{
    QTest::addColumn<bool>("isTimer");
    QTest::newRow("timers") << true;
    QTest::newRow("messages") << false;
}

void TestTabs::buildingRulesWritesNothing()
{
    QFETCH(bool, isTimer);
    Page page;
    const cMyRuleGrid grid(isTimer ? cMyRuleGrid::timerRules() : cMyRuleGrid::messageRules(),
                           {&page.rows, &page.grid, &page.heading}, *m_gate, page.window);
    QCOMPARE(support::bytesOf(*m_image), m_before);
    QVERIFY(!m_image->isModified());
    QCOMPARE(page.grid.rowCount(), isTimer ? 8 : 24);
}

void TestTabs::showingThemWritesNothing()
{
    Page page;
    cMyParametersTab tab({&page.parametersForm, &page.periodsForm, &page.distancesForm}, *m_gate,
                         page.window);
    cMyRuleGrid grid(cMyRuleGrid::messageRules(), {&page.rows, &page.grid, &page.heading}, *m_gate,
                     page.window);
    tab.update();
    grid.update();
    QCOMPARE(support::bytesOf(*m_image), m_before);
    QVERIFY(!m_image->isModified());
}

MIOLKA_GUI_TEST_MAIN(TestTabs)
#include "test_tabs.moc"
