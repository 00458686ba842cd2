// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ROWPATCH_H
#define SORRELQML_ROWPATCH_H

#include "rows/ShelfRow.h"

#include <QMetaType>
#include <QVector>

namespace SorrelQml {

/// A step from one list of rows to another. Rows are counted as they are when the steps before were taken.
struct RowStep {
    enum class Kind {
        Remove, ///< rows `first` to `last` go
        Move,   ///< row `first` becomes row `last`
        Insert, ///< `rows` become rows `first` to `last`
        Change, ///< `rows` replace rows `first` to `last`, which have the same ids
    };
    Kind kind = Kind::Remove;
    int first = 0;
    int last = 0;
    ShelfRows rows;
};

/// The steps from one list of rows to another, in the order Remove, Move, Insert, Change: neighbours share a step.
struct RowPatch {
    QVector<RowStep> steps;
    /// The number of the request that the new list is for.
    int request = 0;

    /// The steps from @p from to @p to. Each id is in a list at most once. Rows that keep their order are not moved.
    /// Costs time in proportion to the rows, and for each moved row once more.
    static RowPatch between(const ShelfRows &from, const ShelfRows &to);
};

} // namespace SorrelQml

Q_DECLARE_METATYPE(SorrelQml::RowPatch)

#endif
