// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/DrawableLoader.h"

#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"

#include <utility>

namespace SorrelKit {

/// Counts the drawables that are in each other while it lives.
class DrawableLoader::Level
{
public:
    explicit Level(DrawableLoader *loader) : m_loader(loader) { ++m_loader->m_depth; }
    ~Level() { --m_loader->m_depth; }

    /// Whether there may be another drawable, and another level.
    bool isOpen()
    {
        if (m_loader->m_depth > MaxDepth)
            m_loader->setError(DrawableFault::DrawablesTooDeep);
        else if (!m_loader->m_drawables.spend(1))
            m_loader->setError(DrawableFault::TooManyDrawables);
        else
            return true;
        return false;
    }

private:
    Q_DISABLE_COPY(Level)

    DrawableLoader *m_loader;
};

DrawableLoader::DrawableLoader(const ResourceResolver &resolver, FileSource &files, qreal pixelsPerDp)
    : m_resolver(resolver),
      m_files(files),
      m_pixelsPerDp(pixelsPerDp),
      m_drawables(MaxDrawables),
      m_xmlBytes(MaxXmlBytes),
      m_pathSegments(MaxPathSegments)
{
}

DrawablePointer DrawableLoader::fromResource(quint32 id)
{
    return fromValue(m_resolver.resource(id));
}

DrawablePointer DrawableLoader::fromValue(const ResolvedValue &value)
{
    Level level(this);
    if (!level.isOpen())
        return nullptr;
    if (const auto argb = value.value.argb())
        return makeColor(QColor::fromRgba(*argb));
    if (value.text.isEmpty()) {
        if (value.resource == 0)
            setError(DrawableFault::NoValue);
        else
            setError(DrawableFault::NotDrawable, idText(value.resource));
        return nullptr;
    }
    const QByteArray bytes = documentBytes(value.text);
    if (bytes.isEmpty())
        return makePicture(value);
    if (m_resolver.typeName(value.resource) == QLatin1String("color")) {
        const QColor color = this->color(value, QColor());
        return color.isValid() ? makeColor(color) : nullptr;
    }
    const XmlElement root = parsed(bytes, value.text);
    return root.isNull() ? nullptr : fromElement(root);
}

DrawablePointer DrawableLoader::fromElement(const XmlElement &element)
{
    Level level(this);
    return level.isOpen() ? makeElement(element) : nullptr;
}

DrawablePointer DrawableLoader::fromItem(const XmlElement &item)
{
    if (const XmlAttribute *const drawable = item.attribute(Attr::Drawable))
        return fromValue(resolved(drawable));
    return item.children.isEmpty() ? nullptr : fromElement(item.children.first());
}

DrawablePointer DrawableLoader::fromRequiredItem(const XmlElement &item)
{
    DrawablePointer drawable = fromItem(item);
    if (drawable == nullptr)
        setError(DrawableFault::NoDrawable, item.name);
    return drawable;
}

ResolvedValue DrawableLoader::resolved(const XmlAttribute *attribute) const
{
    if (attribute == nullptr)
        return {};
    ResolvedValue value = m_resolver.resolved(attribute->value);
    if (value.value.type == ValueType::String && value.resource == 0)
        value.text = attribute->text;
    return value;
}

QColor DrawableLoader::color(const ResolvedValue &value, const QColor &fallback)
{
    const QBrush brush = this->brush(value, QBrush());
    return brush.style() == Qt::SolidPattern ? brush.color() : fallback;
}

QBrush DrawableLoader::brush(const ResolvedValue &value, const QBrush &fallback)
{
    if (const auto argb = value.value.argb())
        return QColor::fromRgba(*argb);
    if (value.text.isEmpty())
        return fallback;
    const auto known = m_brushes.constFind(value.text);
    if (known != m_brushes.cend())
        return known->style() == Qt::NoBrush ? fallback : *known;
    Level level(this);
    if (!level.isOpen())
        return fallback;
    const XmlElement root = document(value.text);
    const QBrush brush = root.isNull() ? QBrush() : makeBrush(root);
    m_brushes.insert(value.text, brush);
    return brush.style() == Qt::NoBrush ? fallback : brush;
}

QByteArray DrawableLoader::file(const QString &path)
{
    QByteArray bytes = m_files.file(path, MaxFileBytes, &m_readBytes);
    if (bytes.isEmpty())
        setError(DrawableFault::UnreadableFile, path);
    return bytes;
}

XmlElement DrawableLoader::document(const QString &path)
{
    const QByteArray bytes = file(path);
    return bytes.isEmpty() ? XmlElement() : parsed(bytes, path);
}

XmlElement DrawableLoader::parsed(const QByteArray &bytes, const QString &path)
{
    const bool isSmall = m_xmlBytes.spend(bytes.size());
    const XmlReader reader(isSmall ? bytes : QByteArray(), m_xmlBytes.left());
    if (!isSmall || !m_xmlBytes.spend(reader.characters())) {
        setError(DrawableFault::TooMuchXml);
        return {};
    }
    if (reader.fault().isEmpty())
        return reader.root();
    setError(DrawableFault::DamagedDocument, path + QLatin1String(": ") + reader.fault());
    return {};
}

QByteArray DrawableLoader::documentBytes(const QString &path)
{
    if (m_pictures.contains(path))
        return {};
    QByteArray bytes = file(path);
    if (XmlReader::isDocument(bytes))
        return bytes;
    m_pictures.add(path, std::move(bytes));
    return {};
}

bool DrawableLoader::isDocument(const QString &path)
{
    return !documentBytes(path).isEmpty();
}

QSize DrawableLoader::pictureSize(const QString &path)
{
    documentBytes(path);
    return m_pictures.size(path);
}

QImage DrawableLoader::picture(const QString &path)
{
    documentBytes(path);
    QImage picture = m_pictures.image(path);
    if (picture.isNull())
        setError(DrawableFault::UndecodablePicture, path);
    return picture;
}

std::optional<NinePatch> DrawableLoader::ninePatch(const QString &path)
{
    documentBytes(path);
    return m_pictures.ninePatch(path);
}

qreal DrawableLoader::scaleOf(int density) const
{
    switch (density) {
    case Configuration::NoDensity:
    case Configuration::AnyDensity:
        return 1;
    case Configuration::DefaultDensity:
        density = Configuration::MediumDensity;
        break;
    default:
        break;
    }
    return m_pixelsPerDp * int(Configuration::MediumDensity) / density;
}

QString DrawableLoader::idText(quint32 id)
{
    return QStringLiteral("0x%1").arg(id, 8, 16, QLatin1Char('0'));
}

void DrawableLoader::setError(DrawableFault fault, const QString &detail)
{
    if (!m_error)
        m_error = {fault, detail};
}

} // namespace SorrelKit
