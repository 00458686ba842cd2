// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PICTUREREADER_H
#define SORRELKIT_PICTUREREADER_H

#include "Allowance.h"

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace SorrelKit {

/**
 * Decodes pictures, within a budget for all of them: PNG, JPEG, GIF, WebP and BMP. What decoding takes is read off the
 * bytes before a decoder sees them (PictureCheck), and one that does not fit in what is left is refused.
 */
class PictureReader
{
public:
    /// Bytes that decoding takes at most, all pictures together.
    static constexpr qint64 MaxDecodingBytes = 48 << 20;

    /// The picture in @p bytes; of an animated one, the first. A null image when it cannot be decoded, is refused, or
    /// does not fit in the budget.
    QImage read(QByteArray bytes);
    /// The size of the picture in @p bytes in pixels, which is told without decoding it; an empty size when it is refused.
    static QSize size(const QByteArray &bytes);

private:
    Allowance m_decodingBytes{MaxDecodingBytes};
};

} // namespace SorrelKit

#endif
