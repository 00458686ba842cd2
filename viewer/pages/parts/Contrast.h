// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_CONTRAST_H
#define VIEWER_CONTRAST_H

#include <QColor>

namespace Viewer {

/// The least contrast of text that people with weak sight read well.
constexpr double MinContrast = 4.5;

/// The contrast of two opaque colours, from 1 to 21: the ratio of their relative luminances, each with 0.05 of stray
/// light.
double contrastRatio(const QColor &one, const QColor &other);
/// @p share of @p one, and the rest of @p other.
QColor mixed(const QColor &one, const QColor &other, double share);
/// The colour between @p wanted and black or white that is closest to @p wanted and has MinContrast to @p background.
QColor readable(const QColor &wanted, const QColor &background);

} // namespace Viewer

#endif
