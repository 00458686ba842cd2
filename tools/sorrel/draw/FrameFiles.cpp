// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FrameFiles.h"

#include "OutputFile.h"
#include "PngBytes.h"

#include <QDir>

bool FrameFiles::write(const QVector<SorrelKit::IconFrame> &frames)
{
    m_list.clear();
    const QString path = m_directory.forQt();
    if (path.isEmpty() || !QDir().mkpath(path)) {
        m_error = path.isEmpty() ? FileName::notForQtText() : QStringLiteral("the directory cannot be made");
        return false;
    }
    for (int i = 0; i < int(frames.size()); ++i) {
        const QByteArray name = "frame-" + QByteArray::number(i).rightJustified(3, '0') + ".png";
        OutputFile file(FileName(m_directory.path() + '/' + name));
        const bool isOpen = file.open();
        if (isOpen)
            file.device()->write(pngBytes(frames.at(i).image()));
        if (!isOpen || !file.commit()) {
            m_error = file.errorString();
            return false;
        }
        m_list += name + '\t' + QByteArray::number(frames.at(i).duration()) + '\n';
    }
    return true;
}
