// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/dialogscript.h"
#include "tests/support/windowtest.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMetaEnum>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

/// The frame: pages, menus, tool bar, actions, style, and what the window passes on.
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void pagesInTheirOrder();
    void messageRulesAreShownFirst();
    void theHiddenPageStaysAlive();
    void actions_data();
    void actions();
    void polishPagesAndMenus();
    void menus();
    void toolBar();
    void deviceActionsAreDisabledFromTheStart();
    void styleSheets();
    void theStartPageShowsItsPicture();
    void sizeIsAsDesigned();
    void highResolutionIsSetUp();
    void everyTextIsEnglish();
    void startsWithoutADialogOnTheTemplate();
    void memoryAreas();
    void theStartPageAsksForTheStatus();
    void aSimulationLocksTheRest();
    void shortcutsRestDuringASimulation();
    void manySimulationsOneRequest();
    void onlyEepromIsTaken();
    void onlyEepromRefreshesThePages();
    void openFileAppliesRecordsAndLeavesTheTitle();
    void valueListsCanCrossThreads();
    void exitClosesWithoutAQuestion();
    void statusTipsComeUpInTheStatusBar();
};

namespace {

using support::child;

QStringList namesOf(const QList<QAction*>& actions)
{
    QStringList names;
    for (const QAction* action : actions) {
        const auto* widget = qobject_cast<const QWidgetAction*>(action);
        names.append(action->isSeparator()
                         ? QStringLiteral("-")
                         : (widget == nullptr ? action->objectName()
                                              : widget->defaultWidget()->objectName()));
    }
    return names;
}

const char* const pageNames[] = {"tabStart", "tabTimery", "tabKomunikaty", "simWidget"};

} // namespace

void TestMainWindow::pagesInTheirOrder()
{
    const MainWindow window;
    const auto* tabs = child<QTabWidget>(window, "tabWidget");
    const QStringList titles{QStringLiteral("Overview"), QStringLiteral("Parameters / Intervals"),
                             QStringLiteral("Messages"), QStringLiteral("Simulation")};
    QCOMPARE(tabs->count(), 4);
    for (int page = 0; page < 4; ++page) {
        QCOMPARE(tabs->widget(page)->objectName(), QString::fromLatin1(pageNames[page]));
        QCOMPARE(tabs->tabText(page), titles.at(page));
    }
    QCOMPARE(tabs->parentWidget()->objectName(), QStringLiteral("centralWidget"));
    QCOMPARE(window.centralWidget(), tabs->parentWidget());
}

void TestMainWindow::messageRulesAreShownFirst()
{
    MainWindow window;
    QSignalSpy requests(&window, &MainWindow::statusRequested);
    window.show();
    QCoreApplication::processEvents();
    QCOMPARE(child<QTabWidget>(window, "tabWidget")->currentIndex(), 2);
    QVERIFY(child<QWidget>(window, "tabKomunikaty")->isVisible());
    QCOMPARE(requests.count(), 0);
}

void TestMainWindow::theHiddenPageStaysAlive()
{
    MainWindow window;
    window.show();
    const auto* page = child<QWidget>(window, "tab");
    QVERIFY(!page->isVisible());
    QCOMPARE(page->findChildren<QGroupBox*>().size(), 2);
    for (const char* name : {"lsetMaxDepth", "lsetDiveTime"}) {
        const auto* edit = child<QLineEdit>(window, name);
        QVERIFY(page->isAncestorOf(edit));
    }
}

