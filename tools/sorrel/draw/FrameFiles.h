// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FRAMEFILES_H
#define FRAMEFILES_H

#include "FileName.h"

#include <SorrelKit/IconFrame.h>

#include <QByteArray>
#include <QString>
#include <QVector>

/// The files of `sorrel icon --frames`: a PNG for each frame of an icon.
class FrameFiles
{
public:
    explicit FrameFiles(const FileName &directory) : m_directory(directory) {}

    /// Writes @p frames into the directory, which is made when it is missing. False, with an error, when one of them
    /// cannot be written.
    bool write(const QVector<SorrelKit::IconFrame> &frames);
    /// A line for each frame: the name of its file, a tab, and its duration in milliseconds.
    const QByteArray &list() const { return m_list; }
    const QString &errorText() const { return m_error; }

private:
    FileName m_directory;
    QByteArray m_list;
    QString m_error;
};

#endif
