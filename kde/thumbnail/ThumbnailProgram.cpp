// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailProgram.h"

#include "workers/WorkerProcess.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace {

/// The last bytes of every PNG file. A program that was killed while it wrote left them out.
const QByteArray endOfPng = QByteArrayLiteral("IEND\xae\x42\x60\x82");

// At its place relative to this plugin, so a moved installation and the build tree work; else where it is installed.
QByteArray programPath()
{
    Dl_info plugin = {};
    if (::dladdr(reinterpret_cast<const void *>(&programPath), &plugin) != 0 && plugin.dli_fname != nullptr) {
        const QString folder = QFileInfo(QFile::decodeName(plugin.dli_fname)).absolutePath();
        const QString path = folder + QStringLiteral("/" SORREL_THUMBNAILER_FROM_PLUGIN);
        if (QFileInfo::exists(path))
            return QFile::encodeName(path);
    }
    return SORREL_THUMBNAILER_INSTALLED;
}

} // namespace

QByteArray ThumbnailProgram::png(const QByteArray &path, int size, const QByteArray &shape)
{
    WorkerProcess program;
    if (program.start({programPath(), {"--size", QByteArray::number(size), "--shape", shape, "--", path, "-"}}) != 0)
        return {};
    program.closeInput();
    QByteArray bytes;
    const QDeadlineTimer deadline(qint64(MaxSeconds) * 1000);
    while (program.receive(&bytes)) {
        if (bytes.size() > MaxBytes || deadline.hasExpired())
            return {};
        program.wait(1);
    }
    return bytes.endsWith(endOfPng) ? bytes : QByteArray();
}