void TestMainWindow::actions_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("shortcut");
    const auto row = [](const char* name, const char* source, const char* text,
                        const char* icon = "", const char* shortcut = "") {
        QTest::newRow(name) << QString::fromUtf8(source) << QString::fromUtf8(text)
                            << QString::fromLatin1(icon) << QString::fromLatin1(shortcut);
    };
    row("actionNew", "Nowy...", "New...", "new", "Ctrl+N");
    row("actionOpen", "Otwórz...", "Open...", "open", "Ctrl+O");
    row("actionSave", "Zapisz...", "Save...", "save", "Ctrl+S");
    row("actionSaveAs", "Zapisz jako...", "Save as...", "save_as", "Ctrl+Shift+S");
    row("actionExit", "Zakończ", "Exit", "exit", "Ctrl+Q");
    row("actionReadSettings", "Wczytaj nastawy z Miolki", "Miolka -> PC Upload", "upload");
    row("actionWriteSettings", "Zapisz nastawy do Miolki", "PC -> Miolka Download", "download");
    row("actionReset", "Reset...", "Reset...");
    row("actionClearStats", "Wyczyść statystyki...", "Clear statistics...");
    row("actionPowerOff", "Wyłącz Miolkę...", "Switch Miolka Off...");
    row("actionLibraryUpdate", "Aktualizacja biblioteki dźwięków...", "Sound library update...");
    row("actionFirmwareUpdate", "Aktualizacja firmware...", "Firmware update...");
    row("actionPomoc", "Pomoc...", "Help...", "", "F1");
    row("actionAbout", "O Programie...", "About...");
    row("actionSearchDFU", "Sprawdz urządzenia DFU", "DFU state devices check");
}

void TestMainWindow::actions()
{
    QFETCH(QString, source);
    QFETCH(QString, text);
    QFETCH(QString, icon);
    QFETCH(QString, shortcut);
    const MainWindow window;
    const auto* action = child<QAction>(window, QTest::currentDataTag());
    QCOMPARE(action->text(), text);
    QCOMPARE(action->shortcut(), QKeySequence(shortcut));
    QCOMPARE(action->icon().isNull(), icon.isEmpty());
    if (!icon.isEmpty()) {
        const QIcon expected(QStringLiteral(":/icons/ikony/%1.svg").arg(icon));
        QCOMPARE(action->icon().pixmap(24).toImage(), expected.pixmap(24).toImage());
    }
    const support::WithoutCatalogue polish;
    const MainWindow polishWindow;
    QCOMPARE(child<QAction>(polishWindow, QTest::currentDataTag())->text(), source);
}

void TestMainWindow::polishPagesAndMenus()
{
    const support::WithoutCatalogue polish;
    const MainWindow window;
    const auto* tabs = child<QTabWidget>(window, "tabWidget");
    QStringList titles;
    for (int page = 0; page < tabs->count(); ++page) {
        titles << tabs->tabText(page);
    }
    for (const QAction* menu : window.menuBar()->actions()) {
        titles << menu->text();
    }
    QCOMPARE(titles.join(QLatin1Char('|')),
             QStringLiteral("Start|Parametry / Okresy|Komunikaty|Symulacja|Plik|Komunikacja|"
                            "Serwis|Pomoc"));
}

void TestMainWindow::menus()
{
    const MainWindow window;
    QCOMPARE(window.menuBar()->objectName(), QStringLiteral("menuBar"));
    const QList<QAction*> menus = window.menuBar()->actions();
    const QStringList titles{QStringLiteral("File"), QStringLiteral("Online"),
                             QStringLiteral("Service"), QStringLiteral("Help")};
    const QStringList names{QStringLiteral("menuPlik"), QStringLiteral("menuKomunikacja"),
                            QStringLiteral("menuSerwis"), QStringLiteral("menuPomoc")};
    const QStringList contents{
        QStringLiteral("actionNew actionOpen actionSave actionSaveAs actionExit"),
        QStringLiteral("actionReadSettings actionWriteSettings"),
        QStringLiteral("actionReset actionClearStats actionPowerOff - actionLibraryUpdate "
                       "actionFirmwareUpdate"),
        QStringLiteral("actionPomoc actionAbout")};
    QCOMPARE(menus.size(), 4);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(menus.at(i)->menu()->title(), titles.at(i));
        QCOMPARE(menus.at(i)->menu()->objectName(), names.at(i));
        QCOMPARE(namesOf(menus.at(i)->menu()->actions()).join(QLatin1Char(' ')), contents.at(i));
    }
}

