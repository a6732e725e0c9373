// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_SESSION_H
#define MIOLKA_ENDTOEND_SESSION_H

#include <QJsonArray>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <optional>

namespace support {

/// How a session is to be started.
struct SessionOptions
{
    bool withEmulator = true;    ///< else the program runs by itself
    QStringList emulatorOptions; ///< further ones
    bool withTrace = true;       ///< without one, what goes over the wire is not kept
    /// Also root's program is then kept out by what keeps other users out.
    bool withPrivileges = true;
    QStringList arguments; ///< of the program
    QString platform = QStringLiteral("offscreen");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

/// The unmodified program with a virtual device, used as a person uses it, from another process.
/// Needs no event loop. One with virtual devices waits for others' to end: to the system, a port in
/// use is in use by its name, whatever stands behind it. What the program refuses or does not have
/// is told by error().
class Session
{
public:
    /// Starts the program and waits until it answers; isRunning() tells whether that worked.
    explicit Session(const SessionOptions& options = {});

    /// Closes the program, or kills it after ten seconds.
    ~Session();
    Q_DISABLE_COPY_MOVE(Session)

    /// Whether the program is there and answers.
    [[nodiscard]] bool isRunning();

    /// Why the last request failed.
    [[nodiscard]] QString error() const { return m_error; }

    /// Sends a request; its value, or nothing if it was refused.
    std::optional<QJsonValue> ask(const QJsonObject& request);
    std::optional<QJsonValue> ask(const QString& request, const QString& name = {});

    /// Sends a line as it is; the answer as it came.
    QJsonObject askRaw(const QByteArray& line);

    /// What the object with that name shows; a null text if there is no such object.
    [[nodiscard]] QString text(const QString& name);
    /// Nothing, which equals neither true nor false, if there is no such object.
    [[nodiscard]] std::optional<bool> isEnabled(const QString& name);
    [[nodiscard]] std::optional<bool> isVisible(const QString& name);
    [[nodiscard]] QStringList items(const QString& name);
    /// The chosen item's; -1 if there is none.
    [[nodiscard]] int index(const QString& name);
    [[nodiscard]] QString title();
    [[nodiscard]] QString statusMessage();

    /// These do what a person does, and are false if a person could not do that now.
    bool trigger(const QString& name);
    bool click(const QString& name);
    bool choose(const QString& name, int index);
    bool chooseText(const QString& name, const QString& itemText);
    bool type(const QString& name, const QString& text);
    bool setValue(const QString& name, double value);
    /// To what has the keyboard, or to the widget with that name.
    bool press(const QString& key, const QString& name = {});
    bool page(int index);
    /// Presses the dialog's button with that name of Qt's, for example "Yes"; or "escape".
    bool answer(const QString& button);
    bool cancel();
    bool chooseFile(const QString& path);
    bool close();

    /// The dialog in front: class, title, text, label, value, maximum, texts, buttons. Empty if
    /// there is none.
    [[nodiscard]] QJsonObject dialog();
    /// Every dialog that came up since this was last asked.
    QJsonArray takeDialogs();
    /// Keeps a picture of the program.
    bool grab(const QString& file);
    /// The longest time in milliseconds that the window did not react since this was last asked.
    [[nodiscard]] int takeLongestGap();

    /// Devices are counted from 0.
    bool unplug(int device = 0);
    bool plug(int device = 0);
    /// Lets the device misbehave; "none" ends that.
    bool fault(const QString& spec);
    bool latency(int milliseconds);

    /// Waits until the condition holds; false if it does not in that time.
    bool waitFor(const std::function<bool()>& condition, int milliseconds = 10000);
    bool waitForDialog(const QString& title, int milliseconds = 10000);
    bool waitForNoDialog(int milliseconds = 30000);

    /// Complete lines of what went over the wire.
    [[nodiscard]] QStringList trace() const;
    /// Where they lie, for what is too long to be read as a whole again and again.
    [[nodiscard]] QString tracePath() const;
    /// What program and emulator wrote to their error output.
    [[nodiscard]] QString logged() const;
    /// The path of a file in the session's own directory.
    [[nodiscard]] QString path(const QString& name) const { return m_directory.filePath(name); }

    /// Number of the process that was started; 0 once it has ended.
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }

    /// Number of the process that is the program itself.
    [[nodiscard]] qint64 programId() const;

    /// What the program sees: also another one that has it finds the virtual ports.
    [[nodiscard]] QProcessEnvironment programEnvironment() const;

    /// The terminal behind the device's port; empty if it is not plugged in.
    [[nodiscard]] QString terminal(int device = 0) const;

    /// Stops everything that was started for that long, as a system under load does.
    void pauseProgram(int milliseconds);

    /// Waits for the end of the program; nothing if it does not end, -1 if it crashed.
    std::optional<int> exitStatus(int milliseconds = 10000);

private:
    [[nodiscard]] QProcessEnvironment environment(const SessionOptions& options) const;
    void start(const SessionOptions& options);
    void killGroup();
    bool reservePorts();
    bool accept();
    bool control(const QString& command);
    bool obeyed(const QString& request, const QString& name = {});
    std::optional<bool> flag(const QString& request, const QString& name);
    QJsonObject failed(const QString& why);

    QTemporaryDir m_directory;
    QLockFile m_ports;
    QLocalServer m_server;
    QProcess m_process;
    std::unique_ptr<QLocalSocket> m_socket;
    bool m_withEmulator;
    QString m_error;
};

} // namespace support

#endif
