// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/session.h"

#include "tests/support/contents.h"

#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QThread>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace support {

namespace {

constexpr int patience = 30000; // milliseconds; sanitized programs are slow to start
constexpr unsigned long pause = 10;

const QString controlName = QStringLiteral("control");
const QString traceName = QStringLiteral("trace");
const QString logName = QStringLiteral("log");

} // namespace

Session::Session(const SessionOptions& options)
    : m_ports(QDir::temp().filePath(QStringLiteral("miolka-virtual-ports.lock"))),
      m_withEmulator(options.withEmulator)
{
    if (options.withEmulator && !reservePorts()) {
        m_error = QStringLiteral("another program has the virtual ports");
        return;
    }
    if (!m_server.listen(path(QStringLiteral("remote")))) {
        m_error = m_server.errorString();
        return;
    }
    start(options);
    if (!accept() && m_error.isEmpty()) {
        m_error = QStringLiteral("the program does not answer: ") + logged();
    }
}

Session::~Session()
{
    if (m_socket != nullptr && m_process.state() != QProcess::NotRunning) {
        // A dialog keeps the window from closing, and one may lead to the next.
        constexpr int mostDialogs = 5;
        for (int i = 0; i < mostDialogs && !dialog().isEmpty(); ++i) {
            answer(QStringLiteral("escape"));
            QThread::msleep(pause);
        }
        close();
    }
    if (!exitStatus()) {
        killGroup();
    }
}

void Session::killGroup()
{
    if (m_process.processId() > 0) {
        ::kill(static_cast<pid_t>(-m_process.processId()), SIGKILL);
    }
    m_process.waitForFinished();
}

bool Session::reservePorts()
{
    constexpr int longestTest = 120000;
    m_ports.setStaleLockTime(0); // however long it takes
    return m_ports.tryLock(longestTest);
}

QProcessEnvironment Session::environment(const SessionOptions& options) const
{
    QProcessEnvironment environment = options.environment;
    const auto set = [&environment](const char* name, const QString& value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("QT_QPA_PLATFORM", options.platform);
    set("QT_QPA_GENERIC_PLUGINS", QStringLiteral("miolkaremote"));
    set("QT_PLUGIN_PATH", QStringLiteral(MIOLKA_REMOTE_PLUGINS));
    set("MIOLKA_REMOTE", m_server.fullServerName());
    set("LC_ALL", QStringLiteral("C.UTF-8"));
    // Dialogs remember things there, and one session must not learn from another.
    set("XDG_CONFIG_HOME", m_directory.path());
    set("XDG_RUNTIME_DIR", m_directory.path());
    // The emulator has its own library loaded first, in front of a sanitizer's.
    QStringList sanitizer{QStringLiteral("verify_asan_link_order=0")};
    if (environment.contains(QStringLiteral("ASAN_OPTIONS"))) {
        sanitizer.prepend(environment.value(QStringLiteral("ASAN_OPTIONS")));
    }
    set("ASAN_OPTIONS", sanitizer.join(QLatin1Char(':')));
    return environment;
}

void Session::start(const SessionOptions& options)
{
    // Leads a group of its own, so that what it starts can be ended with it.
    QStringList command{QStringLiteral("setsid")};
    if (!options.withPrivileges && geteuid() == 0) {
        command << QStringLiteral("setpriv") << QStringLiteral("--bounding-set=-all");
    }
    if (options.withEmulator) {
        const QString fifo = path(controlName);
        if (mkfifo(QFile::encodeName(fifo).constData(), S_IRUSR | S_IWUSR) != 0) {
            m_error = QStringLiteral("cannot make the control pipe");
            return;
        }
        command << QStringLiteral(MIOLKA_EMULATOR) << QStringLiteral("--control") << fifo;
        if (options.withTrace) {
            command << QStringLiteral("--trace") << tracePath();
        }
        command << options.emulatorOptions << QStringLiteral("--");
    }
    command << QStringLiteral(MIOLKA_PROGRAM) << options.arguments;
    m_process.setProcessEnvironment(environment(options));
    m_process.setWorkingDirectory(m_directory.path());
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(path(logName));
    m_process.start(command.takeFirst(), command);
    if (!m_process.waitForStarted()) {
        m_error = m_process.program() + QStringLiteral(": ") + m_process.errorString();
    }
}

bool Session::accept()
{
    QElapsedTimer clock;
    clock.start();
    while (m_process.state() != QProcess::NotRunning && clock.elapsed() < patience) {
        if (m_server.waitForNewConnection(static_cast<int>(pause))) {
            m_socket.reset(m_server.nextPendingConnection());
            m_socket->setParent(nullptr);
            return waitFor([this] { return !title().isEmpty(); }, patience);
        }
        m_process.waitForFinished(0); // notices an end
    }
    return false;
}

bool Session::isRunning()
{
    return m_socket != nullptr && ask(QStringLiteral("ping")).has_value();
}

QJsonObject Session::failed(const QString& why)
{
    return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), why}};
}

