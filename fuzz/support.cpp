// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/support.h"

#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// Of all that Qt says, what ends the program is heard.
void hearTheLast(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg) {
        fuzz::fail(qPrintable(text));
    }
}

} // namespace

int LLVMFuzzerInitialize(int* argumentCount, char*** arguments)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    qInstallMessageHandler(hearTheLast);
    static const QCoreApplication application(*argumentCount, *arguments);
    return 0;
}

namespace fuzz {

void fail(const char* what)
{
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

QByteArray bytesOf(const std::uint8_t* bytes, std::size_t size)
{
    QByteArray copy(static_cast<int>(size), Qt::Uninitialized);
    std::copy_n(bytes, size, copy.begin());
    return copy;
}

QString latin1(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

QByteArray imageOf(const cMyMemoryArea& area)
{
    const QVector<quint8> data = area.data(0, image::settingsImageSize);
    return bytesOf(data.constData(), static_cast<std::size_t>(data.size()));
}

InputFile::InputFile() : m_descriptor(memfd_create("input", MFD_CLOEXEC))
{
    expect(m_descriptor >= 0, "there is memory for a file");
}

InputFile::~InputFile()
{
    close(m_descriptor);
}

QString InputFile::path() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
}

void InputFile::fill(const std::uint8_t* bytes, std::size_t size) const
{
    const bool isFilled = ftruncate(m_descriptor, 0) == 0 &&
                          pwrite(m_descriptor, bytes, size, 0) == static_cast<ssize_t>(size);
    expect(isFilled, "there is room in memory for a file");
}

} // namespace fuzz
