// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/tour.h"

#include "tests/endtoend/devicework.h"
#include "tests/support/contents.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

enum Page { StartPage, ParametersPage, MessagesPage };

const QString exampleFile = QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio");
const QString exampleTitle = QStringLiteral("Training dives, 20 m");
const QString firstRecordWritten =
    QStringLiteral(":1000000001000400000000000000000000000000EB"); ///< by version 1.0.4.0

const QString deviceFile = QStringLiteral("from-device.mio");
const QString editedFile = QStringLiteral("edited.mio");
const QString writtenFile = QStringLiteral("written.mio");
const QString readBackFile = QStringLiteral("read-back.mio");

support::SessionOptions withVirtualDevice()
{
    support::SessionOptions options;
    options.emulatorOptions =
        QStringList{QStringLiteral("--unplugged"), QStringLiteral("--settings"), exampleFile};
    return options;
}

} // namespace

const std::array<Tour::Step, 20> Tour::steps = {{
    {"start without a device", "no-device", &Tour::startWithoutDevice},
    {"plug a device in", nullptr, &Tour::plug},
    {"see its status", "status", &Tour::seeStatus},
    {"open the self-test's details", "details", &Tour::openDetails},
    {"close them", nullptr, &Tour::closeDetails},
    {"read its settings", "settings-read", &Tour::read},
    {"change a message rule", "rule-changed", &Tour::changeRule},
    {"let it speak in a dive", "rules-for-dive", &Tour::prepareDive},
    {"write the settings to the device", nullptr, &Tour::write},
    {"unplug it and plug it in again", nullptr, &Tour::replug},
    {"read the settings back", "read-back", &Tour::readBack},
    {"put a sound library into the device", "library", &Tour::updateLibrary},
    {"see who made the program", "about", &Tour::openAbout},
    {"close that", nullptr, &Tour::closeAbout},
    {"dive down", "descending", &Tour::descend},
    {"stop there", "stopped", &Tour::stop},
    {"rise to the surface", "surfaced", &Tour::ascend},
    {"end the simulation", "dive-ended", &Tour::endDive},
    {"unplug the device", "unplugged", &Tour::unplug},
    {"close the program", nullptr, &Tour::close},
}};

Tour::Tour(const QDir& pictures) : m_pictures(pictures), m_session(withVirtualDevice()) {}

bool Tour::run()
{
    QTextStream out(stdout);
    for (const Step& step : steps) {
        ++m_number;
        Outcome outcome = (this->*step.take)();
        if (outcome.error.isEmpty() && step.picture != nullptr &&
            !photograph(QString::fromLatin1(step.picture))) {
            outcome.error = m_session.error();
        }
        const bool isDone = outcome.error.isEmpty();
        out << (isDone ? "ok     " : "FAILED ") << step.caption << ": "
            << (isDone ? outcome.seen : outcome.error) << Qt::endl;
        if (!isDone) {
            photograph(QStringLiteral("failed"));
            constexpr int lastLines = 20;
            out << m_session.logged().section(QLatin1Char('\n'), -lastLines);
            return false;
        }
    }
    return true;
}

bool Tour::photograph(const QString& name)
{
    constexpr int digits = 2;
    return m_session.grab(m_pictures.absoluteFilePath(
        QStringLiteral("tour-%1-%2.png").arg(m_number, digits, 10, QLatin1Char('0')).arg(name)));
}

QByteArray Tour::contents(const QString& name) const
{
    return support::contentsOf(m_session.path(name));
}

Tour::Outcome Tour::startWithoutDevice()
{
    if (!m_session.isRunning()) {
        return {{}, m_session.error()};
    }
    const QString shown = m_session.text(QStringLiteral("portSelect"));
    if (shown != QLatin1String("No devices found")) {
        return {{}, QStringLiteral("the selector shows \"%1\"").arg(shown)};
    }
    return {QStringLiteral("the selector shows \"%1\", what needs a device is disabled").arg(shown),
            support::checkDeviceActions(m_session, false)};
}

