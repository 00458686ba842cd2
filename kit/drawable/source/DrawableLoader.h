// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLELOADER_H
#define SORRELKIT_DRAWABLELOADER_H

#include "archive/FileSource.h"
#include "drawable/source/AnimationClock.h"
#include "drawable/source/Drawable.h"
#include "drawable/source/DrawableError.h"
#include "drawable/source/PictureCache.h"
#include "format/XmlElement.h"
#include "limits/HeldBytes.h"
#include "resources/ResourceResolver.h"
#include "theme/Theme.h"

#include <SorrelKit/IconMask.h>

#include <QBrush>
#include <QHash>
#include <QImage>
#include <QString>

#include <functional>

namespace SorrelKit {

/**
 * Loads what drawables are made from: resources, XML documents, pictures, colours. It knows no kind of drawable; a
 * derived class (DrawableInflater) makes them. One loader serves one picture. Loading spends from the budget of the
 * call, because drawables may refer to each other any number of times.
 *
 * A drawable that cannot be made is a null pointer, and error() keeps the first reason. A drawable of several parts
 * leaves out such a part and uses the others.
 */
class DrawableLoader
{
public:
    /// Drawables within each other at most, references included. This ends cycles.
    static constexpr int MaxDepth = 24;
    /// Bytes of one file at most.
    static constexpr qint64 MaxFileBytes = 8 << 20;
    /// The cost of reading a file, besides its bytes. The archive takes some 20 µs, and allocates 300 KB for a while.
    static constexpr qint64 FileWork = 8192;
    /// The cost of a drawable, or of an element of a vector: 0.5 to 1.5 µs, and its bytes.
    static constexpr qint64 ElementWork = 256;
    static constexpr qint64 ElementBytes = 512;
    /// Bytes of memory for each byte of an XML document, while its drawable is made. Elements without attributes, and
    /// short strings, take most.
    static constexpr qint64 BytesPerXmlByte = 5;

    /// An XML document. It holds bytes of the budget while it lives.
    struct Document {
        XmlElement root; ///< null, with an error, when there is none
        HeldBytes bytes;
    };

    virtual ~DrawableLoader() = default;

    /// The drawable of the resource @p id: a colour, a picture, or an XML file.
    DrawablePointer fromResource(quint32 id);
    /// Changes the root of a document.
    using Change = std::function<void(XmlElement *)>;
    /// The drawable of @p value, a colour or the path of a file. @p change is called for an XML file before its drawable
    /// is made.
    DrawablePointer fromValue(const ResolvedValue &value, const Change &change = {});
    /// The drawable that @p element describes.
    DrawablePointer fromElement(const XmlElement &element);
    /// The drawable of an element like `item`: its attribute `android:drawable` or, without one, its first child. Null,
    /// and no error, when it has neither.
    DrawablePointer fromItem(const XmlElement &item);
    /// The same, for an element that needs a drawable: sets an error when the result is null.
    DrawablePointer fromRequiredItem(const XmlElement &item);

    /// The value of @p attribute, with its text, and its reference or its attribute of the theme followed. A null value
    /// for a null pointer and, with an error, for an attribute that has no value in the theme. A reference to a resource
    /// of the platform that is not found is an error.
    ResolvedValue resolved(const XmlAttribute *attribute);
    /// The colour @p value, or the default colour of the colour state list that it names.
    QColor color(const ResolvedValue &value, const QColor &fallback);
    /// The same, or the gradient that @p value names, in the coordinates of the drawable.
    QBrush brush(const ResolvedValue &value, const QBrush &fallback);
    /// The XML file @p path.
    Document document(const OwnedPath &path);
    /// The content of the file @p path; empty, with an error, when it cannot be read.
    QByteArray file(const OwnedPath &path);
    /// Whether the file @p path is XML.
    bool isDocument(const OwnedPath &path);
    /// The size of the picture file @p path, found without decoding; empty when it is no picture.
    QSize pictureSize(const OwnedPath &path);
    /// The picture in the file @p path; a null image, with an error, when it cannot be decoded. Each file is read and
    /// decoded once, also when that fails.
    QImage picture(const OwnedPath &path);
    /// The parts of the picture @p path that may be stretched; nothing when it is no nine-patch.
    std::optional<NinePatch> ninePatch(const OwnedPath &path);

    /// The theme of what is loaded from now on; a null pointer, the default, for none. It outlives the loader.
    void setTheme(const Theme *theme) { m_theme = theme; }
    /// The outline of adaptive icons that are made from now on. IconMask::None by default.
    void setIconMask(IconMask mask) { m_iconMask = mask; }
    IconMask iconMask() const { return m_iconMask; }
    /// Whether adaptive icons that are made from now on draw their monochrome layer alone. False by default.
    void setMonochrome(bool isMonochrome) { m_isMonochrome = isMonochrome; }
    bool isMonochrome() const { return m_isMonochrome; }

    /// The clock for animated drawables that are made from now on; none by default. It outlives the loader.
    void setClock(AnimationClock *clock) { m_clock = clock; }
    AnimationClock *clock() const { return m_clock; }
    /// Whether the layout of the device runs from right to left.
    bool isRightToLeft() const { return m_resolver.device().layoutDirection == Configuration::RightToLeft; }
    qreal pixelsPerDp() const { return m_pixelsPerDp; }
    /// The budget of the call.
    Budget &budget() { return m_budget; }
    /// Spends the cost of a drawable, or of an element of a vector. False, with an error, when there is no room for it.
    bool spendElement();
    /// Pixels of this device for each pixel of a picture for @p density; 1 for a picture that is never scaled.
    qreal scaleOf(int density) const;

    /// The first error; none when everything was loaded as described.
    const DrawableError &error() const { return m_error; }
    /// The resource id @p id as the detail of an error: "0x7f010000".
    static QString idText(quint32 id);
    /// The error for @p value, which is no drawable: the platform's resource that is missing, or that it is none.
    DrawableError missing(const ResolvedValue &value) const;
    /// Keeps the error unless there is one already.
    void setError(DrawableFault fault, const QString &detail = QString());

protected:
    /// @p files and @p budget outlive the loader. Dimensions become pixels at @p pixelsPerDp.
    DrawableLoader(const ResourceResolver &resolver, FileSource &files, Budget &budget, qreal pixelsPerDp);

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

    /// The content of the file @p path when it is XML. Any other file is added to the pictures; the result is empty
    /// then.
    QByteArray documentBytes(const OwnedPath &path);
    Document parsed(const QByteArray &bytes, const OwnedPath &path);
    /// The value of the attribute @p id in the theme; a null value, with an error, when it has none.
    ResolvedValue themeValue(quint32 id);

    const ResourceResolver m_resolver;
    FileSource &m_files;
    Budget &m_budget;
    qreal m_pixelsPerDp;
    const Theme *m_theme = nullptr;
    IconMask m_iconMask = IconMask::None;
    bool m_isMonochrome = false;
    AnimationClock *m_clock = nullptr;
    DrawableError m_error;
    int m_depth = 0;
    ResourceOwner m_owner = ResourceOwner::Package; ///< of the document whose elements are made
    PictureCache m_pictures;
    QHash<OwnedPath, QBrush> m_brushes; ///< by path
};

} // namespace SorrelKit

#endif
