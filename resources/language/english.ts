<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="pl">
<context>
    <name>MainWindow</name>
    <message>
        <source>Miolka 1.00 Beta</source>
        <translation>Miolka 1.00 Beta</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Overview</translation>
    </message>
    <message>
        <source>Parametry / Okresy</source>
        <translation>Parameters / Intervals</translation>
    </message>
    <message>
        <source>Komunikaty</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Symulacja</source>
        <translation>Simulation</translation>
    </message>
    <message>
        <source>Strona</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>Max Depth</source>
        <translation>Max Depth</translation>
    </message>
    <message>
        <source>Dive Time</source>
        <translation>Dive Time</translation>
    </message>
    <message>
        <source>Plik</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Komunikacja</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>Serwis</source>
        <translation>Service</translation>
    </message>
    <message>
        <source>Pomoc</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Pasek narzędzi</source>
        <translation>Tool bar</translation>
    </message>
    <message>
        <source>Nowy...</source>
        <translation>New...</translation>
    </message>
    <message>
        <source>Zacznij od nastaw domyślnych.</source>
        <translation>Start again from the default settings.</translation>
    </message>
    <message>
        <source>Otwórz...</source>
        <translation>Open...</translation>
    </message>
    <message>
        <source>Otwórz plik nastaw.</source>
        <translation>Open a settings file.</translation>
    </message>
    <message>
        <source>Zapisz...</source>
        <translation>Save...</translation>
    </message>
    <message>
        <source>Zapisz nastawy w bieżącym pliku.</source>
        <translation>Save the settings to the current file.</translation>
    </message>
    <message>
        <source>Zapisz jako...</source>
        <translation>Save as...</translation>
    </message>
    <message>
        <source>Zapisz nastawy w innym pliku.</source>
        <translation>Save the settings to another file.</translation>
    </message>
    <message>
        <source>Zakończ</source>
        <translation>Exit</translation>
    </message>
    <message>
        <source>Zamknij program.</source>
        <translation>Close the program.</translation>
    </message>
    <message>
        <source>Wczytaj nastawy z Miolki</source>
        <translation>Miolka -&gt; PC Upload</translation>
    </message>
    <message>
        <source>Ta wersja jeszcze nie łączy się z Miolką.</source>
        <translation>This version does not connect to the Miolka yet.</translation>
    </message>
    <message>
        <source>Zapisz nastawy do Miolki</source>
        <translation>PC -&gt; Miolka Download</translation>
    </message>
    <message>
        <source>Reset...</source>
        <translation>Reset...</translation>
    </message>
    <message>
        <source>Wyczyść statystyki...</source>
        <translation>Clear statistics...</translation>
    </message>
    <message>
        <source>Wyłącz Miolkę...</source>
        <translation>Switch Miolka Off...</translation>
    </message>
    <message>
        <source>Aktualizacja biblioteki dźwięków...</source>
        <translation>Sound library update...</translation>
    </message>
    <message>
        <source>Aktualizacja firmware...</source>
        <translation>Firmware update...</translation>
    </message>
    <message>
        <source>Pomoc...</source>
        <translation>Help...</translation>
    </message>
    <message>
        <source>Niedostępne jeszcze w tej wersji.</source>
        <translation>Not available in this version yet.</translation>
    </message>
    <message>
        <source>O Programie...</source>
        <translation>About...</translation>
    </message>
    <message>
        <source>Sprawdz urządzenia DFU</source>
        <translation>DFU state devices check</translation>
    </message>
</context>
<context>
    <name>cMySettingsDocument</name>
    <message>
        <source>Otworz plik</source>
        <translation>Open file</translation>
    </message>
    <message>
        <source>Pliki nastaw (*.mio)</source>
        <translation>Setup file (*.mio)</translation>
    </message>
    <message>
        <source>Zapisz do pliku</source>
        <translation>Save to file</translation>
    </message>
    <message>
        <source>Miolka</source>
        <translation>Miolka</translation>
    </message>
    <message>
        <source>Zachować zmiany?</source>
        <translation>Do you want to save changes?</translation>
    </message>
</context>
</TS>
