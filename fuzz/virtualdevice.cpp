// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/virtualdevice.h"

#include "editor/settingslayout.h"
#include "fuzz/lines.h"
#include "fuzz/support.h"
#include "image/hexcodec.h"
#include "image/hexrecord.h"

using fuzz::expect;

namespace {

const QByteArray notUnderstood = QByteArrayLiteral("?\r\n");

/// What runs a device by its lines, at times of its own.
class Session
{
public:
    Session()
    {
        m_device.setClock([this] { return m_now; });
        QObject::connect(&m_device, &cMyVirtualDevice::spoke, &m_device,
                         [this](const cMySpokenMessage& message) { hear(message); });
    }

    [[nodiscard]] const cMyVirtualDevice& device() const { return m_device; }

    void wait(int milliseconds) { m_now += milliseconds; }

    /// Has the line answered; fails if the answer can be none.
    QByteArray ask(const QByteArray& line)
    {
        const bool wasSimulating = m_device.isSimulating();
        const QByteArrayList before = smallMemories();
        QByteArray answer = m_device.answer(line);
        checkAnswer(line, answer);
        const bool timePasses = wasSimulating || m_device.isSimulating();
        if (answer == notUnderstood && !timePasses) {
            expect(smallMemories() == before, "what is not understood changes nothing");
        }
        expect(m_device.memory(OTP) == before.at(1) && m_device.memory(ROM) == before.at(2),
               "OTP and ROM cannot be written");
        expect(m_device.memory(FLASH).size() == emulator::memorySize(FLASH),
               "flash keeps its size");
        return answer;
    }

    void unplug()
    {
        m_device.unplugged();
        m_device.plugged();
        expect(!m_device.isSimulating(), "a device that was plugged in does not simulate");
    }

private:
    /// Those memories that are quickly compared.
    [[nodiscard]] QByteArrayList smallMemories() const
    {
        return {m_device.memory(EEPROM), m_device.memory(OTP), m_device.memory(ROM),
                m_device.memory(RAM)};
    }

    static QByteArray withoutLineEnd(QByteArray line)
    {
        line.chop(line.endsWith('\n') ? 1 : 0);
        line.chop(line.endsWith('\r') ? 1 : 0);
        return line;
    }

    /// An answer is the line itself, bytes in their place, or that it was not understood.
    static void checkAnswer(const QByteArray& line, const QByteArray& answer)
    {
        expect(answer.endsWith("\r\n") && answer.count('\n') == 1, "an answer is one line");
        const QByteArray asked = withoutLineEnd(line);
        const QByteArray told = withoutLineEnd(answer);
        if (answer == notUnderstood || told == asked) {
            return;
        }
        cMyHexRecord request;
        cMyHexRecord reply;
        expect(request.fromString(fuzz::latin1(asked)) && reply.fromString(fuzz::latin1(told)),
               "what is not repeated is a record, and so is its answer");
        expect(request.type() == image::DataRecord && reply.type() == image::DataRecord &&
                   request.offset() == reply.offset() &&
                   request.data().size() == reply.data().size(),
               "bytes come from where they were asked for, as many");
    }

    void hear(const cMySpokenMessage& message)
    {
        expect(message.rule >= 1 && message.rule <= editor::messageRuleCount, "a rule speaks");
        expect(!message.text.isEmpty(), "there is something to say");
        expect(message.time >= 0 && message.time <= m_now, "nothing is said before its time");
    }

    qint64 m_now = 0; ///< in ms
    cMyVirtualDevice m_device;
};

/// Whatever was done to the device, its settings can be read, and are what it keeps.
void checkReading(Session& session)
{
    constexpr int recordSize = 16;
    const QByteArray settings = session.device().memory(EEPROM);
    for (const char* word : {"#ROOT", "#HEX", "#EEPROM", "#READ"}) {
        expect(session.ask(word) == QByteArray(word) + "\r\n", "a word is repeated");
    }
    for (int address = 0; address < settings.size(); address += recordSize) {
        const QVector<quint8> none(recordSize, 0);
        const auto offset = static_cast<quint16>(address);
        cMyHexRecord reply;
        expect(reply.fromString(
                   fuzz::latin1(session.ask(cMyHexRecord(offset, none).toString().toLatin1()))),
               "a record is answered by one");
        expect(fuzz::bytesOf(reply.data().constData(), recordSize) ==
                   settings.mid(address, recordSize),
               "settings are read as they lie");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    constexpr int mostLines = 128; // a dive between them takes its time
    constexpr int stepTime = 2;    // in ms
    fuzz::SteppedInput input(bytes, size);
    Session session;
    for (const QByteArray& line : fuzz::deviceLines(input.bytes()).mid(0, mostLines)) {
        session.wait(stepTime * input.nextStep());
        session.ask(line);
    }
    session.unplug();
    checkReading(session);
    return 0;
}
