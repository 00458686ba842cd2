// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ICONTHREADS_H
#define SORRELQML_ICONTHREADS_H

#include "icons/ShelfIcons.h"

#include <QMutex>
#include <QThreadPool>

#include <memory>

namespace SorrelQml {

/// The threads that work for an IconProvider: one for icons of indexes, and up to MaxThreads that draw icons of packages.
class IconThreads
{
public:
    static constexpr int MaxThreads = 2;

    IconThreads();
    ~IconThreads() { end(); }

    /// Begins @p job. May be called in any thread.
    void add(const std::shared_ptr<IconJob> &job);
    /// Waits for the icons that are being drawn, and ends the threads. Other jobs are finished with an error, later ones
    /// at once.
    void end();

private:
    Q_DISABLE_COPY(IconThreads)

    QMutex m_mutex;
    bool m_isEnded = false;
    ShelfIcons m_shelfIcons;
    QThreadPool m_packages;
};

} // namespace SorrelQml

#endif
