// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef READERLINT_H
#define READERLINT_H

#include "FileName.h"
#include "FindingList.h"
#include "archive/PackageError.h"
#include "stream/Diagnostics.h"

#include <SorrelKit/Package.h>

#include <QByteArray>
#include <QString>
#include <QVector>

/**
 * Checks the manifest and the resource table of a package, and whether libsorrel's ApkFile and SorrelKit read them.
 * Both members are read from the archive once.
 */
class ReaderLint
{
public:
    /// @p package is the one in the file @p file.
    ReaderLint(const FileName &file, const SorrelKit::Package &package, FindingList *findings);

    void run();

private:
    bool readMembers();
    void checkPackage();
    void checkEncodings();
    void readTable();
    void readManifest();
    void reportManifest(const QVector<Diagnostics::Item> &items);
    void report(const LintCheck &check, const QString &subject, const QVector<Diagnostics::Item> &items,
                const QVector<Diagnostics::Code> &codes, const QString &noun, const QString &text);
    void reportError();
    void setError(PackageError::Code error, const QString &fault = QString());

    FileName m_file;
    SorrelKit::Package m_package;
    FindingList *m_findings;
    bool m_isEmpty = false; ///< the archive counts no member
    bool m_hasTable = false;
    bool m_hasManifest = false;
    bool m_isTableOpened = false;    ///< by ApkFile
    bool m_isManifestOpened = false; ///< the same
    QByteArray m_table;
    QByteArray m_manifest;
    PackageError::Code m_error = PackageError::NoError; ///< that ApkFile has
    QString m_fault;
};

#endif
