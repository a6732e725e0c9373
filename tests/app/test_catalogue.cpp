// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/guitest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

/// The English catalogue: complete, and the one that is embedded.
class TestCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void everySourceTextHasAnEntry();
    void theEmbeddedCatalogueSaysTheSame();
    void textsThatAreGiven_data();
    void textsThatAreGiven();
};

namespace {

struct Message
{
    QString context;
    QString source;
    QString comment;
    QString translation;
    bool isFinished = true;
};

Message readMessage(QXmlStreamReader& xml, const QString& context)
{
    Message message;
    message.context = context;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            message.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            message.comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            message.isFinished = !xml.attributes().hasAttribute(QLatin1String("type"));
            message.translation = xml.readElementText();
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

QVector<Message> readCatalogue(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    QVector<Message> messages;
    QString context;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.isStartElement() && xml.name() == QLatin1String("message")) {
            messages.append(readMessage(xml, context));
        }
    }
    return messages;
}

const QString catalogue = QStringLiteral(MIOLKA_SOURCE_DIR "/resources/language/english.ts");

} // namespace

void TestCatalogue::everySourceTextHasAnEntry()
{
    const QTemporaryDir directory;
    const QString copy = directory.filePath(QStringLiteral("english.ts"));
    QVERIFY(QFile::copy(catalogue, copy));
    QProcess update;
    update.start(QStringLiteral(MIOLKA_SOURCE_DIR "/scripts/update-catalogue"), {copy});
    QVERIFY(update.waitForFinished());
    QCOMPARE(update.exitCode(), 0);
    QCOMPARE(update.readAllStandardError(), QByteArray());
    const QVector<Message> messages = readCatalogue(copy);
    QVERIFY(messages.size() >= 40);
    for (const Message& message : messages) {
        QVERIFY2(message.isFinished && !message.translation.isEmpty(), qPrintable(message.source));
    }
    QCOMPARE(readCatalogue(catalogue).size(), messages.size());
}

void TestCatalogue::theEmbeddedCatalogueSaysTheSame()
{
    for (const Message& message : readCatalogue(catalogue)) {
        QCOMPARE(QCoreApplication::translate(
                     message.context.toUtf8().constData(), message.source.toUtf8().constData(),
                     message.comment.isEmpty() ? nullptr : message.comment.toUtf8().constData()),
                 message.translation);
    }
}

void TestCatalogue::textsThatAreGiven_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("english");
    const auto row = [](const char* context, const char* source, const char* english) {
        QTest::newRow(context) << QString::fromUtf8(source) << QString::fromUtf8(english);
    };
    row("MainWindow", "Start", "Overview");
    row("MainWindow", "Strona", "Page");
    row("MainWindow", "Komunikacja", "Online");
    row("MainWindow", "Wczytaj nastawy z Miolki", "Miolka -> PC Upload");
    row("MainWindow", "Sprawdz urządzenia DFU", "DFU state devices check");
    row("cMyPortSelect", "Brak urządzeń", "No devices found");
    // Nothing asks this yet.
    row("cMyServiceCommands",
        "Wykryto Miolkę w trybie aktualizacji firmware.\nCzy przywrócić ją do pracy?",
        "Miolka is in DFU (firmware update) mode.\nDo you want to put it back to normal operating "
        "mode?");
    row("cMySettingsDocument", "Zachować zmiany?", "Do you want to save changes?");
    row("cMySettingsDocument", "Otworz plik", "Open file");
    row("cMySettingsDocument", "Pliki nastaw (*.mio)", "Setup file (*.mio)");
    row("cMySettingsDocument", "Zapisz do pliku", "Save to file");
}

void TestCatalogue::textsThatAreGiven()
{
    QFETCH(QString, source);
    QFETCH(QString, english);
    QCOMPARE(QCoreApplication::translate(QTest::currentDataTag(), source.toUtf8().constData()),
             english);
}

MIOLKA_GUI_TEST_MAIN(TestCatalogue)
#include "test_catalogue.moc"
