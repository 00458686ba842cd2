// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef READERLINT_H
#define READERLINT_H

#include "FindingList.h"

#include <SorrelKit/Package.h>

#include <QByteArray>
#include <QMap>
#include <QString>

/**
 * What is odd in the manifest and in the resource table of a package, and what libsorrel's ApkFile and SorrelKit make
 * of them. Both members are read once; libsorrel decodes the bytes that the other checks looked at.
 */
class ReaderLint
{
public:
    /// Of the package @p package, in the file @p fileName.
    ReaderLint(const QString &fileName, const SorrelKit::Package &package, FindingList *findings);

    void run();

private:
    /// The codes of ApkFile::getError() that are found here.
    enum ApkFileError : int {
        NoError = 0,
        NoTable = 2,
        BadTable = 3,
        NoManifest = 4,
        BadManifest = 5
    };

    bool readMembers();
    void checkPackage();
    void checkEncodings();
    void readTable();
    void readManifest();
    void tellTableLines(const QMap<QString, int> &lines);
    void tellManifestLines(const QMap<QString, int> &lines);
    void tellLines(const LintCheck &check, const QString &subject, const QMap<QString, int> &lines,
                   const QString &start, const QString &text);
    void tellError();
    void setError(ApkFileError error, const QString &fault = QString());

    QString m_fileName;
    SorrelKit::Package m_package;
    FindingList *m_findings;
    bool m_hasTable = false;
    bool m_hasManifest = false;
    QByteArray m_table;
    QByteArray m_manifest;
    ApkFileError m_error = NoError;
    QString m_fault;
};

#endif
