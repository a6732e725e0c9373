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
        <source>O Programie...</source>
        <translation>About...</translation>
    </message>
    <message>
        <source>Sprawdz urządzenia DFU</source>
        <translation>DFU state devices check</translation>
    </message>
    <message>
        <source>Nastawy</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Autor:</source>
        <translation>Author:</translation>
    </message>
    <message>
        <source>N/D</source>
        <translation>N/A</translation>
    </message>
    <message>
        <source>Tytuł:</source>
        <translation>Title:</translation>
    </message>
    <message>
        <source>Opis:</source>
        <translation>Description:</translation>
    </message>
    <message>
        <source>Opis</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Parametry</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>Okresy komunikatów</source>
        <translation>Message intervals</translation>
    </message>
    <message>
        <source>Informacje</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Autor</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Pozostało znaków</source>
        <translation>Characters still free</translation>
    </message>
    <message>
        <source>Tytuł</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Reguły timerów</source>
        <translation>Timers formulas</translation>
    </message>
    <message>
        <source>Status urządzenia</source>
        <translation>Device status</translation>
    </message>
    <message>
        <source>Miolka:</source>
        <translation>Miolka:</translation>
    </message>
    <message>
        <source>Połączenie:</source>
        <translation>Connection:</translation>
    </message>
    <message>
        <source>Wielkość pamięci:</source>
        <translation>Memory size:</translation>
    </message>
    <message>
        <source>Nr seryjny:</source>
        <translation>Serial number:</translation>
    </message>
    <message>
        <source>Wersja sprzętu:</source>
        <translation>Hardware version:</translation>
    </message>
    <message>
        <source>Szczegóły</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Pokaż wynik autotestu Miolki.</source>
        <translation>Show the results of the Miolka&apos;s self-test.</translation>
    </message>
    <message>
        <source>Odśwież status</source>
        <translation>Refresh status</translation>
    </message>
    <message>
        <source>Odczytaj status z Miolki.</source>
        <translation>Read the status from the Miolka.</translation>
    </message>
    <message>
        <source>Oprogramowanie</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Wersja
oprogramowania:</source>
        <translation>Firmware
version:</translation>
    </message>
    <message>
        <source>Wersja
biblioteki dźwięków:</source>
        <translation>Sound library
version:</translation>
    </message>
    <message>
        <source>Język:</source>
        <translation>Language:</translation>
    </message>
    <message>
        <source>Wersja:</source>
        <translation>Version:</translation>
    </message>
    <message>
        <source>Wczytaj do programu nastawy, które ma Miolka.</source>
        <translation>Read the settings that the Miolka holds.</translation>
    </message>
    <message>
        <source>Zapisz nastawy z programu w Miolce.</source>
        <translation>Write the settings to the Miolka.</translation>
    </message>
    <message>
        <source>Uruchom Miolkę ponownie; dane pozostają.</source>
        <translation>Restart the Miolka; its data stay.</translation>
    </message>
    <message>
        <source>Wyczyść wartości MIN i MAX w Miolce.</source>
        <translation>Clear the MIN and MAX values in the Miolka.</translation>
    </message>
    <message>
        <source>Wyłącz Miolkę po odłączeniu kabla USB.</source>
        <translation>Switch the Miolka off once the USB cable is unplugged.</translation>
    </message>
    <message>
        <source>Przełącz Miolkę w tryb serwisowy.</source>
        <translation>Put the Miolka into its firmware update mode.</translation>
    </message>
    <message>
        <source>Zapis do miolki..</source>
        <translation>Download..</translation>
    </message>
    <message>
        <source>Odczyt z miolki..</source>
        <translation>Upload..</translation>
    </message>
    <message>
        <source>Połączenie z Miolką przerwane przed końcem transmisji.</source>
        <translation>The connection to the Miolka was lost before the transfer was complete.</translation>
    </message>
    <message>
        <source>Zapisz do Miolki bibliotekę dźwięków lub komunikaty użytkownika.</source>
        <translation>Put a sound library or custom messages library into the Miolka.</translation>
    </message>
    <message>
        <source>Otwórz podręcznik użytkownika.</source>
        <translation>Open the user manual.</translation>
    </message>
    <message>
        <source>Pokaż wersję programu, autorów i licencję.</source>
        <translation>Show the version of the program, its authors and its licence.</translation>
    </message>
    <message>
        <source>Proszę nie odłączać urządzenia.</source>
        <translation>Please don&apos;t disconnect your device during the process.</translation>
    </message>
</context>
<context>
    <name>cMyAboutDialog</name>
    <message>
        <source>O Programie</source>
        <translation>About</translation>
    </message>
    <message>
        <source>Wersja:</source>
        <translation>Version:</translation>
    </message>
    <message>
        <source>Autorzy MIOLKAsoft</source>
        <translation>By the MIOLKAsoft authors</translation>
    </message>
    <message>
        <source>Copyright © 2026 autorzy MIOLKAsoft.
