// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_MIOLKA_H
#define MIOLKA_DEVICE_MIOLKA_H

#include "device/lineassembler.h"
#include "device/protocol.h"

#include <QDeadlineTimer>
#include <QSerialPort>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <memory>

class QMessageBox;
class cMyMemoryArea;

/// The window's link to the device. Each exchange opens the port, sends its lines one at a time,
/// each after the answer to the one before, closes the port and hands the answers on; between
/// exchanges the port is free for others.
///
/// Lives on the GUI thread and never waits: everything is driven by its event loop. Requests that
/// come while an exchange runs follow it; a status query that is already due is not asked for
/// twice.
///
/// A status query or service command is ended quietly when a line stays unanswered for 10 s, a
/// transfer only when it was cancelled and nothing came for 3 s. A device that vanishes ends any
/// exchange at once; that is told at the next attempt to open its port, which follows when the
/// list of ports has changed, or at once where the list had changed before.
class cMyMiolka : public QObject
{
    Q_OBJECT

public:
    /// Neither is owned; the area is kept for the owner's sake and not used by the exchanges.
    cMyMiolka(cMyMemoryArea* area, QWidget* parent);
    ~cMyMiolka() override;
    Q_DISABLE_COPY_MOVE(cMyMiolka)

    /// The port that exchanges use, the first that was ever named; empty before.
    [[nodiscard]] QString portName() const { return m_portName; }

    /// Takes note of the ports that devices are attached to, before setPort() tells of a change.
    void setListedPorts(const QStringList& names);

    /// Lets a simulation have the port: what runs is ended as by end(), what was asked for besides
    /// the status, or is from now on, waits until the port is taken back. Calling either once more
    /// does nothing.
    void lendPort();
    void takePortBack();

    /// Ends whatever runs or waits, with the device in its root mode if it still listens, and
    /// closes the box that tells of a port that could not be opened.
    void end();

public slots:
    /// Adopts the name if there is none yet, and asks for the status. What runs is cut off.
    void setPort(QString portName);

    /// Asks for the status, or remembers to do so while anything else runs or waits.
    void readStatus();

    /// Sends the records in file to a memory of the device.
    void writeSettings(MemoryType area, QStringList& file);

    /// Asks for the device's bytes wherever the records in file lie.
    void readSettings(MemoryType area, QStringList& file);

    /// Takes what has arrived at the port.
    void readSerialPort();

    /// The argument has no meaning.
    void reset(bool keepData);
    void boot();
    void clearStats();
    void powerOff();

    /// Cancels the running transfer as soon as anything more arrives.
    void breakCommunication();

    /// Does nothing.
    void cancelDownload();

signals:
    /// After each answer of a transfer: 0, the number of lines and the number of answers.
    void writeProgress(int min, int max, int progress);

    /// One record that was read, once the port is closed.
    void newDataRead(MemoryType area, unsigned int address, QVector<quint8> data);

    /// The device's status, as device::statusTexts() gives it.
    void statusChanged(QStringList const& lista);

    /// The port must be left alone while a transfer is due or running; empty when it is over.
    void portHeld(const QString& portName);

    /// The device vanished in the middle of a transfer, which will not go on.
    void transferLost();

private:
    enum class Stage {
        Idle,
        Settling, ///< open; late answers to an exchange that was cut off are let pass
        Running,
    };

    struct Request
    {
        device::LinkMode mode = device::LinkMode::Status;
        QStringList lines;
    };

    [[nodiscard]] static bool isTransfer(device::LinkMode mode);
    [[nodiscard]] bool isTransferRunning() const;
    [[nodiscard]] bool isTransferDue() const;
    [[nodiscard]] bool mustWait() const;

    bool openSerialPort();
    void tellOpenFailure(const QString& text);
    void request(device::LinkMode mode, const QStringList& lines);
    void command(device::LinkMode mode, const char* word);
    void start(const Request& request);
    void startNext();
    void settle();
    void sendFirst();
    void sendLine();
    bool takeReply();
    void store(const QString& text);
    void complete();
    bool parseRecBuffer();
    void parseStatus();
    void patienceEnded();
    void giveUp();
    void lose();
    void closePort();
    void portFailed(QSerialPort::SerialPortError error);
    void tellHold();

    QString m_portName;
    QSerialPort m_port;
    device::LinkMode m_mode = device::LinkMode::Status;
    qint32 m_line = 0;
    cMyMemoryArea* m_area;
    QStringList m_outgoing;
    QStringList m_replies;
    bool m_isCancelled = false;

    Stage m_stage = Stage::Idle;
    cMyLineAssembler m_incoming;
    bool m_isReading = false;      ///< a handler further down the stack takes what arrives
    bool m_hasLateReplies = false; ///< the last exchange did not wait for all of its answers
    QTimer m_settling;
    QDeadlineTimer m_settlingEnd;
    QTimer m_patience;
    QVector<Request> m_waiting;
    bool m_isStatusDue = false;
    bool m_isLent = false;
    bool m_isUnlisted = false; ///< the list of ports has changed, and ours is not in it
    QString m_heldPort;
    QDeadlineTimer m_expectedAway; ///< until then the device may be gone because it was told to
    std::unique_ptr<QMessageBox> m_errorBox;
};

#endif
