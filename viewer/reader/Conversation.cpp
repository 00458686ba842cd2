// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Conversation.h"

#include "FactTopics.h"
#include "Protocol.h"

#include <algorithm>

Viewer::Conversation::Conversation(const Subject &subject, const std::optional<Subject> &other, Lines lines)
    : m_subject(subject),
      m_other(other),
      m_lines(std::move(lines)),
      m_pictures(subject.package),
      m_resources(subject.package),
      m_trust(m_subject)
{
}

void Viewer::Conversation::run()
{
    for (const Topic &topic : topics()) {
        if (!write(topic) || !answerAll(false))
            return;
    }
    while (m_lines.isOpen() && answerAll(true)) {
    }
}

std::vector<Viewer::Conversation::Topic> Viewer::Conversation::topics()
{
    const auto nothing = [] { return QJsonObject(); };
    const auto head = [this] { return FactTopics::head(m_subject); };
    if (m_other)
        return {
            {"head", head},
            {"otherHead", [this] { return FactTopics::head(*m_other); }},
            {"diff", [this] { return TrustTopics::diff(m_subject.file, m_other->file); }},
            {"end", nothing},
        };
    return {
        {"head", head},
        {"icon", [this] { return m_pictures.icon({}); }},
        {"signature", [this] { return m_trust.signature(); }},
        {"permissions", ofManifest([this] { return FactTopics::permissions(m_subject); })},
        {"launchers", ofManifest([this] { return m_pictures.launchers(m_subject); })},
        {"contents", [this] { return contentsTopic(m_subject); }},
        {"languages", ofManifest([this] { return FactTopics::languages(m_subject); })},
        {"manifest", ofManifest([this] { return FactTopics::manifest(m_subject); })},
        {"resources", ofManifest([this] { return m_resources.toJson(); })},
        {"lint", [this] { return m_trust.lint(); }},
        {"end", nothing},
    };
}

std::function<QJsonObject()> Viewer::Conversation::ofManifest(const std::function<QJsonObject()> &make) const
{
    return [this, make] {
        if (m_subject.package.isValid())
            return make();
        return QJsonObject{{QStringLiteral("error"), cutText(m_subject.package.error().message())}};
    };
}

std::vector<Viewer::Conversation::Topic> Viewer::Conversation::localizedTopics()
{
    std::vector<Topic> localized;
    for (const Topic &topic : topics()) {
        const QLatin1String name(topic.name);
        if (name == QLatin1String("head") || name == QLatin1String("otherHead") || name == QLatin1String("permissions")
            || name == QLatin1String("launchers"))
            localized.push_back(topic);
    }
    return localized;
}

bool Viewer::Conversation::write(const Topic &topic)
{
    return m_lines.write(topic.name, topic.make());
}

bool Viewer::Conversation::write(const std::vector<Topic> &topics)
{
    return std::all_of(topics.cbegin(), topics.cend(), [this](const Topic &each) { return write(each); });
}

bool Viewer::Conversation::answer(const QJsonObject &request)
{
    const QString want = request.value(QLatin1String("want")).toString();
    std::vector<Topic> answers;
    if (want == QLatin1String("icon")) {
        answers = {{"icon", [&] { return m_pictures.icon(request); }}};
    } else if (want == QLatin1String("drawable")) {
        const quint32 id = m_resources.find(request.value(QLatin1String("name")).toString());
        answers = {{"drawable", [&, id] { return m_pictures.drawable(request, id); }}};
    } else if (want == QLatin1String("locale")) {
        m_subject.locale = localeOf(request.value(QLatin1String("tag")).toString());
        if (m_other)
            m_other->locale = m_subject.locale;
        answers = localizedTopics();
    }
    answers.push_back({"done", [] { return QJsonObject(); }});
    return write(answers);
}

bool Viewer::Conversation::answerAll(bool waits)
{
    QJsonObject request;
    while (m_lines.take(waits, &request)) {
        if (!answer(request))
            return false;
    }
    return m_lines.isOpen();
}
