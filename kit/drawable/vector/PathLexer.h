// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHLEXER_H
#define SORRELKIT_PATHLEXER_H

#include "drawable/source/DrawableError.h"

#include <QString>

namespace SorrelKit {

/**
 * Separates path data into commands: a letter and the numbers that it takes. PathParser explains the letters. Further
 * numbers repeat the command; after a move they are lines.
 *
 * White space and commas separate numbers. They may be missing before a sign, or before a second decimal point. A letter
 * without the numbers that it takes has no effect, as on Android; some tools that export paths write such letters.
 *
 * Meets raw input. The caller spends the work of the characters.
 */
class PathLexer
{
public:
    /// Numbers of the longest command, an arc.
    static constexpr int LongestCommand = 7;

    struct Command {
        char16_t letter = 0;
        int count = 0; ///< of its numbers
        qreal numbers[LongestCommand] = {};
    };

    explicit PathLexer(const QString &data) : m_data(data) {}

    /// Whether number @p index of a command @p letter is a flag.
    static bool isFlag(char16_t letter, int index);
    /// Reads the next command. False at the end, and at a fault.
    bool next(Command *command);
    /// The offset behind the last command.
    int position() const { return m_at; }
    /// The fault in the data, with its offset as detail; no error when there is none.
    const DrawableError &error() const { return m_error; }

private:
    bool findNumbers();
    bool readLetter();
    void skipSeparators();
    bool isAtNumber() const;
    bool readNumber(qreal *number);
    bool readFlag(qreal *flag);
    void setFault(DrawableFault fault);

    const QString m_data;
    int m_at = 0;          ///< the offset in the data
    char16_t m_letter = 0; ///< that further numbers repeat; 0 for none
    DrawableError m_error;
};

} // namespace SorrelKit

#endif
