// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEFILE_H
#define PACKAGEFILE_H

#include <SorrelKit/Package.h>

#include <QByteArray>
#include <QFile>
#include <QString>

/**
 * The file of a package, by a name of any bytes.
 *
 * Qt takes names as text, and not every name is text in the encoding that it reads names in. One that is not is opened
 * here, and handed on as an open file.
 */
class PackageFile
{
public:
    explicit PackageFile(const QByteArray &path);

    /// The package in the file, which lives no longer than this object.
    SorrelKit::Package package();
    /// Whether @p path leads to this file, which output would replace.
    bool isAt(const QByteArray &path) const;

private:
    /// A file that is open for the system, and not for Qt yet.
    class OpenFile : public QFile
    {
    public:
        ~OpenFile() override;

        void setDescriptor(int descriptor) { m_descriptor = descriptor; }
        bool open(OpenMode mode) override;

    private:
        int m_descriptor = -1;
    };

    QByteArray m_path;
    QString m_name; ///< as Qt takes it; null when it does not
    OpenFile m_file;
};

#endif
