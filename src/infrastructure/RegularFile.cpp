// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/RegularFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Returns the empty path for a path with a zero character: the system would open the part before it.
QByteArray EncodedPath(const QString& path)
{
    return path.contains(QChar::Null) ? QByteArray() : QFile::encodeName(path);
}

} // namespace

RegularFile::RegularFile(const QString& path)
    : RegularFile(EncodedPath(path))
{
}

// O_NONBLOCK: opening a FIFO without a writer would otherwise block for ever.
RegularFile::RegularFile(const QByteArray& encodedPath)
    : m_descriptor(open(encodedPath.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
{
    if (m_descriptor < 0) {
        return;
    }
    struct stat properties = {};
    if (fstat(m_descriptor, &properties) != 0 || !S_ISREG(properties.st_mode)) {
        close(m_descriptor);
        m_descriptor = -1;
        return;
    }
    m_size = properties.st_size;
}

RegularFile::~RegularFile()
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

unsigned long RegularFile::read(unsigned char* buffer, unsigned long capacity) const
{
    unsigned long count = 0;
    while (count < capacity) {
        const ssize_t n = ::read(m_descriptor, buffer + count, capacity - count);
        if (n > 0) {
            count += static_cast<unsigned long>(n);
        } else if (n == 0 || errno != EINTR) {
            break;
        }
    }
    return count;
}
