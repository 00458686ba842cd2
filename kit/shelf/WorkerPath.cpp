// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/WorkerPath.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace SorrelKit {

QString workerPath()
{
    const QByteArray chosen = qgetenv("SORREL_SHELF_WORKER");
    if (!chosen.isEmpty())
        return QFile::decodeName(chosen);
    Dl_info library = {};
    if (::dladdr(reinterpret_cast<const void *>(&workerPath), &library) != 0 && library.dli_fname != nullptr) {
        const QString folder = QFileInfo(QFile::decodeName(library.dli_fname)).absolutePath();
        QString path = folder + QStringLiteral("/" SORREL_WORKER_FROM_LIBRARY);
        if (QFileInfo::exists(path))
            return path;
    }
    return QStringLiteral(SORREL_WORKER_INSTALLED);
}

} // namespace SorrelKit
