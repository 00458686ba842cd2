// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using SorrelKit::Package;

namespace {

// The name of @p path for Qt, with a '/' in it, lest Qt looks among its own resources; null when Qt has none.
QString nameForQt(const QByteArray &path)
{
    const QString name = QFile::decodeName(path);
    if (QFile::encodeName(name) != path)
        return {};
    return name.isEmpty() || name.startsWith(QLatin1Char('/')) ? name : QStringLiteral("./") + name;
}

} // namespace

PackageFile::OpenFile::~OpenFile()
{
    QFile::close();
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool PackageFile::OpenFile::open(OpenMode mode)
{
    return m_descriptor >= 0 && ::lseek(m_descriptor, 0, SEEK_SET) == 0 && QFile::open(m_descriptor, mode);
}

PackageFile::PackageFile(const QByteArray &path) : m_path(path), m_name(nameForQt(path))
{
    if (!m_name.isNull())
        return;
    // A pipe is not waited for, and is no package.
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status = {};
    if (descriptor >= 0 && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        m_file.setDescriptor(descriptor);
    else if (descriptor >= 0)
        ::close(descriptor);
}

Package PackageFile::package()
{
    return m_name.isNull() ? Package(&m_file) : Package(m_name);
}

bool PackageFile::isAt(const QByteArray &path) const
{
    struct stat mine = {};
    struct stat other = {};
    return ::stat(m_path.constData(), &mine) == 0 && ::stat(path.constData(), &other) == 0
           && mine.st_dev == other.st_dev && mine.st_ino == other.st_ino;
}
