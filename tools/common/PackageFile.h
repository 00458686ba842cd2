// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEFILE_H
#define PACKAGEFILE_H

#include "FileName.h"

/**
 * The file of a package, by a name of any bytes.
 *
 * The libraries and Qt take names as text, and not every name is text in the encoding that Qt reads names in. For one that
 * is not, this object holds a descriptor of the file, and the text leads to that through /proc.
 */
class PackageFile
{
public:
    explicit PackageFile(const FileName &name);
    ~PackageFile();

    const FileName &name() const { return m_name; }
    /// The name for messages.
    QString text() const { return m_name.text(); }
    /// What leads to the file for Qt, while this object lives. When there is no file, nothing can be opened by it.
    QString pathForQt() const { return m_pathForQt; }

private:
    Q_DISABLE_COPY(PackageFile)

    const FileName m_name;
    QString m_pathForQt;
    int m_descriptor = -1;
};

#endif
