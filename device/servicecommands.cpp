// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/servicecommands.h"

#include "device/miolka.h"
#include "pages/question.h"

#include <QMessageBox>

#include <chrono>

namespace {

/// Long enough to use the window, or to close it.
constexpr std::chrono::seconds warningRest(5);

/// Translated for the day when the program can do it; nothing asks it yet.
[[maybe_unused]] constexpr const char* leaveBootModeQuestion =
    QT_TRANSLATE_NOOP("cMyServiceCommands", "Wykryto Miolkę w trybie aktualizacji firmware.\n"
                                            "Czy przywrócić ją do pracy?");

} // namespace

cMyServiceCommands::cMyServiceCommands(cMyMiolka& link, QWidget& window)
    : QObject(&window), m_link(link), m_window(window), m_warningRests(0)
{
}

void cMyServiceCommands::reset()
{
    if (pages::isConfirmed(
            m_window, tr("Reset..."),
            tr("Nastąpi reset Miolki bez utraty danych. W razie utraty komunikacji proszę "
               "odłączyć i podłączyć ponownie kabel USB.\nCzy chcesz kontynuować?"))) {
        m_link.reset(true);
    }
}

void cMyServiceCommands::clearStatistics()
{
    if (pages::isConfirmed(m_window, tr("Wyczyść statystyki..."),
                           tr("Czy chcesz wyczyścić statystyki (np. MAX głębokość)?"))) {
        m_link.clearStats();
    }
}

void cMyServiceCommands::powerOff()
{
    if (pages::isConfirmed(
            m_window, tr("Wyłącz Miolkę..."),
            tr("W celu ochrony baterii, przed dłuższą przerwą w użytkowaniu Miolki wskazane jest "
               "jej wyłączenie. Miolka zostanie wyłączona zaraz po odłączeniu kabla USB. Ponowne "
               "załączenie nastąpi samoczynnie po ponownym podłączeniu do USB lub ładowarki. Czy "
               "chcesz wyłączyć zasilanie Miolki?"))) {
        m_link.powerOff();
    }
}

void cMyServiceCommands::updateFirmware()
{
    if (pages::isConfirmed(
            m_window, tr("Aktualizacja firmware..."),
            tr("Przejście do trybu serwisowego. Kontynuacja możliwa tylko z poziomu "
               "zewnętrznego oprogramowania FLIP firmy ATMEL. Dalsze informacje w pliku "
               "Pomocy.\nCzy jesteś pewien, że chcesz wgrać nowy firmware?"))) {
        m_link.boot();
    }
}

void cMyServiceCommands::warnOfBootMode()
{
    if (m_warning != nullptr || !m_warningRests.hasExpired()) {
        return;
    }
    // This one text is shown as it is, in every language.
    m_warning = new QMessageBox(
        QMessageBox::Critical, tr("Błąd"),
        QStringLiteral(
            "Miolka znajduje się w trybie serwisowym.\n"
            "                           Kontynuacja możliwa tylko z poziomu zewnętrznego "
            "oprogramowania FLIP firmy ATMEL.\n"
            "                           Wyjście z trybu serwisowego za pomocą [Start Application] "
            "(na formularzu FLIP).\n"
            "                           Dalsze informacje w pliku Pomocy"),
        QMessageBox::Ok, &m_window);
    m_warning->setAttribute(Qt::WA_DeleteOnClose);
    m_warning->setTextFormat(Qt::PlainText);
    connect(m_warning, &QMessageBox::finished, this,
            [this] { m_warningRests.setRemainingTime(warningRest); });
    // Without exec(): the search for ports, which calls this, has to go on.
    m_warning->open();
}
