// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TRUSTTOPICS_H
#define VIEWER_TRUSTTOPICS_H

#include "Subject.h"

#include <SorrelKit/Signatures.h>

#include <QJsonObject>

#include <optional>

namespace Viewer {

/// The topics of Protocol.h that need the signatures, which are verified once.
class TrustTopics
{
public:
    explicit TrustTopics(const Subject &subject) : m_subject(subject) {}

    QJsonObject signature();
    QJsonObject lint();
    /// The topic `diff`: from this package to that in @p file.
    static QJsonObject diff(const FileName &before, const FileName &after);

private:
    const SorrelKit::Signatures &signatures();

    const Subject &m_subject;
    std::optional<SorrelKit::Signatures> m_signatures;
};

} // namespace Viewer

#endif