void TestMainWindow::toolBar()
{
    const MainWindow window;
    auto* bar = child<QToolBar>(window, "mainToolBar");
    QCOMPARE(window.toolBarArea(bar), Qt::TopToolBarArea);
    QCOMPARE(namesOf(bar->actions()).join(QLatin1Char(' ')),
             QStringLiteral("actionNew actionOpen actionSave actionSaveAs - actionWriteSettings "
                            "actionReadSettings - portSelect - actionExit"));
    const auto* dfu = child<QAction>(window, "actionSearchDFU");
    QVERIFY(dfu->associatedWidgets().isEmpty());
}

void TestMainWindow::deviceActionsAreDisabledFromTheStart()
{
    const MainWindow window;
    for (const char* name :
         {"actionReadSettings", "actionWriteSettings", "actionReset", "actionClearStats",
          "actionPowerOff", "actionLibraryUpdate", "actionFirmwareUpdate"}) {
        const auto* action = child<QAction>(window, name);
        QVERIFY2(!action->isEnabled(), name);
        QVERIFY2(!action->statusTip().isEmpty(), name);
    }
}

void TestMainWindow::styleSheets()
{
    const QString start = QStringLiteral(
        "QWidget#tabStart {\nbackground-image: "
        "url(:/grafika/grafika/odslona2_soft_max_05.jpg);\ncolor: rgb(255, 255, 255);\n}");
    const QString gradient = QStringLiteral(
        "background-color: qlineargradient(spread:reflect, x1:0, y1:0.0170455, x2:1, y2:1, "
        "stop:0 rgba(0, 0, 0, 89), stop:1 rgba(255, 255, 255, 223));");
    const MainWindow window;
    QCOMPARE(window.styleSheet(), start);
    const QString tabs = child<QTabWidget>(window, "tabWidget")->styleSheet();
    QCOMPARE(tabs, start + QStringLiteral("\nQWidget#tabTimery {\n") + gradient +
                       QStringLiteral("\n}\nQWidget#tabKomunikaty {\n") + gradient +
                       QStringLiteral("\n}"));
    const QString texts = child<QWidget>(window, "startContents")->styleSheet();
    QVERIFY(texts.contains(QStringLiteral("QLabel { color: white; }")));
}

void TestMainWindow::theStartPageShowsItsPicture()
{
    MainWindow window;
    window.show();
    child<QTabWidget>(window, "tabWidget")->setCurrentIndex(0);
    QCoreApplication::processEvents();
    auto* page = child<QWidget>(window, "tabStart");
    const QImage shown = page->grab().toImage();
    const QImage picture(QStringLiteral(":/grafika/grafika/odslona2_soft_max_05.jpg"));
    for (const QPoint& point : {QPoint(600, 12), QPoint(12, 500), QPoint(1090, 300)}) {
        QCOMPARE(shown.pixelColor(point), picture.pixelColor(point));
    }
    QCOMPARE(page->palette().color(QPalette::WindowText), QColor(Qt::white));
}

void TestMainWindow::sizeIsAsDesigned()
{
    MainWindow window;
    window.show();
    QCoreApplication::processEvents();
    QCOMPARE(window.size(), QSize(1116, 761));
    auto* tabs = child<QTabWidget>(window, "tabWidget");
    for (const QSize& size : {QSize(1116, 761), QSize(640, 480), QSize(1920, 1080)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), size);
        int seen = 0;
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            QCoreApplication::processEvents();
            for (const QWidget* widget : window.findChildren<QWidget*>()) {
                const QRect shown(widget->mapTo(&window, QPoint(0, 0)), widget->size());
                // What lies on a page that scrolls may be anywhere.
                const bool scrolls = support::isScrolled(*widget);
                QVERIFY2(!widget->isVisible() || scrolls || window.rect().contains(shown),
                         qPrintable(widget->objectName()));
                seen += widget->isVisible() ? 1 : 0;
            }
        }
        QVERIFY(seen > 4 * tabs->count());
    }
}

