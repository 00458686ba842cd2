// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROVIDEDSERVICES_H
#define PROVIDEDSERVICES_H

#include "ManifestAttributes.h"

#include <QSet>
#include <QString>
#include <QStringList>

/// The services that a package offers to the system and to other applications, such as keyboards and wallpapers, by the
/// intent filters of its components.
class ProvidedServices
{
public:
    /// Adds the element at @p path below the root ("application/service/intent-filter/action"), in the order of the
    /// manifest.
    void add(const QString &path, const ManifestAttributes &attributes);
    /// The words for what the package offers ("input-method"), each once, ascending.
    QStringList names() const;

private:
    ManifestAttributes m_component; ///< the latest one, which has the filters that follow
    QSet<QString> m_found;
};

#endif
