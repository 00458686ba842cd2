// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef QMLFIXTURE_H
#define QMLFIXTURE_H

#include "ShelfFixture.h"

#include <QString>
#include <QTemporaryDir>

namespace fixture {

/// A folder of packages, and a file for an index of it. Workers are those of the build tree.
class QmlPlace
{
public:
    QmlPlace();

    QString packages() const { return m_directory.filePath(QStringLiteral("packages")); }
    QString index() const { return m_directory.filePath(QStringLiteral("index.db")); }
    QString path(const QString &name) const { return packages() + QLatin1Char('/') + name; }
    /// Writes the package @p name with the label @p label, and @p launchers launchers.
    void add(const QString &name, const QString &label, int launchers = 1) const;
    /// Writes a file that is no package.
    void addBroken(const QString &name) const;
    void remove(const QString &name) const;
    /// Fills the index with icons of @p iconSize pixels. Returns whether that worked.
    bool fill(int iconSize = 96) const;

private:
    QTemporaryDir m_directory;
};

} // namespace fixture

#endif
