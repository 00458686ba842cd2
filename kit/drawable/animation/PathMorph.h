// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHMORPH_H
#define SORRELKIT_PATHMORPH_H

#include <QString>

#include <optional>

namespace SorrelKit {

class DrawableLoader;

/// Path data between two others, whose commands have the same letters in the same order.
namespace PathMorph {

/// The path data @p fraction of the way from @p from to @p to, number by number. Nothing, with an error, when the
/// commands differ, one has a fault, or there is no room in the budget. The result holds bytes of the budget.
std::optional<QString> between(const QString &from, const QString &to, qreal fraction, DrawableLoader &loader);

} // namespace PathMorph

} // namespace SorrelKit

#endif
