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

struct Given
{
    const char* context;
    const char* source;
    const char* english;
};

/// What the English catalogue has to say, whatever else it says.
const Given given[] = {
    {"MainWindow", "Start", "Overview"},
    {"MainWindow", "Parametry / Okresy", "Parameters / Intervals"},
    {"MainWindow", "Komunikaty", "Messages"},
    {"MainWindow", "Symulacja", "Simulation"},
    {"MainWindow", "Strona", "Page"},
    {"MainWindow", "Max Depth", "Max Depth"},
    {"MainWindow", "Dive Time", "Dive Time"},
    {"MainWindow", "Plik", "File"},
    {"MainWindow", "Komunikacja", "Online"},
    {"MainWindow", "Serwis", "Service"},
    {"MainWindow", "Pomoc", "Help"},
    {"MainWindow", "Nowy...", "New..."},
    {"MainWindow", "Otwórz...", "Open..."},
    {"MainWindow", "Zapisz...", "Save..."},
    {"MainWindow", "Zapisz jako...", "Save as..."},
    {"MainWindow", "Zakończ", "Exit"},
    {"MainWindow", "Wczytaj nastawy z Miolki", "Miolka -> PC Upload"},
    {"MainWindow", "Zapisz nastawy do Miolki", "PC -> Miolka Download"},
    {"MainWindow", "Reset...", "Reset..."},
    {"MainWindow", "Wyczyść statystyki...", "Clear statistics..."},
    {"MainWindow", "Wyłącz Miolkę...", "Switch Miolka Off..."},
    {"MainWindow", "Aktualizacja biblioteki dźwięków...", "Sound library update..."},
    {"MainWindow", "Aktualizacja firmware...", "Firmware update..."},
    {"MainWindow", "Pomoc...", "Help..."},
    {"MainWindow", "O Programie...", "About..."},
    {"MainWindow", "Sprawdz urządzenia DFU", "DFU state devices check"},
    {"MainWindow", "Okresy komunikatów", "Message intervals"},
    {"MainWindow", "Reguły timerów", "Timers formulas"},
    {"MainWindow", "Zapis do miolki..", "Download.."},
    {"MainWindow", "Odczyt z miolki..", "Upload.."},
    {"MainWindow", "Proszę nie odłączać urządzenia.",
     "Please don't disconnect your device during the process."},
    {"cMyTransferProgress", "Anuluj", "Cancel"},
    {"MainWindow", "N/D", "N/A"},
    {"cMyStatusPage", "N/D", "N/A"},
    {"cMyStatusPage", "Miolka działa", "Self-test: Passed"},
    {"cMyStatusPage", "Miolka nie działa", "Self-test: Error"},
    {"cMyMiolkaStatus", "Status urządzenia", "Device status"},
    {"cMyMiolkaStatus", "Miolka:", "Miolka:"},
    {"cMyMiolkaStatus", "Czujnik ciśnienia:", "Pressure sensor:"},
    {"cMyMiolkaStatus", "Układ audio:", "Audio codec:"},
    {"cMyMiolkaStatus", "Pamięć flash:", "FLASH:"},
    {"cMyMiolkaStatus", "Spójność nastaw:", "Setup:"},
    {"cMyMiolkaStatus", "Biblioteka audio:", "Sound library:"},
    {"cMyMiolkaStatus", "Komunikaty użytkownika:", "Custom messages library:"},
    {"cMyMiolkaStatus", "Firmware:", "Firmware:"},
    {"cMyMiolkaStatus", "Zamknij", "Close"},
    {"cMyMiolkaStatus", "OK", "OK"},
    {"cMyMiolkaStatus", "Awaria", "Faulty"},
    {"cMyMiolkaStatus", "Błąd", "Error"},
    {"cMyMiolkaStatus", "Miolka działa", "Self-test... Passed"},
    {"cMyMiolkaStatus", "Miolka nie działa", "Self-test... Error"},
    {"cMyMiolka", "Błąd", "Error"},
    {"cMyLibraryUpload", "Błąd", "Error"},
    {"cMyServiceCommands", "Błąd", "Error"},
    {"cMyServiceCommands", "Reset...", "Reset..."},
    {"cMyServiceCommands", "Wyczyść statystyki...", "Clear statistics..."},
    {"cMyServiceCommands", "Wyłącz Miolkę...", "Switch Miolka Off..."},
    {"cMyServiceCommands", "Aktualizacja firmware...", "Firmware update..."},
    {"cMyServiceCommands", "Czy chcesz wyczyścić statystyki (np. MAX głębokość)?",
     "Do you want to clear the statistics (MIN and MAX values: depth, time, temperature and any "
     "others)?"},
    // Nothing asks this yet.
    {"cMyServiceCommands",
     "Wykryto Miolkę w trybie aktualizacji firmware.\nCzy przywrócić ją do pracy?",
     "Miolka is in DFU (firmware update) mode.\nDo you want to put it back to normal operating "
     "mode?"},
    {"cMyPortSelect", "Brak urządzeń", "No devices found"},
    {"cMySettingsDocument", "Zachować zmiany?", "Do you want to save changes?"},
    {"cMySettingsDocument", "Miolka", "Miolka"},
    {"cMySettingsDocument", "Otworz plik", "Open file"},
    {"cMySettingsDocument", "Zapisz do pliku", "Save to file"},
    {"cMySettingsDocument", "Pliki nastaw (*.mio)", "Setup file (*.mio)"},
    {"cMyLibraryUpload", "Otworz plik", "Open file"},
    {"cMyLibraryUpload", "Biblioteka jezyka (*.mia);;Komunikaty użytkownika (*.mic)",
     "Sound library (*.mia);;Custom messages library (*.mic)"},
    {"cMyLibraryUpload", "Aktualizacja biblioteki dźwięków...", "Sound library update..."},
    {"cMyAboutDialog", "O Programie", "About"},
    {"cMyAboutDialog", "Wersja: ", "Version: "},
    {"cMyAboutDialog", "Zamknij", "Close"},
    {"cMySimWidget", "Ciśnienie aktualne", "Absolute pressure"},
    {"cMySimWidget", "Ciśnienie na powierzchni", "Atmospheric pressure"},
    {"cMySimWidget", "Głębokość aktualna", "Depth"},
    {"cMySimWidget", "Głębokość maksymalna", "Depth max"},
    {"cMySimWidget", "Głębokość średnia", "Depth avg"},
    {"cMySimWidget", "Prędkość aktualna", "Vertical speed"},
    {"cMySimWidget", "Prędkość min.", "Ascent speed max"},
    {"cMySimWidget", "Prędkość max.", "Descent speed max"},
    {"cMySimWidget", "Prędkość średnia wynurzania", "Ascent speed avg"},
    {"cMySimWidget", "Prędkość średnia zanurzania", "Descent speed avg"},
    {"cMySimWidget", "Czas nurkowania", "Dive time"},
    {"cMySimWidget", "Czas spędzony na powierzchni", "Surface time"},
    {"cMySimWidget", "Czas zanurzania", "Descent time"},
    {"cMySimWidget", "Czas spędzony na dnie", "Bottom time"},
    {"cMySimWidget", "Czas wynurzania", "Ascent time"},
    {"cMySimWidget", "Stoper 0", "Stopwatch 0"},
    {"cMySimWidget", "Timer 1", "Timer 1"},
    {"cMySimWidget", "Timer 2", "Timer 2"},
    {"cMySimWidget", "Timer 3", "Timer 3"},
    {"cMySimWidget", "Start symulacji", "START simulation"},
    {"cMySimWidget", "Stop symulacji", "STOP simulation"},
};

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
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("english");
    for (const Given& each : given) {
        QTest::addRow("%s: %s", each.context, each.source)
            << QByteArray(each.context) << QByteArray(each.source)
            << QString::fromUtf8(each.english);
    }
}

void TestCatalogue::textsThatAreGiven()
{
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QFETCH(QString, english);
    QCOMPARE(QCoreApplication::translate(context.constData(), source.constData()), english);
}

MIOLKA_GUI_TEST_MAIN(TestCatalogue)
#include "test_catalogue.moc"
