// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PLATFORMNAMES_H
#define SORRELKIT_PLATFORMNAMES_H

#include "resources/TableSource.h"

#include <QHash>
#include <QString>

namespace SorrelKit {

/// The names of the platform's resources. Looks each up in the table, because an index of all of them, as ResourceIndex makes
/// it, takes longer than reading a package. Names are kept.
class PlatformNames
{
public:
    /// @p platform, which outlives this object, is opened by the first id of the platform; null for no platform.
    explicit PlatformNames(PlatformSource *platform) : m_platform(platform) {}

    /// The name of the resource @p id, "android:string/ok"; empty when the platform does not have it.
    QString name(quint32 id) const;

private:
    QString found(quint32 staged) const;

    PlatformSource *m_platform;
    mutable QHash<quint32, QString> m_names; ///< those that exist
};

} // namespace SorrelKit

#endif
