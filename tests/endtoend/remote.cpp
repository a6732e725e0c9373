// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/census.h"
#include "tests/endtoend/remotehand.h"
#include "tests/endtoend/remotelook.h"

#include <QElapsedTimer>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QTimer>

#include <cstdlib>
#include <memory>

/// How long the GUI thread was busy without looking at its events.
class Pulse : public QObject
{
    Q_OBJECT

public:
    explicit Pulse(QObject* parent) : QObject(parent)
    {
        constexpr int period = 10; // milliseconds
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, &Pulse::beat);
        m_clock.start();
        m_timer.start(period);
    }

    /// The longest time between two beats in milliseconds; starts anew.
    qint64 takeLongestGap() { return std::exchange(m_longest, 0); }

    void beat() { m_longest = std::max(m_longest, m_clock.restart()); }

    /// What went on since the last beat does not count.
    void skip() { m_clock.restart(); }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};

/// Lets another process see and use the program that this is loaded into, which is otherwise as it
/// always is. Connects to the local server that MIOLKA_REMOTE names; each line from there is a
/// request in JSON, and is answered by one line. With MIOLKA_REMOTE_CENSUS set it also counts
/// objects and timers, for which every object that is made and ends costs a little.
class Remote : public QObject
{
    Q_OBJECT

public:
    explicit Remote(QObject* parent);

    /// The program ends by itself; that the connection ends with it means nothing.
    ~Remote() override { m_socket.disconnect(this); }
    Q_DISABLE_COPY_MOVE(Remote)

    /// Notes the dialogs that come up.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addCensus();
    void readLines();
    void obey(const QByteArray& line);
    remote::Answer answer(const QByteArray& line);
    void send(const remote::Answer& answer);

    QLocalSocket m_socket;
    Pulse m_pulse;
    QJsonArray m_dialogs;
    QHash<QString, remote::Command> m_commands;
    std::unique_ptr<remote::Census> m_census;
};

Remote::Remote(QObject* parent)
    : QObject(parent), m_pulse(this), m_commands(remote::lookingCommands())
{
    m_commands.insert(remote::actingCommands());
    m_commands.insert(QStringLiteral("longestGap"), [this](const QJsonObject& /*request*/) {
        return remote::answered(m_pulse.takeLongestGap());
    });
    m_commands.insert(QStringLiteral("dialogs"), [this](const QJsonObject& /*request*/) {
        return remote::answered(std::exchange(m_dialogs, {}));
    });
    if (qEnvironmentVariableIsSet("MIOLKA_REMOTE_CENSUS")) {
        addCensus();
    }
    qApp->installEventFilter(this);
    connect(&m_socket, &QLocalSocket::readyRead, this, &Remote::readLines);
    // Whoever started the program for its remote control is gone, and nobody else would end it.
    connect(&m_socket, &QLocalSocket::disconnected, this, [] { std::_Exit(EXIT_FAILURE); });
    m_socket.connectToServer(qEnvironmentVariable("MIOLKA_REMOTE"));
}

void Remote::addCensus()
{
    m_census = std::make_unique<remote::Census>();
    m_commands.insert(QStringLiteral("objectCount"), [this](const QJsonObject& /*request*/) {
        return remote::answered(m_census->objects());
    });
    m_commands.insert(QStringLiteral("timerCount"), [this](const QJsonObject& /*request*/) {
        return remote::answered(m_census->timers());
    });
}

bool Remote::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget != nullptr && widget->isWindow() && widget->isModal()) {
            m_dialogs.append(remote::describe(*widget));
        }
    }
    return false;
}

void Remote::readLines()
{
    while (m_socket.canReadLine()) {
        const QByteArray line = m_socket.readLine();
        // Not from in here: while a dialog waits inside, the socket would tell of nothing more.
        QMetaObject::invokeMethod(
            this, [this, line] { obey(line); }, Qt::QueuedConnection);
    }
}

void Remote::obey(const QByteArray& line)
{
    const remote::Answer answered = answer(line);
    send(answered);
    if (answered.afterwards) {
        answered.afterwards();
    }
}

remote::Answer Remote::answer(const QByteArray& line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        return remote::refused(QStringLiteral("this is no request"));
    }
    const QJsonObject request = document.object();
    const QString name = request.value(QLatin1String("request")).toString();
    const remote::Command command = m_commands.value(name);
    if (!command) {
        return remote::refused(QStringLiteral("unknown request: ") + name);
    }
    if (name != QLatin1String("grab")) {
        return command(request);
    }
    // To write a picture takes longer than anything that the program does.
    m_pulse.beat();
    remote::Answer grabbed = command(request);
    m_pulse.skip();
    return grabbed;
}

void Remote::send(const remote::Answer& answer)
{
    const QJsonObject line{{QStringLiteral("ok"), answer.error.isEmpty()},
                           {QStringLiteral("value"), answer.value},
                           {QStringLiteral("error"), answer.error}};
    m_socket.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    m_socket.flush();
}

class RemotePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "remote.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*options*/) override
    {
        // What is returned is deleted by the application only after its children are.
        new Remote(qApp);
        return new QObject;
    }
};

#include "remote.moc"
