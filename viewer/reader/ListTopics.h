// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_LISTTOPICS_H
#define VIEWER_LISTTOPICS_H

#include "Subject.h"

#include <QHash>
#include <QJsonObject>
#include <SorrelKit/Resources.h>

/// The topics of Protocol.h with long lists.
namespace Viewer {

/// The topic `contents`: the members of the archive. A package within a set is replaced by its own members, with its
/// path in front. Reads the directories alone, and inflates packages that are compressed in the set.
QJsonObject contentsTopic(const Subject &subject);

/// The topic `resources`, and the ids behind its names.
class ResourceTopic
{
public:
    explicit ResourceTopic(const SorrelKit::Package &package) : m_resources(package) {}

    QJsonObject toJson() const;
    /// The id of the resource @p name; 0 when there is none. The first call goes over the names of all resources.
    quint32 find(const QString &name);

private:
    SorrelKit::Resources m_resources;
    QHash<QString, quint32> m_ids;
    bool m_hasIds = false;
};

} // namespace Viewer

#endif
