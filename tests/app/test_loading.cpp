// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/offeredimage.h"
#include "tests/support/windowtest.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>

/// What loading does to an image: nothing, but for the numbers that the parameters' inputs clamp.
class TestLoading : public QObject
{
    Q_OBJECT

private slots:
    void offeredImagesComeBack();
    void whateverWasShownBefore();
    void randomBytes();
    void recordsFromTheDevice();
    void shortFilesShowWhatTheImageHolds();
};

namespace {

/// Everything that the inputs show, for comparing two windows.
QStringList shownBy(const MainWindow& window)
{
    QStringList shown;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
            shown << box->objectName() + QLatin1Char('=') + box->currentText();
        } else if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(widget)) {
            shown << spin->objectName() + QLatin1Char('=') + spin->text() +
                         QString::number(static_cast<int>(spin->isEnabled()));
        } else if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
            shown << line->objectName() + QLatin1Char('=') + line->text();
        } else if (const auto* text = qobject_cast<const QPlainTextEdit*>(widget)) {
            shown << text->objectName() + QLatin1Char('=') + text->toPlainText();
        } else if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            shown << label->objectName() + QLatin1Char('=') + label->text();
        }
    }
    return shown;
}

/// Reads an image as the device sends it, 16 bytes in a record.
void receive(MainWindow& window, const QByteArray& image)
{
    for (int address = 0; address < image.size(); address += 16) {
        QVector<quint8> bytes(16);
        std::copy_n(image.begin() + address, 16, bytes.begin());
        window.newDataRead(EEPROM, static_cast<quint32>(address), bytes);
    }
}

/// What the parameters' inputs make of an image, computed without them.
QByteArray clamped(QByteArray image)
{
    static const QStringList numbers{QStringLiteral("volume"),
                                     QStringLiteral("diveThreshold"),
                                     QStringLiteral("surfacingThreshold"),
                                     QStringLiteral("ascentThreshold"),
                                     QStringLiteral("bottomThreshold"),
                                     QStringLiteral("salinity"),
                                     QStringLiteral("fixedTemperature"),
                                     QStringLiteral("altitude"),
                                     QStringLiteral("latitude"),
                                     QStringLiteral("periodA"),
                                     QStringLiteral("periodB"),
                                     QStringLiteral("periodC"),
                                     QStringLiteral("periodD"),
                                     QStringLiteral("distanceE"),
                                     QStringLiteral("distanceF"),
                                     QStringLiteral("distanceG"),
                                     QStringLiteral("distanceH")};
    QHash<QString, int> shown;
    for (const QString& name : numbers) {
        const cMySettingsField& field = editor::settingsField(name);
        int stored = static_cast<quint8>(image.at(field.address));
        if (field.width == 2) {
            stored |= static_cast<quint8>(image.at(field.address + 1)) << 8;
        }
        if (field.encoding == FieldEncoding::Signed) {
            stored = field.width == 2 ? static_cast<qint16>(stored) : static_cast<qint8>(stored);
        }
        shown[name] = qBound(qRound(field.minimum * field.factor), stored,
                             qRound(field.maximum * field.factor));
        support::put(image, field, editor::numberBytes(shown.value(name), field));
    }
    const cMySettingsField& gravity = support::field("gravity");
    support::put(image, gravity,
                 editor::numberBytes(editor::storedGravity(shown.value(QStringLiteral("altitude")),
                                                           shown.value(QStringLiteral("latitude"))),
                                     gravity));
    return image;
}

} // namespace

void TestLoading::offeredImagesComeBack()
{
    QRandomGenerator random(3001);
    MainWindow window;
    const QTemporaryDir directory;
    const QString saved = directory.filePath(QStringLiteral("saved.mio"));
    for (int round = 0; round < 200; ++round) {
        const QByteArray image = support::offeredImage(random);
        support::load(window, image);
        QVERIFY(window.saveFile(saved));
        QVERIFY2(support::readFile(saved) == support::settingsText(image),
                 qPrintable(support::differences(image, support::imageOf(window))));
    }
}

void TestLoading::whateverWasShownBefore()
{
    QRandomGenerator random(3002);
    for (int round = 0; round < 5; ++round) {
        const QByteArray image = support::offeredImage(random);
        const QByteArray other = support::offeredImage(random);
        MainWindow window;
        support::load(window, image);
        const QStringList shown = shownBy(window);
        support::load(window, other);
        QCOMPARE(support::differences(other, support::imageOf(window)), QString());
        QVERIFY(shownBy(window) != shown);
        for (int again = 0; again < 2; ++again) {
            support::load(window, image);
            QCOMPARE(support::differences(image, support::imageOf(window)), QString());
            QCOMPARE(shownBy(window), shown);
        }
    }
}

void TestLoading::randomBytes()
{
    QRandomGenerator random(3010);
    MainWindow window;
    window.show();
    for (int round = 0; round < 10000; ++round) {
        const QByteArray image = support::randomImage(random);
        auto* area = support::settingsImage(window);
        for (int i = 0; i < image.size(); ++i) {
            area->setData(static_cast<quint32>(i), static_cast<quint8>(image.at(i)));
        }
        window.updateMesagessTab();
        window.updateParametersTab();
        window.updateTimersTab();
        const QByteArray after = support::imageOf(window);
        QVERIFY2(after == clamped(image),
                 qPrintable(QStringLiteral("image %1 of seed 3010: ").arg(round) +
                            support::differences(clamped(image), after)));
    }
    QCoreApplication::processEvents();
    // And through a file, as a user would.
    const QTemporaryDir directory;
    const QString saved = directory.filePath(QStringLiteral("saved.mio"));
    for (int round = 0; round < 200; ++round) {
        const QByteArray image = support::randomImage(random);
        support::load(window, image);
        QVERIFY(window.saveFile(saved));
        QCOMPARE(support::readFile(saved), support::settingsText(clamped(image)));
    }
}

void TestLoading::recordsFromTheDevice()
{
    QRandomGenerator random(3005);
    MainWindow window;
    for (int round = 0; round < 5; ++round) {
        const QByteArray image = support::offeredImage(random);
        receive(window, image);
        QCOMPARE(support::differences(image, support::imageOf(window)), QString());
        MainWindow fresh;
        support::load(fresh, image);
        QCOMPARE(shownBy(window), shownBy(fresh));
    }
}

void TestLoading::shortFilesShowWhatTheImageHolds()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("one.mio"));
    // One record: the first message rule and the second.
    support::writeFile(path, ":10014000002000F401200101FEFF0000007F0000FC\n:00000001FF");
    MainWindow window;
    window.openFileCmdLine(path);
    auto* depth = support::child<QAbstractSpinBox>(window, "par01Sb1");
    QCOMPARE(depth->text(), QStringLiteral("5.00 [m]"));
    QByteArray expected = support::templateImage();
    expected.replace(320, 8, QByteArray::fromHex("002000F401200101"));
    QCOMPARE(support::imageOf(window), expected);
}

MIOLKA_GUI_TEST_MAIN(TestLoading)
#include "test_loading.moc"
