// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/windowtest.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QStatusBar>
#include <QUrl>

#include <algorithm>

using support::child;

/// The manual is handed to the desktop.
class TestHelp : public QObject
{
    Q_OBJECT

public slots:
    void take(const QUrl& url) { m_handedOver.append(url); }

private slots:
    void init();
    void cleanup();
    void theManualBesideTheProgramIsOpened();
    void withoutAManualNothingIsToBeSeen();

private:
    QVector<QUrl> m_handedOver; ///< what the desktop was asked to open
    std::unique_ptr<MainWindow> m_window;
};

void TestHelp::init()
{
    m_handedOver.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "take");
    m_window = std::make_unique<MainWindow>();
    m_window->show();
}

void TestHelp::cleanup()
{
    m_window.reset();
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void TestHelp::theManualBesideTheProgramIsOpened()
{
    QVERIFY(child<QAction>(*m_window, "actionPomoc")->isEnabled());
    child<QAction>(*m_window, "actionPomoc")->trigger();
    QCOMPARE(m_handedOver.size(), 1);
    QVERIFY(m_handedOver.first().isLocalFile());
    QCOMPARE(m_handedOver.first().toLocalFile(),
             QFileInfo(QCoreApplication::applicationFilePath()).path() +
                 QStringLiteral("/MIOLKAsoftHELP.pdf"));
}

void TestHelp::withoutAManualNothingIsToBeSeen()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    QVERIFY(!QFileInfo::exists(QCoreApplication::applicationDirPath() +
                               QStringLiteral("/MIOLKAsoftHELP.pdf")));
    child<QAction>(*m_window, "actionPomoc")->trigger();
    QTest::qWait(100);
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    const QWidgetList widgets = QApplication::topLevelWidgets();
    QVERIFY(std::none_of(widgets.cbegin(), widgets.cend(), [this](const QWidget* each) {
        return each->isVisible() && each != m_window.get();
    }));
    QCOMPARE(child<QStatusBar>(*m_window, "statusBar")->currentMessage(), QString());
    QVERIFY(m_window->isEnabled());
}

MIOLKA_GUI_TEST_MAIN(TestHelp)
#include "test_help.moc"
