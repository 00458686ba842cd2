// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ANIMATIONCLOCK_H
#define SORRELKIT_ANIMATIONCLOCK_H

#include <QtGlobal>

namespace SorrelKit {

/**
 * The time at which animated drawables are loaded, in milliseconds since all of them started. Each of them notes how
 * long it stays as it is. Without a clock, a drawable is loaded as it is at the start.
 */
class AnimationClock
{
public:
    /// Milliseconds of one animation at most. It is drawn to this time.
    static constexpr qint64 MaxTime = 3600000;
    /// What a picture that is shown for no time gets: one refresh of a screen.
    static constexpr int RefreshTime = 16;

    explicit AnimationClock(qint64 time = 0) : m_time(time) {}

    qint64 time() const { return m_time; }
    /// The time since the start of the current round of an animation that takes @p period.
    qint64 timeWithin(qint64 period) const { return period > 0 ? m_time % period : 0; }

    /// Notes that a drawable changes @p delay after time(), more than 0.
    void noteChange(qint64 delay) { m_delay = m_delay > 0 ? qMin(m_delay, delay) : delay; }
    /// Notes an animation that starts again every @p period.
    void notePeriod(qint64 period) { m_period = qMax(m_period, period); }

    /// The time until the next change; 0 when nothing changes any more.
    qint64 delay() const { return m_delay; }
    /// The longest period of an animation; 0 when no animation starts again.
    qint64 period() const { return m_period; }

private:
    qint64 m_time;
    qint64 m_delay = 0;
    qint64 m_period = 0;
};

} // namespace SorrelKit

#endif
