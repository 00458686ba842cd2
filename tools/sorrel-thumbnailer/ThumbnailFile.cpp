// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailFile.h"

#include <QFile>

#include <csignal>

#include <unistd.h>

namespace {

bool writeAll(QFile &file, const QByteArray &bytes)
{
    // What is written in part has no error yet; the rest has.
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
}

} // namespace

bool ThumbnailFile::write(const QByteArray &bytes)
{
    // A file that gets too large is an error like any other then, and no end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    QFile file(m_path);
    const bool isNew = file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
    const bool isOpen =
        isNew
        || (QFile::exists(m_path)
            && file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::ExistingOnly | QIODevice::Unbuffered));
    if (isOpen && writeAll(file, bytes)) {
        file.close();
        if (file.error() == QFileDevice::NoError)
            return true;
    }
    m_error = file.errorString();
    if (isNew)
        file.remove();
    else if (isOpen)
        file.resize(0);
    return false;
}

bool ThumbnailFile::writeToStandardOutput(const QByteArray &bytes)
{
    QFile file;
    if (file.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, bytes))
        return true;
    m_error = file.errorString();
    return false;
}
