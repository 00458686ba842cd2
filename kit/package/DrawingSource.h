// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWINGSOURCE_H
#define SORRELKIT_DRAWINGSOURCE_H

#include "archive/FileSource.h"
#include "format/XmlElement.h"
#include "resources/ResourceResolver.h"

#include <QVector>

#include <optional>

namespace SorrelKit {

/// The icon of a launcher.
struct LauncherIcon {
    ResolvedValue icon;                   ///< a reference or a path
    const XmlElement *activity = nullptr; ///< that is started; null when an alias names none
};

/// The parts of a package that drawing an icon needs.
class DrawingSource
{
public:
    virtual ~DrawingSource() = default;

    /// Looks up resources in the tables of the package and its splits. The first lookup reads them.
    virtual const ResourceResolver &resolver() const = 0;
    /// The members of the package and its splits.
    virtual FileSource &files() = 0;
    /// The icon of the application, a reference or a path; nothing when the manifest names none. With @p isRound, the
    /// round one where there is one.
    virtual std::optional<ResolvedValue> applicationIcon(bool isRound) = 0;
    /// The banner of the application, in the same way.
    virtual std::optional<ResolvedValue> applicationBanner() = 0;
    /// The style that is the theme of @p activity, an element of the manifest: the one that it names, else the
    /// application's, else the platform's default for the version that the package targets. A null pointer for the
    /// application alone. As on Android, the theme of an activity replaces the application's.
    virtual quint32 theme(const XmlElement *activity) = 0;
    /// Icons of the first @p count launchers that are shown and have an icon of their own, in the manifest's order.
    virtual QVector<LauncherIcon> launcherIcons(int count, bool isRound) = 0;
};

} // namespace SorrelKit

#endif
