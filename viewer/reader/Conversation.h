// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_CONVERSATION_H
#define VIEWER_CONVERSATION_H

#include "Lines.h"
#include "ListTopics.h"
#include "PictureTopics.h"
#include "Subject.h"
#include "TrustTopics.h"

#include <functional>
#include <optional>
#include <vector>

namespace Viewer {

/// The reader's part of the conversation that Protocol.h describes.
class Conversation
{
public:
    /// About @p subject, in comparison with @p other if there is one.
    Conversation(const Subject &subject, const std::optional<Subject> &other, Lines lines);

    /// Writes all topics and answers requests between them, until the input ends or nobody reads the output.
    void run();

private:
    struct Topic {
        const char *name;
        std::function<QJsonObject()> make;
    };

    std::vector<Topic> topics();
    /// @p make, which needs the manifest; the error of the package when it cannot be read.
    std::function<QJsonObject()> ofManifest(const std::function<QJsonObject()> &make) const;
    std::vector<Topic> localizedTopics();
    bool write(const Topic &topic);
    bool write(const std::vector<Topic> &topics);
    bool answer(const QJsonObject &request);
    bool answerAll(bool waits);

    Subject m_subject;
    std::optional<Subject> m_other;
    Lines m_lines;
    PictureTopics m_pictures;
    ResourceTopic m_resources;
    TrustTopics m_trust;
};

} // namespace Viewer

#endif
