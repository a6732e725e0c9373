// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/tour.h"
#include "tests/support/librarytext.h"

#include <QFile>

namespace {

constexpr int startPage = 0;
constexpr int librarySize = 0x10000;
const QString language = QStringLiteral("Esperanto");

} // namespace

Tour::Outcome Tour::updateLibrary()
{
    QFile file(m_session.path(QStringLiteral("esperanto.mia")));
    const QByteArray text = support::libraryText(support::libraryImage(
        librarySize, 1, language.toLatin1(), QByteArray::fromHex("07060504")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        return {{}, file.errorString()};
    }
    file.close();
    // Slow enough to be seen.
    constexpr int slow = 1;
    constexpr int later = 1000;
    const QString error = support::beginUpload(m_session, file.fileName());
    if (!error.isEmpty()) {
        return {{}, error};
    }
    const bool moves = m_session.latency(slow) && m_session.waitFor([this] {
        return m_session.dialog().value(QLatin1String("value")).toInt() > later;
    });
    if (!moves || !photograph(QStringLiteral("library-on-its-way"))) {
        return {{}, QStringLiteral("no progress: ") + m_session.error()};
    }
    const QString held = QStringLiteral("lVoiceLang");
    const bool isThere = m_session.latency(0) && m_session.waitForNoDialog() &&
                         m_session.page(startPage) &&
                         m_session.waitFor([&] { return m_session.text(held) == language; });
    return {QStringLiteral("%1 records; the device's library is %2, version %3")
                .arg(text.count('\n'))
                .arg(m_session.text(held), m_session.text(QStringLiteral("lVoiceVersion"))),
            isThere ? QString() : QStringLiteral("the device does not tell of the new library")};
}

Tour::Outcome Tour::openAbout()
{
    if (!m_session.trigger(QStringLiteral("actionAbout")) ||
        !m_session.waitForDialog(QStringLiteral("About"))) {
        return {{}, QStringLiteral("the dialog did not come up: ") + m_session.error()};
    }
    QStringList texts;
    for (const char* name : {"label_2", "lVersion", "label_5"}) {
        texts += m_session.text(QString::fromLatin1(name));
    }
    return {texts.join(QStringLiteral(", ")), {}};
}

Tour::Outcome Tour::closeAbout()
{
    if (!m_session.press(QStringLiteral("Return")) || !m_session.waitForNoDialog()) {
        return {{}, QStringLiteral("it stays: ") + m_session.error()};
    }
    return {QStringLiteral("the window is free again"), {}};
}
