// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_FACTTOPICS_H
#define VIEWER_FACTTOPICS_H

#include "Subject.h"

#include <QJsonObject>

/// The topics of Protocol.h that need the manifest and the resource table.
namespace Viewer {

namespace FactTopics {

QJsonObject head(const Subject &subject);
QJsonObject permissions(const Subject &subject);
QJsonObject languages(const Subject &subject);
QJsonObject manifest(const Subject &subject);

} // namespace FactTopics

} // namespace Viewer

#endif
