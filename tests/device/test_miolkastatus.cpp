// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/miolkastatus.h"
#include "tests/support/windowtest.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

using support::child;

/// What a status looks like on the screen.
class TestMiolkaStatus : public QObject
{
    Q_OBJECT

private slots:
    void beforeAnyStatus();
    void flags_data();
    void flags();
    void captions();
    void layout();
    void theDialogClosesByItsButton();
    void theStartPage();
    void foreignTextIsShownAsItIs();
    void onlyTheLowBitsOfTheFlagsCount();
    void theDialogRemembers();
};

namespace {

const char* const values[] = {"lMiolka",   "lPresure", "lAudio",    "lFlash",
                              "lSettings", "lLibrary", "lMessages", "lFirmware"};

QStringList shown(const QWidget& dialog)
{
    QStringList texts;
    for (const char* name : values) {
        texts.append(dialog.findChild<QLabel*>(QLatin1String(name))->text());
    }
    return texts;
}

QStringList status(const QString& flags)
{
    return {flags,
            QStringLiteral("18.4 m"),
            QStringLiteral("39:05"),
            QStringLiteral("12345"),
            QStringLiteral("1.2.3.4"),
            QStringLiteral("8"),
            QStringLiteral("1.0.0.1"),
            QStringLiteral("English"),
            QStringLiteral("2.0.0.2"),
            QStringLiteral("1.0.4.0"),
            QStringLiteral("Author"),
            QStringLiteral("Title"),
            QStringLiteral("One\nTwo")};
}

} // namespace

void TestMiolkaStatus::beforeAnyStatus()
{
    const cMyMiolkaStatus dialog(nullptr);
    QCOMPARE(shown(dialog).first(), QStringLiteral("Self-test... Error"));
    QCOMPARE(shown(dialog).mid(1).join(QLatin1Char(' ')), QStringLiteral("OK OK OK OK OK OK OK"));
}

void TestMiolkaStatus::flags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("texts");
    const QString works = QStringLiteral("Self-test... Passed");
    const QString fails = QStringLiteral("Self-test... Error");
    QTest::newRow("works") << 0x01 << works + QLatin1String(",OK,OK,OK,OK,OK,OK,OK");
    QTest::newRow("pressure sensor and firmware")
        << 0x82 << fails + QLatin1String(",Faulty,OK,OK,OK,OK,OK,Error");
    QTest::newRow("audio") << 0x05 << works + QLatin1String(",OK,Faulty,OK,OK,OK,OK,OK");
    QTest::newRow("flash") << 0x08 << fails + QLatin1String(",OK,OK,Faulty,OK,OK,OK,OK");
    QTest::newRow("settings") << 0x10 << fails + QLatin1String(",OK,OK,OK,Error,OK,OK,OK");
    QTest::newRow("library") << 0x20 << fails + QLatin1String(",OK,OK,OK,OK,Error,OK,OK");
    QTest::newRow("messages") << 0x41 << works + QLatin1String(",OK,OK,OK,OK,OK,Error,OK");
    QTest::newRow("all") << 0xFF
                         << works + QLatin1String(",Faulty,Faulty,Faulty,Error,Error,Error,Error");
}

void TestMiolkaStatus::flags()
{
    QFETCH(int, flags);
    QFETCH(QString, texts);
    cMyMiolkaStatus dialog(nullptr);
    dialog.setStatus(static_cast<unsigned char>(flags));
    QCOMPARE(shown(dialog).join(QLatin1Char(',')), texts);
}

void TestMiolkaStatus::captions()
{
    const cMyMiolkaStatus dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Device status"));
    QVERIFY(dialog.isModal());
    QStringList texts;
    for (const char* name : values) {
        texts.append(
            dialog.findChild<QLabel*>(QString::fromLatin1(name) + QStringLiteral("Caption"))
                ->text());
    }
    QCOMPARE(texts.join(QLatin1Char(' ')),
             QStringLiteral("Miolka: Pressure sensor: Audio codec: FLASH: Setup: Sound library: "
                            "Custom messages library: Firmware:"));
    QCOMPARE(dialog.findChild<QPushButton*>(QStringLiteral("pushButton"))->text(),
             QStringLiteral("Close"));
}

