// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/TreemapColors.h"

#include "pages/parts/Contrast.h"

namespace Viewer {

namespace {

QColor hueOf(MemberKind kind)
{
    switch (kind) {
    case MemberKind::Code:
        return QColor(0x1e, 0x6f, 0xd9);
    case MemberKind::Resources:
        return QColor(0x2e, 0x9e, 0x3f);
    case MemberKind::Libraries:
        return QColor(0xe0, 0x7a, 0x10);
    case MemberKind::Assets:
        return QColor(0x99, 0x45, 0xc8);
    case MemberKind::Signatures:
        return QColor(0x0f, 0x9a, 0x9a);
    case MemberKind::Other:
        break;
    }
    return QColor(0x80, 0x80, 0x80);
}

} // namespace

QColor TreemapColors::fill(MemberKind kind, double share) const
{
    return mixed(hueOf(kind), m_palette.color(QPalette::Base), share);
}

QColor TreemapColors::text(const QColor &background) const
{
    return readable(m_palette.color(QPalette::Text), background);
}

QColor TreemapColors::line(const QColor &background) const
{
    return mixed(m_palette.color(QPalette::Text), background, 0.35);
}

} // namespace Viewer
