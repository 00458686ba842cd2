// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace fixture {

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    // Some file systems wait for the disk when a file is overwritten, and tests write thousands.
    file.remove();
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("could not write %s", qPrintable(path));
    return path;
}

} // namespace fixture