Wolne oprogramowanie na licencji GPL w wersji 3 lub nowszej, bez żadnej gwarancji.</source>
        <translation>Copyright © 2026 the MIOLKAsoft authors.
Free software under the GNU GPL, version 3 or later, without any warranty.</translation>
    </message>
    <message>
        <source>Zamknij</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Wersja: </source>
        <translation>Version: </translation>
    </message>
</context>
<context>
    <name>cMyDeviceActions</name>
    <message>
        <source>Najpierw podłącz Miolkę.</source>
        <translation>Connect a Miolka first.</translation>
    </message>
</context>
<context>
    <name>cMyLibraryUpload</name>
    <message>
        <source>Otworz plik</source>
        <translation>Open file</translation>
    </message>
    <message>
        <source>Biblioteka jezyka (*.mia);;Komunikaty użytkownika (*.mic)</source>
        <translation>Sound library (*.mia);;Custom messages library (*.mic)</translation>
    </message>
    <message>
        <source>Aktualizacja biblioteki dźwięków...</source>
        <translation>Sound library update...</translation>
    </message>
    <message>
        <source>Nastąpi aktualizacja biblioteki dźwięków.
Czy chcesz kontynuować?</source>
        <translation>The sound library will be updated.
Do you want to continue?</translation>
    </message>
    <message>
        <source>Błąd</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Ten plik jest za duży na bibliotekę dźwięków.</source>
        <translation>This file is too large for a sound library.</translation>
    </message>
</context>
<context>
    <name>cMyMiolka</name>
    <message>
        <source>Błąd</source>
        <translation>Error</translation>
    </message>
</context>
<context>
    <name>cMyMiolkaStatus</name>
    <message>
        <source>Status urządzenia</source>
        <translation>Device status</translation>
    </message>
    <message>
        <source>Miolka:</source>
        <translation>Miolka:</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Czujnik ciśnienia:</source>
        <translation>Pressure sensor:</translation>
    </message>
    <message>
        <source>Układ audio:</source>
        <translation>Audio codec:</translation>
    </message>
    <message>
        <source>Pamięć flash:</source>
        <translation>FLASH:</translation>
    </message>
    <message>
        <source>Spójność nastaw:</source>
        <translation>Setup:</translation>
    </message>
    <message>
        <source>Biblioteka audio:</source>
        <translation>Sound library:</translation>
    </message>
    <message>
        <source>Komunikaty użytkownika:</source>
        <translation>Custom messages library:</translation>
    </message>
    <message>
        <source>Firmware:</source>
        <translation>Firmware:</translation>
    </message>
    <message>
        <source>Zamknij</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Awaria</source>
        <translation>Faulty</translation>
    </message>
    <message>
        <source>Błąd</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Miolka działa</source>
        <translation>Self-test... Passed</translation>
    </message>
    <message>
        <source>Miolka nie działa</source>
        <translation>Self-test... Error</translation>
    </message>
</context>
<context>
    <name>cMyParametersTab</name>
    <message>
        <source>Próg zanurzenia powinien być co najmniej 10cm większy od progu wynurzenia.</source>
        <translation>The dive start threshold should be at least 10 cm greater than the surfacing threshold.</translation>
    </message>
    <message>
        <source>Małe wartości (poniżej 50cm) mogą powodować problemy związane z transportem Miolki (nieoczekiwane wejście i pozostanie w trybie nurkowania).</source>
        <translation>Small values (below 50 cm) may cause trouble when the Miolka is transported (it may enter dive mode unexpectedly and stay in it).</translation>
    </message>
    <message>
        <source>Powrót po podłączeniu USB lub manewrze &amp;quot;sztucznego wynurzenia&amp;quot; (szczegóły w instrukcji).</source>
        <translation>It comes back when USB is connected, or by the &amp;quot;artificial surfacing&amp;quot; manoeuvre (see the manual).</translation>
    </message>
    <message>
        <source>-10.0 - 100.0</source>
        <translation>-10.0 - 100.0</translation>
    </message>
</context>
<context>
    <name>cMyPortNote</name>
    <message>
        <source>Transmisja używa %1; uruchom program ponownie, aby użyć %2</source>
        <translation>Transfers use %1; restart the program to use %2</translation>
    </message>
</context>
<context>
    <name>cMyPortSelect</name>
    <message>
        <source>Brak urządzeń</source>
        <translation>No devices found</translation>
    </message>
    <message>
        <source>Port Miolki</source>
        <translation>Port of the Miolka</translation>
    </message>
