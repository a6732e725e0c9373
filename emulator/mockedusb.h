// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_MOCKEDUSB_H
#define MIOLKA_EMULATOR_MOCKEDUSB_H

#include <QMap>
#include <QProcessEnvironment>
#include <QString>

#include <memory>

/// A serial port as USB shows it.
struct cMyMockedPort
{
    QString name; ///< such as "ttyACM0"
    quint16 vendor = 0;
    quint16 product = 0;
    QString terminal; ///< path of the pseudo-terminal behind it
};

/// USB serial ports that only the programs see which are started with environment(). Made with
/// the umockdev library, which is looked for at run time; owns what it puts into the temporary
/// directory.
class cMyMockedUsb
{
public:
    /// The name of the library as the system's loader looks for it, without "lib" and version.
    explicit cMyMockedUsb(const QString& library = QStringLiteral("umockdev"));
    ~cMyMockedUsb();
    Q_DISABLE_COPY_MOVE(cMyMockedUsb)

    /// False if the library is not there or lacks what is needed; nothing else may be called then.
    [[nodiscard]] bool isAvailable() const { return m_testbed != nullptr; }

    /// Why it is not available, to be told to the user; empty if it is.
    [[nodiscard]] QString problem() const { return m_problem; }

    /// The given environment, changed so that the ports are seen.
    [[nodiscard]] QProcessEnvironment environment(const QProcessEnvironment& base) const;

    /// The directory that stands for the root in the programs.
    [[nodiscard]] QString rootDirectory() const { return m_root; }

    /// A port of that name that is there already is taken away first. False if it cannot be made.
    bool add(const cMyMockedPort& port);

    /// Takes the port and its USB device away; nothing if there is none.
    void remove(const QString& name);

private:
    struct Functions;

    [[nodiscard]] QString findProblem() const;
    [[nodiscard]] QString link(const QString& name) const;
    void removePaths(const QString& usbPath, const QString& ttyPath);

    std::unique_ptr<Functions> m_functions;
    void* m_testbed = nullptr;
    QString m_problem;
    QString m_root;
    QMap<QString, QString> m_usbPaths; ///< of the ports that are there, by their names
    int m_made = 0;
};

#endif