void TestMiolkaStatus::layout()
{
    const cMyMiolkaStatus dialog(nullptr);
    auto* grid = dialog.findChild<QGridLayout*>(QStringLiteral("gridLayout"));
    QVERIFY(grid != nullptr);
    for (int row = 0; row < 8; ++row) {
        const QString value = QLatin1String(values[row]);
        QCOMPARE(grid->itemAtPosition(row, 0)->widget()->objectName(),
                 value + QStringLiteral("Caption"));
        QCOMPARE(grid->itemAtPosition(row, 1)->widget()->objectName(), value);
    }
    const auto* button = grid->itemAtPosition(8, 0)->widget();
    QCOMPARE(grid->itemAtPosition(8, 1)->widget(), button);
    QCOMPARE(button->objectName(), QStringLiteral("pushButton"));
}

void TestMiolkaStatus::theDialogClosesByItsButton()
{
    MainWindow window;
    window.show();
    auto* dialog = window.findChild<cMyMiolkaStatus*>();
    QTimer::singleShot(0, dialog, [dialog] {
        QVERIFY(dialog->isVisible());
        dialog->findChild<QPushButton*>(QStringLiteral("pushButton"))->click();
    });
    window.showMiolkaStatus();
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), static_cast<int>(QDialog::Accepted));
}

void TestMiolkaStatus::theStartPage()
{
    MainWindow window;
    window.newStatusRead(status(QStringLiteral("1")));
    const std::pair<const char*, const char*> expected[] = {{"lMiolkaStatus", "Self-test: Passed"},
                                                            {"lmaxDepth", "18.4 m"},
                                                            {"lDiveTime", "39:05"},
                                                            {"lSerialNumber", "12345"},
                                                            {"lHardwareVesrion", "1.2.3.4"},
                                                            {"lMemoryAmount", "8 MB"},
                                                            {"lFirmwareVersion", "1.0.0.1"},
                                                            {"lVoiceLang", "English"},
                                                            {"lVoiceVersion", "2.0.0.2"},
                                                            {"lParamVersion", "1.0.4.0"},
                                                            {"lParamAutor", "Author"},
                                                            {"lParamTytul", "Title"}};
    for (const auto& [name, text] : expected) {
        QCOMPARE(child<QLabel>(window, name)->text(), QLatin1String(text));
        QCOMPARE(child<QLabel>(window, name)->textFormat(), Qt::PlainText);
    }
    QCOMPARE(child<QPlainTextEdit>(window, "pteParamDesc")->toPlainText(),
             QStringLiteral("One\nTwo"));
    window.newStatusRead(status(QStringLiteral("130")));
    QCOMPARE(child<QLabel>(window, "lMiolkaStatus")->text(), QStringLiteral("Self-test: Error"));
    QCOMPARE(shown(*window.findChild<cMyMiolkaStatus*>()).join(QLatin1Char(',')),
             QStringLiteral("Self-test... Error,Faulty,OK,OK,OK,OK,OK,Error"));
}

void TestMiolkaStatus::foreignTextIsShownAsItIs()
{
    MainWindow window;
    QStringList texts = status(QStringLiteral("1"));
    const QString markup = QStringLiteral("<b>a</b> < b & <img src='/dev/zero'>");
    for (int i = 1; i < texts.size(); ++i) {
        texts[i] = markup;
    }
    window.newStatusRead(texts);
    QCOMPARE(child<QLabel>(window, "lVoiceLang")->text(), markup);
    QCOMPARE(child<QPlainTextEdit>(window, "pteParamDesc")->toPlainText(), markup);
    window.newStatusRead({});
    QCOMPARE(child<QLabel>(window, "lVoiceLang")->text(), QString());
    QCOMPARE(child<QLabel>(window, "lMemoryAmount")->text(), QStringLiteral(" MB"));
}

void TestMiolkaStatus::onlyTheLowBitsOfTheFlagsCount()
{
    MainWindow window;
    window.newStatusRead(status(QStringLiteral("257")));
    QCOMPARE(child<QLabel>(window, "lMiolkaStatus")->text(), QStringLiteral("Self-test: Passed"));
    QCOMPARE(shown(*window.findChild<cMyMiolkaStatus*>()).first(),
             QStringLiteral("Self-test... Passed"));
}

void TestMiolkaStatus::theDialogRemembers()
{
    MainWindow window;
    window.newStatusRead(status(QStringLiteral("3")));
    window.portChanged(QString());
    QCOMPARE(shown(*window.findChild<cMyMiolkaStatus*>()).mid(0, 2),
             QStringList({QStringLiteral("Self-test... Passed"), QStringLiteral("Faulty")}));
}

MIOLKA_GUI_TEST_MAIN(TestMiolkaStatus)
#include "test_miolkastatus.moc"
