// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEFILE_H
#define PACKAGEFILE_H

#include "FileName.h"

/**
 * The file of a package, whose name may have any bytes.
 *
 * The libraries and Qt take names as text, but some names are no text in the encoding that Qt uses for file names. For
 * such a name, this object has a descriptor of the file, and pathForQt() is its path below /proc.
 */
class PackageFile
{
public:
    explicit PackageFile(const FileName &name);
    ~PackageFile();

    const FileName &name() const { return m_name; }
    /// The name for messages.
    QString text() const { return m_name.text(); }
    /// A path of the file for Qt, which is valid while this object exists. Opening it fails when the file does not
    /// exist.
    QString pathForQt() const { return m_pathForQt; }

private:
    Q_DISABLE_COPY(PackageFile)

    const FileName m_name;
    QString m_pathForQt;
    int m_descriptor = -1;
};

#endif
