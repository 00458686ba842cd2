// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/PathMorph.h"

#include "drawable/source/DrawableLoader.h"
#include "drawable/vector/PathLexer.h"
#include "drawable/vector/PathParser.h"

namespace SorrelKit {

namespace {

// Digits of a number, as many as those of Android's have.
constexpr int MorphDigits = 7;
// Characters of a number at most: its digits, a sign, a point, an exponent and a separator.
constexpr qint64 MorphCharacters = MorphDigits + 8;

} // namespace

std::optional<QString> PathMorph::between(const QString &from, const QString &to, qreal fraction,
                                          DrawableLoader &loader)
{
    Budget &budget = loader.budget();
    if (!budget.spendWork((qint64(from.size()) + to.size()) * PathParser::CharacterWork)) {
        loader.setError(DrawableFault::TooMuchDrawing);
        return std::nullopt;
    }
    PathLexer starts(from);
    PathLexer ends(to);
    PathLexer::Command start;
    PathLexer::Command end;
    QString data;
    while (starts.next(&start)) {
        if (!ends.next(&end) || start.letter != end.letter)
            break;
        const qint64 characters = 1 + MorphCharacters * start.count;
        if (!budget.spendWork(characters * PathParser::CharacterWork)
            || !budget.holdBytes(characters * qint64(sizeof(QChar)))) {
            loader.setError(DrawableFault::TooMuchDrawing);
            return std::nullopt;
        }
        data += QChar(start.letter);
        for (int i = 0; i < start.count; ++i) {
            const qreal number = start.numbers[i] + (end.numbers[i] - start.numbers[i]) * fraction;
            if (PathLexer::isFlag(start.letter, i))
                data += number != 0 ? QLatin1Char('1') : QLatin1Char('0');
            else
                data += QString::number(number, 'g', MorphDigits);
            data += QLatin1Char(' ');
        }
        start.letter = end.letter = 0;
    }
    for (const PathLexer *lexer : {&starts, &ends}) {
        if (lexer->error()) {
            loader.setError(lexer->error().fault, lexer->error().detail);
            return std::nullopt;
        }
    }
    if (start.letter != 0 || ends.next(&end)) {
        loader.setError(DrawableFault::PathsThatDiffer);
        return std::nullopt;
    }
    return data;
}

} // namespace SorrelKit
