// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INSTALLERROWS_H
#define INSTALLERROWS_H

#include "FileName.h"
#include "ReportRows.h"

#include <SorrelKit/Package.h>

#include <QLocale>

/// The rows of a report that an installer shows: versions of Android, sizes, permissions, features, processors and
/// languages. Words are in the user's language where the package or its platform has them.
class InstallerRows
{
public:
    /// How much to show.
    enum class Extent {
        Short, ///< what a user decides by
        All,
    };

    InstallerRows(const FileName &file, const SorrelKit::Package &package, const QLocale &locale, Extent extent);

    /// All rows.
    const ReportRows &rows() const { return m_rows; }

private:
    void addAndroidVersions();
    void addSizes(const FileName &file);
    void addPermissions();
    void addDangerous(const QList<SorrelKit::Permission> &permissions);
    /// Adds @p permissions below @p key.
    void addList(const QString &key, const QList<SorrelKit::Permission> &permissions);
    /// Adds the words of @p permission, @p indent characters to the right, below @p key.
    void addWords(const QString &key, const SorrelKit::Permission &permission, int indent);
    void addFeatures();
    void addProcessorsAndLanguages();
    bool showsAll() const { return m_extent == Extent::All; }

    const SorrelKit::Package m_package;
    const QLocale m_locale;
    const Extent m_extent;
    ReportRows m_rows;
};

#endif
