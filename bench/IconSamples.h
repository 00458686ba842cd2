// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONSAMPLES_H
#define ICONSAMPLES_H

#include <QByteArray>
#include <QImage>

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A package with an icon that is drawn in code, and what drawing that icon takes at least.
struct IconSample {
    std::string name;
    QByteArray package;
    /// Draws the icon with Qt alone, in the given number of pixels: paints the paths, or decodes the picture and scales
    /// it.
    std::function<QImage(int size)> drawnByQt;
};

/// Icons of each kind that packages have. Failing to make one ends the program.
std::vector<IconSample> iconSamples();

} // namespace bench

#endif