void TestMainWindow::highResolutionIsSetUp()
{
    // By name: where they are always set, using them is deprecated.
    const QMetaEnum attributes = QMetaEnum::fromType<Qt::ApplicationAttribute>();
    for (const char* name : {"AA_EnableHighDpiScaling", "AA_UseHighDpiPixmaps"}) {
        const int attribute = attributes.keyToValue(name);
        QVERIFY(QCoreApplication::testAttribute(static_cast<Qt::ApplicationAttribute>(attribute)));
    }
    QCOMPARE(QGuiApplication::highDpiScaleFactorRoundingPolicy(),
             Qt::HighDpiScaleFactorRoundingPolicy::Round);
}

void TestMainWindow::everyTextIsEnglish()
{
    const MainWindow window;
    QStringList texts{window.windowTitle()};
    for (const QAction* action : window.findChildren<QAction*>()) {
        texts << action->text() << action->statusTip() << action->toolTip();
    }
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        texts << menu->title();
    }
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        texts << widget->windowTitle() << widget->toolTip() << widget->statusTip();
        texts << widget->property("text").toString() << widget->property("title").toString();
    }
    const QRegularExpression polish(
        QStringLiteral("[ąćęłńóśźżĄĆĘŁŃÓŚŹŻ]|Nowy|Zapisz|Plik|Serwis|Strona|Symulacja|Komunikat"));
    for (const QString& text : qAsConst(texts)) {
        QVERIFY2(!text.contains(polish), qPrintable(text));
    }
    QVERIFY(texts.contains(QStringLiteral("Open a settings file.")));
}

void TestMainWindow::startsWithoutADialogOnTheTemplate()
{
    const support::DialogScript nothing;
    MainWindow window;
    window.show();
    QTest::qWait(50);
    QVERIFY(nothing.isFinished());
    QCOMPARE(window.windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0"));
    QCOMPARE(support::bytesOf(*child<cMyMemoryArea>(window, "settingsImage"), 2000),
             support::templateImage());
}

void TestMainWindow::memoryAreas()
{
    const MainWindow window;
    QCOMPARE(window.findChildren<cMyMemoryArea*>().size(), 2);
    quint8 byte = 0;
    QVERIFY(!child<cMyMemoryArea>(window, "secondArea")->data(0, &byte));
    QVERIFY(child<cMyMemoryArea>(window, "settingsImage")->isModified());
}

void TestMainWindow::theStartPageAsksForTheStatus()
{
    MainWindow window;
    auto* tabs = child<QTabWidget>(window, "tabWidget");
    QSignalSpy requests(&window, &MainWindow::statusRequested);
    for (const int page : {1, 3, 2, 0, 1, 0}) {
        tabs->setCurrentIndex(page);
    }
    QCOMPARE(requests.count(), 2);
}

void TestMainWindow::aSimulationLocksTheRest()
{
    MainWindow window;
    auto* tabs = child<QTabWidget>(window, "tabWidget");
    QSignalSpy requests(&window, &MainWindow::statusRequested);
    window.portChanged(QStringLiteral("ttyACM0"));
    for (const bool running : {true, false}) {
        window.simulationInProgress(running);
        for (const char* name :
             {"menuBar", "mainToolBar", "tabStart", "tabTimery", "tabKomunikaty"}) {
            QCOMPARE(child<QWidget>(window, name)->isEnabled(), !running);
        }
        QVERIFY(child<QWidget>(window, "simWidget")->isEnabled());
        tabs->setCurrentIndex(0);
        tabs->setCurrentIndex(3);
        QCOMPARE(requests.count(), running ? 0 : 1);
    }
}

void TestMainWindow::shortcutsRestDuringASimulation()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto* action = child<QAction>(window, "actionSave");
    QSignalSpy triggered(action, &QAction::triggered);
    support::DialogScript user;
    window.simulationInProgress(true);
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(triggered.count(), 0);
    window.simulationInProgress(false);
    user.dismiss();
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(triggered.count(), 1);
    QVERIFY(user.isFinished());
}

