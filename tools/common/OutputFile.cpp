// SPDX-License-Identifier: LGPL-2.1-or-later
#include "OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

OutputFile::OutputFile(const FileName &name)
{
    const QString path = name.forQt();
    if (path.isNull())
        return;
    const QFileInfo old(path);
    if (old.exists() && !old.isFile()) {
        m_file = std::make_unique<QFile>(path);
        return;
    }
    auto file = std::make_unique<QSaveFile>(path);
    // Write directly when no temporary file can be made beside the file.
    file->setDirectWriteFallback(true);
    m_file = std::move(file);
}

bool OutputFile::commit()
{
    // flush() reports a full disk. QSaveFile alone would keep the part that fits.
    if (!m_file->flush() || m_file->error() != QFileDevice::NoError) {
        m_isCut = true;
        return false;
    }
    auto *const file = qobject_cast<QSaveFile *>(m_file.get());
    return file == nullptr || file->commit();
}

QString OutputFile::errorString() const
{
    if (m_file == nullptr)
        return FileName::notForQtText();
    // The system gives no reason for a short write.
    return m_isCut && m_file->error() == QFileDevice::WriteError ? QStringLiteral("not all of it could be written")
                                                                 : m_file->errorString();
}
