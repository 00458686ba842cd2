// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PICTURETOPICS_H
#define VIEWER_PICTURETOPICS_H

#include "Subject.h"

#include <SorrelKit/DrawableRenderer.h>

#include <QHash>
#include <QJsonObject>

namespace Viewer {

/// The topics of Protocol.h with pictures.
class PictureTopics
{
public:
    explicit PictureTopics(const SorrelKit::Package &package) : m_renderer(package) {}

    /// The answer to @p request. Without its members, an icon of 256 pixels in no shape.
    QJsonObject icon(const QJsonObject &request);
    /// The drawable @p id, which is 0 when there is none of the name in @p request.
    QJsonObject drawable(const QJsonObject &request, quint32 id);
    /// The topic `launchers`: the entries of every kind. Icons are drawn by the first call. An icon that exceeds the
    /// limits of drawing is the last one that is drawn.
    QJsonObject launchers(const Subject &subject);

private:
    QString entryIcon(const SorrelKit::Entry &entry);

    SorrelKit::DrawableRenderer m_renderer;
    QHash<quint32, QString> m_icons; ///< of entries, by resource
    int m_drawn = 0;                 ///< icons of entries
};

} // namespace Viewer

#endif