void TestMainWindow::manySimulationsOneRequest()
{
    MainWindow window;
    auto* tabs = child<QTabWidget>(window, "tabWidget");
    for (int run = 0; run < 20; ++run) {
        window.simulationInProgress(true);
        window.simulationInProgress(false);
    }
    QSignalSpy requests(&window, &MainWindow::statusRequested);
    tabs->setCurrentIndex(0);
    QCOMPARE(requests.count(), 1);
}

void TestMainWindow::onlyEepromIsTaken()
{
    MainWindow window;
    auto* image = child<cMyMemoryArea>(window, "settingsImage");
    image->clearModified();
    for (const MemoryType type : {FLASH, OTP, RAM, ROM, static_cast<MemoryType>(7)}) {
        window.newDataRead(type, 16, {1, 2, 3});
    }
    QCOMPARE(support::bytesOf(*image), support::templateImage());
    QVERIFY(!image->isModified());
    window.newDataRead(EEPROM, 16, {1, 2, 3});
    QCOMPARE(support::bytesOf(*image), support::templateImage().replace(16, 3, "\1\2\3"));
    QVERIFY(image->isModified());
}

void TestMainWindow::onlyEepromRefreshesThePages()
{
    MainWindow window;
    const auto* title = child<QLineEdit>(window, "leTitle");
    const auto* timer = child<QComboBox>(window, "tim1Cb1");
    const auto* message = child<QComboBox>(window, "par01Cb1");
    const auto shown = [&] {
        return QStringList{title->text(), timer->currentText(), message->currentText()};
    };
    const QStringList before = shown();
    // What lies under the inputs changes behind their backs.
    auto* image = child<cMyMemoryArea>(window, "settingsImage");
    image->setData(32, {'A', 'b', 0});
    image->setData(256, 1);
    image->setData(320, 1);
    window.newDataRead(FLASH, 16, {1, 2, 3});
    QCOMPARE(shown(), before);
    window.newDataRead(EEPROM, 16, {1, 2, 3});
    QCOMPARE(title->text(), QStringLiteral("Ab"));
    QVERIFY(timer->currentText() != before.at(1));
    QVERIFY(message->currentText() != before.at(2));
}

void TestMainWindow::openFileAppliesRecordsAndLeavesTheTitle()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("four.mio"));
    support::writeFile(path, ":04000000AABBCCDDEE");
    MainWindow window;
    window.openFile(path);
    QCOMPARE(support::bytesOf(*child<cMyMemoryArea>(window, "settingsImage")),
             support::templateImage().replace(0, 4, "\xAA\xBB\xCC\xDD"));
    QCOMPARE(window.windowTitle(), QStringLiteral("MIOLKAsoft v1.0.4.0"));
}

void TestMainWindow::valueListsCanCrossThreads()
{
    const MainWindow window;
    QVERIFY(QMetaType::type("QVector<QString>") != QMetaType::UnknownType);
}

void TestMainWindow::exitClosesWithoutAQuestion()
{
    const support::DialogScript nothing;
    MainWindow window;
    window.show();
    child<QAction>(window, "actionExit")->trigger();
    QTest::qWait(50);
    QVERIFY(!window.isVisible());
    QVERIFY(nothing.isFinished());
}

void TestMainWindow::statusTipsComeUpInTheStatusBar()
{
    MainWindow window;
    window.show();
    auto* bar = child<QToolBar>(window, "mainToolBar");
    auto* button = bar->widgetForAction(child<QAction>(window, "actionWriteSettings"));
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mouseMove(button);
    QTRY_COMPARE(window.statusBar()->currentMessage(), QStringLiteral("Connect a Miolka first."));
}

MIOLKA_GUI_TEST_MAIN(TestMainWindow)
#include "test_mainwindow.moc"
