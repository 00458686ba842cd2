// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/Contrast.h"

#include <cmath>

namespace Viewer {

namespace {

double linearChannel(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linearChannel(color.redF()) + 0.7152 * linearChannel(color.greenF())
           + 0.0722 * linearChannel(color.blueF());
}

} // namespace

double contrastRatio(const QColor &one, const QColor &other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return first > second ? first / second : second / first;
}

QColor mixed(const QColor &one, const QColor &other, double share)
{
    const auto channel = [share](int first, int second) { return qRound(first * share + second * (1 - share)); };
    return QColor(channel(one.red(), other.red()), channel(one.green(), other.green()),
                  channel(one.blue(), other.blue()));
}

QColor readable(const QColor &wanted, const QColor &background)
{
    const QColor end =
        contrastRatio(Qt::black, background) > contrastRatio(Qt::white, background) ? Qt::black : Qt::white;
    constexpr int Steps = 32;
    for (int step = 0; step < Steps; ++step) {
        const QColor color = mixed(end, wanted, double(step) / Steps);
        if (contrastRatio(color, background) >= MinContrast)
            return color;
    }
    return end;
}

} // namespace Viewer
