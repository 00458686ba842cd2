// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LIBRARYFACTS_H
#define LIBRARYFACTS_H

#include "ManifestAttributes.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <vector>

/// The libraries and packages that a manifest uses, and the libraries that it provides.
class LibraryFacts
{
public:
    /// Adds the element at @p path below the root ("application/uses-library"), in the order of the manifest.
    void add(const QString &path, const ManifestAttributes &attributes);
    /// Adds the keys to @p json.
    void addTo(QJsonObject *json) const;

private:
    struct Used {
        QJsonObject json;
        QJsonArray certDigests;
    };

    void addUsed(const QString &kind, const ManifestAttributes &attributes);

    std::vector<Used> m_used;
    QJsonArray m_provided;
    QJsonArray m_usedPackages;
};

#endif
