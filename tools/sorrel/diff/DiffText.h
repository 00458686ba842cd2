// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIFFTEXT_H
#define DIFFTEXT_H

#include "DiffReport.h"
#include "TextStyle.h"

#include <QString>

/// A report about differences as text for people, in columns.
class DiffText
{
public:
    /// Lines of a section, unless all are requested.
    static constexpr int MaxLines = 20;

    /// @p isWhole requests all lines.
    DiffText(const TextStyle &style, bool isWhole) : m_style(style), m_isWhole(isWhole) {}

    /// The text. Characters that control a terminal become U+FFFD.
    QString toText(const DiffReport &report) const;

private:
    QString sectionText(const DiffSection &section) const;
    QString lineText(const DiffLine &line, int sizeWidth, int nameWidth) const;

    TextStyle m_style;
    bool m_isWhole;
};

#endif
