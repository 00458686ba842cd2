// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLELOADER_H
#define SORRELKIT_DRAWABLELOADER_H

#include "archive/FileSource.h"
#include "drawable/source/Drawable.h"
#include "drawable/source/DrawableError.h"
#include "drawable/source/PictureCache.h"
#include "format/Allowance.h"
#include "format/Budget.h"
#include "format/XmlElement.h"
#include "resources/ResourceResolver.h"

#include <SorrelKit/IconMask.h>

#include <QBrush>
#include <QHash>
#include <QImage>
#include <QString>

namespace SorrelKit {

/**
 * Loads what drawables are made from: resources, XML documents, pictures, colours. It knows no kind of drawable; a derived
 * class (DrawableInflater) makes them. One loader serves one picture and has budgets for all of it, because drawables may
 * refer to each other any number of times.
 *
 * A drawable that cannot be made is a null pointer, and error() keeps the first reason. A drawable of several parts leaves
 * out such a part and uses the others.
 */
class DrawableLoader
{
public:
    /// Drawables within each other at most, references included. This ends cycles.
    static constexpr int MaxDepth = 24;
    /// Drawables that are made at most.
    static constexpr int MaxDrawables = 4096;
    /// Bytes of one file at most, and of all XML files, their characters included: elements take several times as much.
    static constexpr qint64 MaxFileBytes = 8 << 20;
    static constexpr qint64 MaxXmlBytes = 4 << 20;
    /// The cost of reading files (FileSource::file()), at most. XML costs as often as it is read: thousands of drawables may
    /// name one file.
    static constexpr qint64 MaxReadBytes = 64 << 20;
    /// Segments of paths at most, of all vectors. Each takes up to 72 bytes.
    static constexpr qint64 MaxPathSegments = 1 << 17;

    virtual ~DrawableLoader() = default;

    /// The drawable that is the resource @p id: a colour, a picture, or what an XML file describes.
    DrawablePointer fromResource(quint32 id);
    /// The drawable that @p value stands for: a colour, a file's path, or nothing.
    DrawablePointer fromValue(const ResolvedValue &value);
    /// The drawable that @p element describes, by its name.
    DrawablePointer fromElement(const XmlElement &element);
    /// The drawable of an element like `item`: its attribute `android:drawable` or, without one, its first child. Null, and
    /// no error, when it has neither.
    DrawablePointer fromItem(const XmlElement &item);
    /// The same, for an element that needs a drawable: sets an error when the result is null.
    DrawablePointer fromRequiredItem(const XmlElement &item);

    /// What @p attribute stands for, its text included; null when the pointer is.
    ResolvedValue resolved(const XmlAttribute *attribute) const;
    /// The colour that @p value is, or the default one of a colour state list that it names.
    QColor color(const ResolvedValue &value, const QColor &fallback);
    /// The same, but it may also name a gradient, whose coordinates are those of the drawable that asks.
    QBrush brush(const ResolvedValue &value, const QBrush &fallback);
    /// The root of the XML file @p path; a null element, with error() set, when there is none.
    XmlElement document(const QString &path);
    /// The content of the file @p path; empty, with error() set, when there is none.
    QByteArray file(const QString &path);
    /// Whether the file @p path is XML.
    bool isDocument(const QString &path);
    /// The size that the file @p path has as a picture, which is not decoded; empty, with error() set, when it is none.
    QSize pictureSize(const QString &path);
    /// The picture in the file @p path, in its own pixels; a null image, with error() set, when there is none. Each is
    /// read and decoded once, whether there is one or not.
    QImage picture(const QString &path);
    /// Bytes of all pictures that were made.
    qint64 pictureBytes() const { return m_pictures.heldBytes(); }
    /// The parts of this picture that may be stretched.
    std::optional<NinePatch> ninePatch(const QString &path);

    /// The outline of adaptive icons that are made from now on.
    void setIconMask(IconMask mask) { m_iconMask = mask; }
    IconMask iconMask() const { return m_iconMask; }

    const ResourceResolver &resolver() const { return m_resolver; }
    qreal pixelsPerDp() const { return m_pixelsPerDp; }
    /// What is left of the segments that paths may have.
    Allowance &pathSegments() { return m_pathSegments; }
    /// By what a picture for @p density is enlarged to have its size on this device; 1 when it is for no density.
    qreal scaleOf(int density) const;

    /// The first error; none when everything was loaded as described.
    const DrawableError &error() const { return m_error; }
    /// The resource id @p id as the detail of an error: "0x7f010000".
    static QString idText(quint32 id);
    /// Keeps the error unless there is one already.
    void setError(DrawableFault fault, const QString &detail = QString());

protected:
    /// @p files outlives the loader. Dimensions become pixels at @p pixelsPerDp.
    DrawableLoader(const ResourceResolver &resolver, FileSource &files, qreal pixelsPerDp);

private:
    Q_DISABLE_COPY(DrawableLoader)
    class Level;

    /// The drawable that is @p color everywhere.
    virtual DrawablePointer makeColor(const QColor &color) = 0;
    /// The drawable of the picture file that @p value names; null, with an error, when it is not a picture.
    virtual DrawablePointer makePicture(const ResolvedValue &value) = 0;
    /// The drawable that @p element describes; null, with an error, for an unknown element.
    virtual DrawablePointer makeElement(const XmlElement &element) = 0;
    /// The brush that @p root, the root of a colour's document, describes; Qt::NoBrush, with an error, for none.
    virtual QBrush makeBrush(const XmlElement &root) = 0;

    /// The file @p path when it is XML; any other is opened as a picture, and empty here.
    QByteArray documentBytes(const QString &path);
    XmlElement parsed(const QByteArray &bytes, const QString &path);

    const ResourceResolver m_resolver;
    FileSource &m_files;
    qreal m_pixelsPerDp;
    IconMask m_iconMask = IconMask::None;
    DrawableError m_error;
    int m_depth = 0;
    Allowance m_drawables;
    Allowance m_xmlBytes;
    Budget m_readBytes{MaxReadBytes, 0};
    Allowance m_pathSegments;
    PictureCache m_pictures;
    QHash<QString, QBrush> m_brushes; ///< by path
};

} // namespace SorrelKit

#endif
