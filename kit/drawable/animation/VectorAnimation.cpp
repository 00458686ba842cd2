// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/VectorAnimation.h"

#include "drawable/animation/Interpolator.h"
#include "drawable/animation/Keyframes.h"
#include "drawable/animation/PathMotion.h"
#include "drawable/source/DrawableAttributes.h"

#include <algorithm>

namespace SorrelKit {

namespace {

// The start of animators that follow one without an end.
constexpr qint64 NeverStarts = AnimationClock::MaxTime;

qint64 milliseconds(const DrawableAttributes &attributes, quint32 id, int fallback)
{
    return qMax(0, attributes.integer(id, fallback));
}

} // namespace

VectorAnimation::VectorAnimation(const XmlElement &element, DrawableLoader &loader) : m_loader(loader)
{
    std::vector<QString> targets;
    for (const XmlElement &child : element.children) {
        if (child.name != QLatin1String("target"))
            continue;
        if (!loader.spendElement())
            break;
        const DrawableAttributes attributes(child, loader);
        const QString name = attributes.text(Attr::Name);
        const ResolvedValue animation = attributes.value(Attr::Animation);
        if (animation.text.isEmpty()) {
            loader.setError(DrawableFault::TargetWithoutAnimation, name);
            continue;
        }
        DrawableLoader::Document document = loader.document(animation.file());
        if (document.root.isNull())
            continue;
        m_documents.push_back(std::move(document));
        targets.push_back(name);
    }
    // Tracks refer to the documents, which do not move any more.
    for (size_t i = 0; i < targets.size(); ++i)
        add(m_documents[i].root, targets[i], 0);
}

qint64 VectorAnimation::Track::end() const
{
    return isEndless() ? AnimationClock::MaxTime : qMin(AnimationClock::MaxTime, start + duration * (repeats + 1));
}

qreal VectorAnimation::Track::fraction(qint64 time) const
{
    const qint64 passed = time - start;
    const bool isOver = !isEndless() && passed >= duration * (repeats + 1);
    const qint64 round = isOver ? repeats : passed / duration;
    const qreal fraction = isOver ? 1 : qreal(passed % duration) / qreal(duration);
    return isReversing && round % 2 != 0 ? 1 - fraction : fraction;
}

// Recursion ends at XmlReader::MaxDepth: no document is nested deeper. Returns the end.
qint64 VectorAnimation::add(const XmlElement &animator, const QString &target, qint64 start)
{
    if (start >= NeverStarts || !m_loader.spendElement())
        return start;
    if (animator.name == QLatin1String("set"))
        return addSet(animator, target, start);
    if (animator.name != QLatin1String("objectAnimator") && animator.name != QLatin1String("animator")) {
        m_loader.setError(DrawableFault::UnknownAnimator, animator.name);
        return start;
    }
    constexpr int DefaultDuration = 300;
    constexpr int Reverse = 2;
    const DrawableAttributes attributes(animator, m_loader);
    Track track;
    track.animator = &animator;
    track.target = target;
    track.start = qMin(AnimationClock::MaxTime, start + milliseconds(attributes, Attr::StartOffset, 0));
    track.duration = milliseconds(attributes, Attr::Duration, DefaultDuration);
    // A round of no time is not repeated without an end.
    track.repeats = track.duration > 0 ? attributes.integer(Attr::RepeatCount, 0) : 0;
    track.isReversing = attributes.integer(Attr::RepeatMode, 0) == Reverse;
    m_tracks.push_back(track);
    return track.end();
}

qint64 VectorAnimation::addSet(const XmlElement &set, const QString &target, qint64 start)
{
    constexpr int Sequentially = 1;
    const bool isSequence = DrawableAttributes(set, m_loader).integer(Attr::Ordering, 0) == Sequentially;
    qint64 end = start;
    for (const XmlElement &child : set.children)
        end = qMax(end, add(child, target, isSequence ? end : start));
    return end;
}

void VectorAnimation::apply(XmlElement *vector, qint64 time)
{
    Parts parts;
    collect(vector, &parts);
    std::vector<const Track *> tracks;
    for (const Track &track : m_tracks)
        tracks.push_back(&track);
    const auto endsBefore = [](const Track *a, const Track *b) { return a->end() < b->end(); };
    std::stable_sort(tracks.begin(), tracks.end(), endsBefore);
    for (auto track = tracks.crbegin(); track != tracks.crend(); ++track) {
        if ((*track)->start > time)
            apply(**track, 0, parts.value((*track)->target));
    }
    for (const Track *track : tracks) {
        if (track->start <= time)
            apply(*track, track->duration > 0 ? track->fraction(time) : 1, parts.value(track->target));
    }
}

// Recursion ends at XmlReader::MaxDepth.
void VectorAnimation::collect(XmlElement *part, Parts *parts)
{
    if (!m_loader.spendElement())
        return;
    const QString name = DrawableAttributes(*part, m_loader).text(Attr::Name);
    if (!name.isEmpty())
        parts->insert(name, part);
    for (XmlElement &child : part->children)
        collect(&child, parts);
}

void VectorAnimation::apply(const Track &track, qreal fraction, XmlElement *part)
{
    if (part == nullptr)
        return;
    const qreal way = Interpolator::ofElement(*track.animator, m_loader).at(fraction);
    if (PathMotion::isIn(*track.animator))
        return PathMotion::apply(*track.animator, way, part, m_loader);
    Keyframes(*track.animator, m_loader).apply(way, part, m_loader);
    for (const XmlElement &child : track.animator->children) {
        if (child.name != QLatin1String("propertyValuesHolder"))
            continue;
        if (!m_loader.spendElement())
            return;
        Keyframes(child, m_loader).apply(way, part, m_loader);
    }
}

void VectorAnimation::noteOn(AnimationClock *clock) const
{
    qint64 end = 0;
    bool isEndless = false;
    for (const Track &track : m_tracks) {
        isEndless = isEndless || track.isEndless();
        const qint64 round = track.duration * (track.isReversing ? 2 : 1);
        end = qMax(end, track.isEndless() ? qMin(AnimationClock::MaxTime, track.start + round) : track.end());
    }
    const qint64 time = clock->time();
    if (isEndless)
        clock->notePeriod(end);
    else if (time >= end)
        return;
    const auto isActive = [time](const Track &track) { return track.start <= time && time < track.end(); };
    const qint64 step = qMax(qint64(FrameTime), (end + MaxSteps - 1) / MaxSteps);
    qint64 delay = step - time % step;
    if (std::none_of(m_tracks.cbegin(), m_tracks.cend(), isActive)) {
        delay = end;
        for (const Track &track : m_tracks) {
            if (track.start > time)
                delay = qMin(delay, track.start - time);
        }
    }
    clock->noteChange(isEndless ? delay : qMin(delay, end - time));
}

} // namespace SorrelKit
