// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_NINEPATCH_H
#define SORRELKIT_NINEPATCH_H

#include "drawable/paint/StretchedSide.h"

#include <QByteArray>
#include <QMarginsF>

#include <optional>

namespace SorrelKit {

/**
 * The parts of a picture that may be stretched. Build tools take them from the outermost pixels of a `.9.png`, cut
 * these pixels off, and store the parts in a chunk "npTc" of the PNG. All numbers are big-endian:
 *
 *     0   a flag u8, number of columns' borders u8, of rows' u8, of colours u8
 *     4   two offsets u32, which are not set
 *     12  padding: left, right, top, bottom, each i32
 *     28  an offset u32, not set
 *     32  the borders i32, those of the columns first: start and end of each part, in turn
 *
 * A colour for each cell follows, a hint for faster drawing that is not read. Meets raw input.
 */
class NinePatch
{
public:
    /// The parts that may be stretched, in order.
    using Ranges = StretchedSide::Ranges;

    /// Reads the chunk of the PNG file @p bytes; nothing when it has none, is damaged, or is no PNG.
    static std::optional<NinePatch> read(const QByteArray &bytes);

    const Ranges &columns() const { return m_columns; }
    const Ranges &rows() const { return m_rows; }
    /// In pixels of the picture.
    const QMarginsF &padding() const { return m_padding; }

private:
    Ranges m_columns;
    Ranges m_rows;
    QMarginsF m_padding;
};

} // namespace SorrelKit

#endif
