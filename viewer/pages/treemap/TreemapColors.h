// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TREEMAPCOLORS_H
#define VIEWER_TREEMAPCOLORS_H

#include "pages/treemap/MemberKind.h"

#include <QColor>
#include <QPalette>

namespace Viewer {

/// The colours of a treemap: one hue for each kind of member, on the background of the palette. Texts on them have
/// MinContrast at least, in every palette.
class TreemapColors
{
public:
    explicit TreemapColors(const QPalette &palette) : m_palette(palette) {}

    /// The background of a file.
    QColor file(MemberKind kind) const { return fill(kind, 0.45); }
    /// The background of a folder.
    QColor folder(MemberKind kind) const { return fill(kind, 0.2); }
    /// The colour of texts on @p background.
    QColor text(const QColor &background) const;
    /// The colour of lines around @p background.
    QColor line(const QColor &background) const;

private:
    QColor fill(MemberKind kind, double share) const;

    QPalette m_palette;
};

} // namespace Viewer

#endif