Tour::Outcome Tour::plug()
{
    const QString error = support::plugIn(m_session);
    return {QStringLiteral("the selector shows \"%1\", what needs a device is enabled")
                .arg(m_session.text(QStringLiteral("portSelect"))),
            error};
}

Tour::Outcome Tour::seeStatus()
{
    if (!m_session.page(StartPage)) {
        return {{}, m_session.error()};
    }
    const QString error = support::waitForStatus(m_session);
    if (!error.isEmpty()) {
        return {{}, error};
    }
    QStringList seen;
    for (const char* field :
         {"lMiolkaStatus", "lMiolkaPort", "lSerialNumber", "lHardwareVesrion", "lFirmwareVersion",
          "lMemoryAmount", "lVoiceLang", "lVoiceVersion", "lParamVersion", "lParamAutor",
          "lParamTytul", "lmaxDepth", "lDiveTime"}) {
        const QString text = m_session.text(QString::fromLatin1(field));
        if (text.isEmpty() || text == QLatin1String("N/A")) {
            return {{}, QStringLiteral("%1 shows \"%2\"").arg(QString::fromLatin1(field), text)};
        }
        seen += text;
    }
    if (!seen.contains(QStringLiteral("ttyACM0")) || !seen.contains(exampleTitle)) {
        return {{}, QStringLiteral("another device's status: ") + seen.join(QStringLiteral(", "))};
    }
    return {seen.join(QStringLiteral(", ")), {}};
}

Tour::Outcome Tour::openDetails()
{
    if (!m_session.click(QStringLiteral("pbDetails"))) {
        return {{}, m_session.error()};
    }
    m_session.waitFor([this] { return !m_session.dialog().isEmpty(); });
    QStringList texts;
    const QJsonArray labels = m_session.dialog().value(QLatin1String("texts")).toArray();
    for (const QJsonValue& label : labels) {
        texts += label.toString();
    }
    return {texts.join(QLatin1Char(' ')), texts.contains(QStringLiteral("Pressure sensor:"))
                                              ? QString()
                                              : QStringLiteral("the dialog did not come up")};
}

Tour::Outcome Tour::closeDetails()
{
    if (!m_session.click(QStringLiteral("pushButton")) || !m_session.waitForNoDialog()) {
        return {{}, m_session.error()};
    }
    return {QStringLiteral("the window is free again"), {}};
}

Tour::Outcome Tour::read()
{
    // Slow enough to be seen.
    constexpr int slow = 20;
    const bool begins = m_session.page(ParametersPage) && m_session.latency(slow) &&
                        m_session.trigger(QStringLiteral("actionReadSettings")) &&
                        m_session.waitFor([this] {
                            return m_session.dialog().value(QLatin1String("value")).toInt() > 0;
                        });
    if (!begins || !photograph(QStringLiteral("reading"))) {
        return {{}, QStringLiteral("no progress: ") + m_session.error()};
    }
    if (!m_session.waitForNoDialog() || !m_session.latency(0)) {
        return {{}, QStringLiteral("it does not end")};
    }
    const QString title = m_session.text(QStringLiteral("leTitle"));
    if (title != exampleTitle) {
        return {{}, QStringLiteral("the title is \"%1\"").arg(title)};
    }
    const QString error = support::saveAs(m_session, m_session.path(deviceFile));
    if (error.isEmpty() && contents(deviceFile) != support::contentsOf(exampleFile)) {
        return {{}, QStringLiteral("what was read is not what the device held")};
    }
    return {QStringLiteral("\"%1\", byte for byte what the device held").arg(title), error};
}

