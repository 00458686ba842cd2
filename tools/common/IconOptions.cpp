// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconOptions.h"

using SorrelKit::IconMask;

IconOptions::IconOptions(int defaultSize)
    : m_size({QStringLiteral("s"), QStringLiteral("size")},
             QStringLiteral("Width and height of the icon in pixels; by default %1.").arg(defaultSize),
             QStringLiteral("N"), QString::number(defaultSize)),
      m_shape(QStringLiteral("shape"),
              QStringLiteral("Outline of adaptive icons: circle, rounded, squircle or none (the default)."),
              QStringLiteral("SHAPE"), QStringLiteral("none"))
{
}

bool IconOptions::readSize(const QCommandLineParser &parser)
{
    bool isNumber = false;
    m_pixels = parser.value(m_size).toInt(&isNumber);
    if (!isNumber || m_pixels < 1) {
        m_error = QStringLiteral("'%1' is no size in pixels.").arg(parser.value(m_size));
        return false;
    }
    return true;
}

bool IconOptions::readShape(const QCommandLineParser &parser)
{
    const QString shape = parser.value(m_shape);
    if (shape == QLatin1String("none")) {
        m_mask = IconMask::None;
    } else if (shape == QLatin1String("circle")) {
        m_mask = IconMask::Circle;
    } else if (shape == QLatin1String("rounded")) {
        m_mask = IconMask::RoundedSquare;
    } else if (shape == QLatin1String("squircle")) {
        m_mask = IconMask::Squircle;
    } else {
        m_error = QStringLiteral("'%1' is no shape; there are circle, rounded, squircle and none.").arg(shape);
        return false;
    }
    return true;
}
