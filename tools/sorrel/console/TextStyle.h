// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TEXTSTYLE_H
#define TEXTSTYLE_H

#include <QString>

/// Colours for texts on a terminal. Without colours, texts stay the same. Pad a text before you style it.
class TextStyle
{
public:
    explicit TextStyle(bool isColored) : m_isColored(isColored) {}

    QString title(const QString &text) const { return styled("1", text); }
    QString key(const QString &text) const { return styled("36", text); }
    QString strong(const QString &text) const { return styled("1;32", text); }
    QString faint(const QString &text) const { return styled("2", text); }
    QString added(const QString &text) const { return styled("32", text); }
    QString removed(const QString &text) const { return styled("31", text); }
    QString warning(const QString &text) const { return styled("33", text); }
    QString error(const QString &text) const { return styled("1;31", text); }

private:
    /// @p code is a parameter of "select graphic rendition" in ECMA-48.
    QString styled(const char *code, const QString &text) const
    {
        return m_isColored ? QStringLiteral("\033[%1m%2\033[0m").arg(QLatin1String(code), text) : text;
    }

    bool m_isColored;
};

#endif