Tour::Outcome Tour::changeRule()
{
    const QString form = QStringLiteral("par02Cb5");
    const bool isDone =
        m_session.page(MessagesPage) &&
        m_session.chooseText(QStringLiteral("par02Cb1"), QStringLiteral("underwater")) &&
        m_session.chooseText(QStringLiteral("par02Cb2"), QStringLiteral("Depth max")) &&
        m_session.chooseText(QStringLiteral("par02Cb3"), QStringLiteral(">=")) &&
        m_session.setValue(QStringLiteral("par02Sb1"), 20) &&
        m_session.chooseText(QStringLiteral("par02Cb4"), QStringLiteral("Depth max")) &&
        m_session.choose(form, 2) && m_session.choose(QStringLiteral("par02Cb6"), 0);
    if (!isDone) {
        return {{}, m_session.error()};
    }
    QStringList seen;
    for (const char* input :
         {"par02Cb1", "par02Cb2", "par02Cb3", "par02Sb1", "par02Cb4", "par02Cb5", "par02Cb6"}) {
        seen += m_session.text(QString::fromLatin1(input));
    }
    const QString error = support::saveAs(m_session, m_session.path(editedFile));
    if (error.isEmpty() && contents(editedFile) == contents(deviceFile)) {
        return {{}, QStringLiteral("the settings are as they were")};
    }
    return {seen.join(QLatin1Char(' ')), error};
}

Tour::Outcome Tour::write()
{
    const QString error = support::transfer(m_session, QStringLiteral("actionWriteSettings"));
    if (!error.isEmpty()) {
        return {{}, error};
    }
    // The program writes its own version into what it sends; all else is as it was saved.
    QStringList expected = QString::fromLatin1(contents(diveFile())).split(QLatin1Char('\n'));
    expected.first() = firstRecordWritten;
    const QStringList records = support::lastWritten(m_session.trace());
    if (records != expected) {
        return {{},
                QStringLiteral("%1 records were sent, others than in the file saved before")
                    .arg(records.size())};
    }
    return {QStringLiteral("%1 records, those of the file saved before").arg(records.size()),
            support::saveAs(m_session, m_session.path(writtenFile))};
}

Tour::Outcome Tour::replug()
{
    QString error = support::unplug(m_session);
    if (error.isEmpty()) {
        error = support::plugIn(m_session);
    }
    return {QStringLiteral("one error box; then everything is enabled again"), error};
}

Tour::Outcome Tour::readBack()
{
    for (const QString& error : {support::startAfresh(m_session),
                                 support::transfer(m_session, QStringLiteral("actionReadSettings")),
                                 support::saveAs(m_session, m_session.path(readBackFile))}) {
        if (!error.isEmpty()) {
            return {{}, error};
        }
    }
    if (contents(readBackFile) != contents(writtenFile)) {
        return {{}, QStringLiteral("the device does not hold what was written")};
    }
    return {QStringLiteral("byte for byte what was written"), {}};
}

Tour::Outcome Tour::unplug()
{
    if (!m_session.page(StartPage)) {
        return {{}, m_session.error()};
    }
    const QString error = support::unplug(m_session);
    if (!error.isEmpty()) {
        return {{}, error};
    }
    const QString status = m_session.text(QStringLiteral("lMiolkaStatus"));
    if (status != QLatin1String("N/A")) {
        return {{}, QStringLiteral("the status is \"%1\"").arg(status)};
    }
    return {QStringLiteral("one error box, the status is \"%1\"").arg(status), {}};
}

Tour::Outcome Tour::close()
{
    if (!m_session.close()) {
        return {{}, m_session.error()};
    }
    const auto status = m_session.exitStatus();
    if (status != std::make_optional(0)) {
        return {{},
                status ? QStringLiteral("it ends with %1").arg(*status)
                       : QStringLiteral("it does not end")};
    }
    return {QStringLiteral("it ends with 0"), {}};
}

/// Takes the tour and leaves its pictures in the directory named first. Ends with 1 at the first
/// step that fails.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        QTextStream(stdout) << "usage: miolka-tour DIRECTORY\n";
        return 2;
    }
    const QDir pictures(arguments.last());
    pictures.mkpath(QStringLiteral("."));
    return Tour(pictures).run() ? 0 : 1;
}