</context>
<context>
    <name>cMyRuleGrid</name>
    <message>
        <source>Reguła timera %1, %2</source>
        <translation>Timer rule %1, %2</translation>
    </message>
    <message>
        <source>Reguła komunikatu %1, %2</source>
        <translation>Message rule %1, %2</translation>
    </message>
    <message>
        <source>Nr</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>powiedz</source>
        <translation>say</translation>
    </message>
    <message>
        <source>Jest</source>
        <translation>Is</translation>
    </message>
</context>
<context>
    <name>cMyServiceCommands</name>
    <message>
        <source>Reset...</source>
        <translation>Reset...</translation>
    </message>
    <message>
        <source>Nastąpi reset Miolki bez utraty danych. W razie utraty komunikacji proszę odłączyć i podłączyć ponownie kabel USB.
Czy chcesz kontynuować?</source>
        <translation>The Miolka will be reset without loss of data. If the connection is lost, please unplug the USB cable and plug it in again.
Do you want to continue?</translation>
    </message>
    <message>
        <source>Wyczyść statystyki...</source>
        <translation>Clear statistics...</translation>
    </message>
    <message>
        <source>Czy chcesz wyczyścić statystyki (np. MAX głębokość)?</source>
        <translation>Do you want to clear the statistics (MIN and MAX values: depth, time, temperature and any others)?</translation>
    </message>
    <message>
        <source>Wyłącz Miolkę...</source>
        <translation>Switch Miolka Off...</translation>
    </message>
    <message>
        <source>W celu ochrony baterii, przed dłuższą przerwą w użytkowaniu Miolki wskazane jest jej wyłączenie. Miolka zostanie wyłączona zaraz po odłączeniu kabla USB. Ponowne załączenie nastąpi samoczynnie po ponownym podłączeniu do USB lub ładowarki. Czy chcesz wyłączyć zasilanie Miolki?</source>
        <translation>To protect the battery, the Miolka should be switched off before it is left unused for a longer time. It will switch off as soon as the USB cable is unplugged, and on again by itself when it is connected to USB or a charger. Do you want to switch the Miolka off?</translation>
    </message>
    <message>
        <source>Aktualizacja firmware...</source>
        <translation>Firmware update...</translation>
    </message>
    <message>
        <source>Przejście do trybu serwisowego. Kontynuacja możliwa tylko z poziomu zewnętrznego oprogramowania FLIP firmy ATMEL. Dalsze informacje w pliku Pomocy.
Czy jesteś pewien, że chcesz wgrać nowy firmware?</source>
        <translation>The Miolka will enter its firmware update mode, where only the external program FLIP by ATMEL can go on. See the Help file for details.
Are you sure that you want to install new firmware?</translation>
    </message>
    <message>
        <source>Błąd</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Wykryto Miolkę w trybie aktualizacji firmware.
Czy przywrócić ją do pracy?</source>
        <translation>Miolka is in DFU (firmware update) mode.
Do you want to put it back to normal operating mode?</translation>
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
<context>
    <name>cMySettingsField</name>
    <message>
        <source>Wersja programu</source>
        <translation>Program version</translation>
    </message>
    <message>
        <source>Autor</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Tytuł</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>2. Częstotliwość próbkowania głębokości</source>
        <translation>2. Depth sampling rate</translation>
    </message>
    <message>
        <source>1. Głośność</source>
        <translation>1. Speaker volume</translation>
    </message>
    <message>
        <source>3. Czas przejścia w tryb uśpienia po wynurzeniu</source>
        <translation>3. Time to suspend mode after surfacing</translation>
    </message>
    <message>
        <source>4. Okres próbkowania głębokości w trybie uśpienia</source>
        <translation>4. Depth sampling period in suspend mode</translation>
    </message>
    <message>
        <source>5. Próg zanurzenia</source>
        <translation>5. Dive start depth threshold</translation>
    </message>
    <message>
        <source>6. Próg wynurzenia</source>
        <translation>6. Surfacing depth threshold</translation>
    </message>
    <message>
        <source>7. Próg rozpoczęcia wynurzania</source>
        <translation>7. Ascent phase speed threshold</translation>
    </message>
    <message>
        <source>8. Próg rozpoczęcia pobytu na dnie</source>
        <translation>8. Bottom phase speed threshold</translation>
    </message>
    <message>
        <source>9. Zasolenie wody</source>
        <translation>9. Local salinity</translation>
    </message>
    <message>
        <source>10. Żródło temperatury do wyliczenia gęstości wody</source>
        <translation>10. Temperature source for the water density</translation>
    </message>
    <message>
        <source>11. Stała temperatura do wyliczenia gęstości wody</source>
        <translation>11. Fixed temperature for the water density</translation>
    </message>
    <message>
        <source>Przyspieszenie ziemskie</source>
        <translation>Local gravity</translation>
    </message>
    <message>
        <source>12. Wysokość n.p.m.</source>
        <translation>12. AMSL</translation>
    </message>
    <message>
        <source>13. Szerokość geograficzna</source>
        <translation>13. Latitude (N or S)</translation>
    </message>
    <message>
        <source>Okres A</source>
        <translation>Period A</translation>
    </message>
    <message>
        <source>Okres B</source>
        <translation>Period B</translation>
    </message>
    <message>
        <source>Okres C</source>
        <translation>Period C</translation>
    </message>
    <message>
        <source>Okres D</source>
        <translation>Period D</translation>
    </message>
    <message>
        <source>Dystans E</source>
        <translation>Distance E</translation>
    </message>
    <message>
        <source>Dystans F</source>
        <translation>Distance F</translation>
    </message>
    <message>
        <source>Dystans G</source>
        <translation>Distance G</translation>
    </message>
    <message>
        <source>Dystans H</source>
        <translation>Distance H</translation>
    </message>
    <message>
        <source>Kiedy</source>
        <translation>When</translation>
    </message>
    <message>
        <source>Wartość</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Porównanie</source>
        <translation>Comparison</translation>
    </message>
    <message>
        <source>Próg</source>
        <translation>Threshold</translation>
    </message>
    <message>
        <source>Akcja</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>Czas</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Komunikat</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Forma</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>Powtarzanie</source>
        <translation>Repetition</translation>
    </message>
    <message>
        <source>Opis</source>
        <translation>Description</translation>
    </message>
