// SPDX-License-Identifier: LGPL-2.1-or-later
#include "OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

OutputFile::OutputFile(const QString &path)
{
    const QFileInfo old(path);
    if (old.exists() && !old.isFile()) {
        m_file = std::make_unique<QFile>(path);
        return;
    }
    auto file = std::make_unique<QSaveFile>(path);
    // Where nothing can be made beside the file, but it can be written itself, that is better than nothing.
    file->setDirectWriteFallback(true);
    m_file = std::move(file);
}

bool OutputFile::commit()
{
    if (auto *const file = qobject_cast<QSaveFile *>(m_file.get()))
        return file->commit();
    return m_file->flush() && m_file->error() == QFileDevice::NoError;
}
