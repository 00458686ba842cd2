// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/DrawableLoader.h"

#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"

#include <QScopedValueRollback>

#include <utility>

namespace SorrelKit {

/// A level of drawables within each other, while it lives.
class DrawableLoader::Level
{
public:
    explicit Level(DrawableLoader *loader) : m_loader(loader) { ++m_loader->m_depth; }
    ~Level() { --m_loader->m_depth; }

    /// Whether there is room for this level. False, with an error, when there is none.
    bool isOpen()
    {
        if (m_loader->m_depth <= MaxDepth)
            return m_loader->spendElement();
        m_loader->setError(DrawableFault::DrawablesTooDeep);
        return false;
    }

private:
    Q_DISABLE_COPY(Level)

    DrawableLoader *m_loader;
};

DrawableLoader::DrawableLoader(const ResourceResolver &resolver, FileSource &files, Budget &budget, qreal pixelsPerDp)
    : m_resolver(resolver), m_files(files), m_budget(budget), m_pixelsPerDp(pixelsPerDp), m_pictures(budget)
{
}

bool DrawableLoader::spendElement()
{
    if (m_budget.spendWork(ElementWork) && m_budget.holdBytes(ElementBytes))
        return true;
    setError(DrawableFault::TooMuchDrawing);
    return false;
}

DrawablePointer DrawableLoader::fromResource(quint32 id)
{
    return fromValue(m_resolver.resource(id));
}

DrawablePointer DrawableLoader::fromValue(const ResolvedValue &value, const Change &change)
{
    Level level(this);
    if (!level.isOpen())
        return nullptr;
    if (const auto argb = value.value.argb())
        return makeColor(QColor::fromRgba(*argb));
    if (value.text.isEmpty()) {
        const DrawableError error = missing(value);
        setError(error.fault, error.detail);
        return nullptr;
    }
    const QByteArray bytes = documentBytes(value.file());
    if (bytes.isEmpty())
        return makePicture(value);
    if (m_resolver.typeName(value.resource) == QLatin1String("color")) {
        const QColor color = this->color(value, QColor());
        return color.isValid() ? makeColor(color) : nullptr;
    }
    Document document = parsed(bytes, value.file());
    const QScopedValueRollback<ResourceOwner> owner(m_owner, value.owner);
    if (change && !document.root.isNull())
        change(&document.root);
    return document.root.isNull() ? nullptr : fromElement(document.root);
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

ResolvedValue DrawableLoader::resolved(const XmlAttribute *attribute)
{
    if (attribute == nullptr)
        return {};
    if (attribute->value.isThemeAttribute())
        return themeValue(attribute->value.data);
    ResolvedValue value = m_resolver.resolved(attribute->value);
    if (value.value.type == ValueType::String && value.resource == 0) {
        value.text = attribute->text;
        value.owner = m_owner;
    } else if (value.value.isReference() && m_resolver.isOfPlatform(value.resource)) {
        setError(DrawableFault::PlatformResource, idText(value.resource));
    }
    return value;
}

ResolvedValue DrawableLoader::themeValue(quint32 id)
{
    if (m_theme == nullptr) {
        setError(DrawableFault::NoTheme, idText(id));
        return {};
    }
    if (const auto value = m_theme->value(id)) {
        if (value->value.isReference() && m_resolver.isOfPlatform(value->resource))
            setError(DrawableFault::PlatformResource, idText(value->resource));
        return *value;
    }
    if (const quint32 style = m_theme->missingStyle())
        setError(
            DrawableFault::NoThemeStyle,
            QStringLiteral("%1 has no value in the theme, whose style %2 is missing").arg(idText(id), idText(style)));
    else
        setError(DrawableFault::NoThemeValue, idText(id));
    return {};
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
    const auto known = m_brushes.constFind(value.file());
    if (known != m_brushes.cend())
        return known->style() == Qt::NoBrush ? fallback : *known;
    Level level(this);
    if (!level.isOpen())
        return fallback;
    const Document document = this->document(value.file());
    const QScopedValueRollback<ResourceOwner> owner(m_owner, value.owner);
    const QBrush brush = document.root.isNull() ? QBrush() : makeBrush(document.root);
    m_brushes.insert(value.file(), brush);
    return brush.style() == Qt::NoBrush ? fallback : brush;
}

QByteArray DrawableLoader::file(const OwnedPath &path)
{
    QByteArray bytes;
    FileSource &files = path.owner == ResourceOwner::Platform ? m_resolver.platform()->files() : m_files;
    if (m_budget.spendWork(FileWork))
        bytes = files.file(path.path, qMin(MaxFileBytes, m_budget.bytesLeft()), &m_budget);
    if (bytes.isEmpty())
        setError(DrawableFault::UnreadableFile, path.path);
    return bytes;
}

DrawableLoader::Document DrawableLoader::document(const OwnedPath &path)
{
    const QByteArray bytes = file(path);
    return bytes.isEmpty() ? Document{{}, {m_budget, 0}} : parsed(bytes, path);
}

DrawableLoader::Document DrawableLoader::parsed(const QByteArray &bytes, const OwnedPath &path)
{
    Document document{{}, {m_budget, bytes.size() * BytesPerXmlByte}};
    if (!document.bytes || !m_budget.spendWork(bytes.size() * Budget::DocumentByteWork)) {
        setError(DrawableFault::TooMuchDrawing);
        return document;
    }
    // Attributes may share a text, so that a few bytes are millions of characters.
    const XmlReader reader(bytes, m_budget.workLeft() / Budget::DocumentByteWork);
    if (!m_budget.chargeWork(reader.characters() * Budget::DocumentByteWork))
        setError(DrawableFault::TooMuchDrawing);
    else if (reader.fault() != FormatFault::None)
        setError(DrawableFault::DamagedDocument, path.path + QLatin1String(": ") + formatFaultText(reader.fault()));
    else
        document.root = reader.root();
    return document;
}

QByteArray DrawableLoader::documentBytes(const OwnedPath &path)
{
    if (m_pictures.contains(path))
        return {};
    QByteArray bytes = file(path);
    if (XmlReader::isDocument(bytes))
        return bytes;
    m_pictures.add(path, std::move(bytes));
    return {};
}

bool DrawableLoader::isDocument(const OwnedPath &path)
{
    return !documentBytes(path).isEmpty();
}

QSize DrawableLoader::pictureSize(const OwnedPath &path)
{
    documentBytes(path);
    return m_pictures.size(path);
}

QImage DrawableLoader::picture(const OwnedPath &path)
{
    documentBytes(path);
    QImage picture = m_pictures.image(path);
    if (picture.isNull())
        setError(DrawableFault::UndecodablePicture, path.path);
    return picture;
}

std::optional<NinePatch> DrawableLoader::ninePatch(const OwnedPath &path)
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

DrawableError DrawableLoader::missing(const ResolvedValue &value) const
{
    if (value.resource == 0)
        return {DrawableFault::NoValue, QString()};
    const bool isPlatforms = value.value.isReference() && m_resolver.isOfPlatform(value.resource);
    return {isPlatforms ? DrawableFault::PlatformResource : DrawableFault::NotDrawable, idText(value.resource)};
}

void DrawableLoader::setError(DrawableFault fault, const QString &detail)
{
    if (!m_error)
        m_error = {fault, detail};
}

} // namespace SorrelKit