</context>
<context>
    <name>cMySimWidget</name>
    <message>
        <source>Form</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>Ciśnienie aktualne</source>
        <translation>Absolute pressure</translation>
    </message>
    <message>
        <source>Ciśnienie na powierzchni</source>
        <translation>Atmospheric pressure</translation>
    </message>
    <message>
        <source>Głębokość aktualna</source>
        <translation>Depth</translation>
    </message>
    <message>
        <source>Głębokość maksymalna</source>
        <translation>Depth max</translation>
    </message>
    <message>
        <source>Głębokość średnia</source>
        <translation>Depth avg</translation>
    </message>
    <message>
        <source>Prędkość aktualna</source>
        <translation>Vertical speed</translation>
    </message>
    <message>
        <source>Prędkość min.</source>
        <translation>Ascent speed max</translation>
    </message>
    <message>
        <source>Prędkość max.</source>
        <translation>Descent speed max</translation>
    </message>
    <message>
        <source>Prędkość średnia wynurzania</source>
        <translation>Ascent speed avg</translation>
    </message>
    <message>
        <source>Prędkość średnia zanurzania</source>
        <translation>Descent speed avg</translation>
    </message>
    <message>
        <source>Czas nurkowania</source>
        <translation>Dive time</translation>
    </message>
    <message>
        <source>Czas spędzony na powierzchni</source>
        <translation>Surface time</translation>
    </message>
    <message>
        <source>Czas zanurzania</source>
        <translation>Descent time</translation>
    </message>
    <message>
        <source>Czas spędzony na dnie</source>
        <translation>Bottom time</translation>
    </message>
    <message>
        <source>Czas wynurzania</source>
        <translation>Ascent time</translation>
    </message>
    <message>
        <source>Stoper 0</source>
        <translation>Stopwatch 0</translation>
    </message>
    <message>
        <source>Timer 1</source>
        <translation>Timer 1</translation>
    </message>
    <message>
        <source>Timer 2</source>
        <translation>Timer 2</translation>
    </message>
    <message>
        <source>Timer 3</source>
        <translation>Timer 3</translation>
    </message>
    <message>
        <source>Prędkość można zmieniać w czasie symulacji.</source>
        <translation>The speed can be changed while a simulation runs.</translation>
    </message>
    <message>
        <source>Prędkość pionowa</source>
        <translation>Vertical speed</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Start symulacji</source>
        <translation>START simulation</translation>
    </message>
    <message>
        <source>Stop symulacji</source>
        <translation>STOP simulation</translation>
    </message>
</context>
<context>
    <name>cMyStatusPage</name>
    <message>
        <source>Miolka działa</source>
        <translation>Self-test: Passed</translation>
    </message>
    <message>
        <source>Miolka nie działa</source>
        <translation>Self-test: Error</translation>
    </message>
    <message>
        <source>N/D</source>
        <translation>N/A</translation>
    </message>
</context>
<context>
    <name>cMyTableModel</name>
    <message>
        <source>Nazwa</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Wartosc</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Faktor</source>
        <translation>Factor</translation>
    </message>
    <message>
        <source>Jednostka</source>
        <translation>Unit</translation>
    </message>
</context>
<context>
    <name>cMyTransferProgress</name>
    <message>
        <source>Anuluj</source>
        <translation>Cancel</translation>
    </message>
</context>
</TS>