QJsonObject Session::askRaw(const QByteArray& line)
{
    if (m_socket == nullptr) {
        return failed(QStringLiteral("the program does not run"));
    }
    m_socket->write(line + '\n');
    QElapsedTimer clock;
    clock.start();
    while (!m_socket->canReadLine() && clock.elapsed() < patience) {
        if (m_socket->state() != QLocalSocket::ConnectedState) {
            return failed(QStringLiteral("the program has ended"));
        }
        m_socket->waitForReadyRead(static_cast<int>(pause));
    }
    const QJsonDocument answer = QJsonDocument::fromJson(m_socket->readLine());
    return answer.isObject() ? answer.object() : failed(QStringLiteral("no answer came"));
}

std::optional<QJsonValue> Session::ask(const QJsonObject& request)
{
    const QJsonObject answer = askRaw(QJsonDocument(request).toJson(QJsonDocument::Compact));
    m_error = answer.value(QLatin1String("error")).toString();
    if (!answer.value(QLatin1String("ok")).toBool()) {
        m_error += QStringLiteral(" (") + request.value(QLatin1String("request")).toString() +
                   QLatin1Char(' ') + request.value(QLatin1String("name")).toString() +
                   QLatin1Char(')');
        return std::nullopt;
    }
    return answer.value(QLatin1String("value"));
}

std::optional<QJsonValue> Session::ask(const QString& request, const QString& name)
{
    return ask({{QStringLiteral("request"), request}, {QStringLiteral("name"), name}});
}

bool Session::waitFor(const std::function<bool()>& condition, int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > milliseconds) {
            return false;
        }
        QThread::msleep(pause);
    }
    return true;
}

bool Session::control(const QString& command)
{
    const QByteArray name = QFile::encodeName(path(controlName));
    int pipe = -1;
    waitFor([&pipe, &name] {
        pipe = open(name.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return pipe >= 0;
    });
    const QByteArray line = command.toUtf8() + '\n';
    const bool written = pipe >= 0 && write(pipe, line.constData(),
                                            static_cast<std::size_t>(line.size())) == line.size();
    if (pipe >= 0) {
        ::close(pipe);
    }
    m_error = written ? QString() : QStringLiteral("the emulator does not listen");
    return written;
}

bool Session::unplug(int device)
{
    return control(QStringLiteral("unplug %1").arg(device));
}

bool Session::plug(int device)
{
    return control(QStringLiteral("plug %1").arg(device));
}

bool Session::fault(const QString& spec)
{
    return control(QStringLiteral("fault ") + spec);
}

bool Session::latency(int milliseconds)
{
    return control(QStringLiteral("latency %1").arg(milliseconds));
}

qint64 Session::programId() const
{
    if (!m_withEmulator) {
        return processId();
    }
    // The process that was started is the emulator, and the program its only child.
    const QString children = QStringLiteral("/proc/%1/task/%1/children").arg(processId());
    return contentsOf(children).trimmed().toLongLong();
}

QProcessEnvironment Session::programEnvironment() const
{
    QProcessEnvironment environment;
    const QByteArray all = contentsOf(QStringLiteral("/proc/%1/environ").arg(programId()));
    const QList<QByteArray> entries = all.split('\0');
    for (const QByteArray& entry : entries) {
        const auto sign = entry.indexOf('=');
        environment.insert(QFile::decodeName(entry.left(sign)),
                           QFile::decodeName(entry.mid(sign + 1)));
    }
    return environment;
}

QString Session::terminal(int device) const
{
    const QString root = programEnvironment().value(QStringLiteral("UMOCKDEV_DIR"));
    return QFile::symLinkTarget(root + QStringLiteral("/dev/ttyACM%1").arg(device));
}

QString Session::tracePath() const
{
    return path(traceName);
}

QStringList Session::trace() const
{
    QStringList lines = QString::fromLatin1(contentsOf(tracePath())).split(QLatin1Char('\n'));
    lines.removeLast(); // not ended yet
    return lines;
}

QString Session::logged() const
{
    return QString::fromUtf8(contentsOf(path(logName)));
}

void Session::pauseProgram(int milliseconds)
{
    const auto group = static_cast<pid_t>(-processId());
    if (group == 0) {
        return;
    }
    ::kill(group, SIGSTOP);
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    ::kill(group, SIGCONT);
}

std::optional<int> Session::exitStatus(int milliseconds)
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(milliseconds)) {
        return std::nullopt;
    }
    const int status = m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    if (status != 0) {
        constexpr int mostTold = 4000;
        qWarning().noquote() << "It ended with" << status << "after:\n" << logged().right(mostTold);
    }
    return status;
}

} // namespace support
