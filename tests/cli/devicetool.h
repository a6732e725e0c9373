// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_CLI_DEVICETOOL_H
#define MIOLKA_TESTS_CLI_DEVICETOOL_H

#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "tests/cli/toolrun.h"
#include "tests/support/serveddevice.h"

#include <QTemporaryDir>

#include <csignal>

namespace support {

const QString exampleFile = QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio");
const QString coachFile = QStringLiteral(MIOLKA_SOURCE_DIR "/docs/examples/freediving-coach.mio");

/// Lines until the first of each part of writing settings, counted from 1.
constexpr int identityLines = 6;
constexpr int transferLines = 69;
constexpr int firstWriteLine = identityLines + transferLines + 1;
constexpr int firstWrittenRecord = firstWriteLine + 4; ///< behind the words
constexpr int lastWriteLine = firstWriteLine + transferLines - 1;
constexpr int lastLine = lastWriteLine + transferLines;

/// A device that holds the settings of an example, and the program with the device's port named
/// to it and a data directory of its own.
class DeviceTool
{
public:
    DeviceTool()
    {
        device.inThread([this] { device.device().loadSettings(coachFile); });
        original = eeprom();
    }

    void setFaults(const QString& specs)
    {
        device.inThread([this, &specs] {
            cMyFaults faults;
            faults.add(specs);
            device.port().setFaults(faults);
        });
    }

    /// The cable is pulled and put in again, and nothing is wrong any more.
    void mend()
    {
        setFaults(QStringLiteral("none"));
        device.inThread([this] {
            device.port().unplug();
            device.device().plugged();
            device.port().plug();
        });
    }

    [[nodiscard]] QByteArray eeprom()
    {
        QByteArray bytes;
        device.inThread([this, &bytes] { bytes = device.device().memory(EEPROM); });
        return bytes;
    }

    /// Runs in the device's thread after it answered that line, once; lines count from plugging in
    /// on.
    void afterLine(int line, std::function<void()> call)
    {
        device.inThread([this, line, call = std::move(call)] {
            QObject::connect(&device.port(), &cMyVirtualPort::lineServed, &device.port(),
                             [line, call, isDue = true](int count) mutable {
                                 if (isDue && count == line) {
                                     isDue = false;
                                     call();
                                 }
                             });
        });
    }

    /// Another byte is stored than was sent.
    void storeWrongly(int address)
    {
        QByteArray bytes = device.device().memory(EEPROM);
        bytes[address] = static_cast<char>(~bytes.at(address));
        device.device().setMemory(EEPROM, bytes);
    }

    void start(const QStringList& arguments)
    {
        tool.start(arguments + QStringList{QStringLiteral("--port"), device.path()});
    }

    ToolResult run(const QStringList& arguments, const QByteArray& input = {})
    {
        start(arguments);
        tool.process.write(input);
        return tool.finish();
    }

    /// As Ctrl-C does.
    void interrupt() { ::kill(static_cast<pid_t>(tool.process.processId()), SIGINT); }

    [[nodiscard]] QString file(const QString& name) const { return directory.filePath(name); }

    [[nodiscard]] QStringList backups() const
    {
        const QDir kept(directory.filePath(QStringLiteral("MIOLKAsoft/backups")));
        QStringList paths;
        for (const QString& name : kept.entryList(QDir::Files)) {
            paths.append(kept.filePath(name));
        }
        return paths;
    }

    /// The 1024 bytes that a settings file gives.
    [[nodiscard]] static QByteArray imageOf(const QString& path)
    {
        cMyMemoryArea image;
        image::readSettingsFile(path, image);
        const QVector<quint8> bytes = image.data(0, image::settingsImageSize);
        return QByteArray(reinterpret_cast<const char*>(bytes.constData()), bytes.size());
    }

    /// What a device holds that this file was written to by this program.
    [[nodiscard]] static QByteArray stamped(const QString& path)
    {
        return imageOf(path).replace(0, 4, QByteArray("\x01\x00\x04\x00", 4));
    }

    QTemporaryDir directory;
    ServedDevice device;
    ToolRun tool{directory.path()};
    QByteArray original;
};

} // namespace support

#endif
