// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ICONURL_H
#define SORRELQML_ICONURL_H

#include <SorrelKit/ShelfIcon.h>

#include <QSize>
#include <QString>

namespace SorrelQml {

/**
 * The URL of an icon:
 *
 *     image://sorrel/shelf/INDEX/ITEM?size=96&ratio=2&shape=circle&night=1&monochrome=1&v=REVISION
 *     image://sorrel/package/PACKAGE?size=96&...
 *
 * INDEX and PACKAGE are values of a SourceNumber, ITEM is the id of an item. Each part of the query may be missing. The
 * revision is not used for the icon: with another one, Qt's cache of pictures has another key.
 */
struct IconUrl {
    enum class Source {
        None,    ///< the URL is none of these
        Shelf,   ///< an icon of an index
        Package, ///< an icon that is drawn from a package file
    };
    static constexpr int DefaultSize = 96;
    static constexpr qreal MaxRatio = 16;

    Source source = Source::None;
    int number = 0;
    qint64 item = 0;
    int size = DefaultSize; ///< in device-independent pixels
    qreal ratio = 1;        ///< pixels for each of them
    SorrelKit::ShelfIcon::Shape shape = SorrelKit::ShelfIcon::Shape::None;
    bool isNight = false;
    bool isMonochrome = false;
    qint64 revision = 0;

    /// Reads what follows "image://sorrel/". A part that is wrong makes it a URL of Source::None.
    static IconUrl parse(const QString &id);
    QString toString() const;
    /// The kind of the icon in pixels: of @p requested pixels when it is not empty, else of `size` times `ratio`.
    SorrelKit::ShelfIcon kind(const QSize &requested = QSize()) const;
};

} // namespace SorrelQml

#endif
