// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PictureTopics.h"

#include "EntryReport.h"
#include "PngFile.h"
#include "Protocol.h"

using SorrelKit::Entry;
using SorrelKit::IconError;
using SorrelKit::IconMask;
using SorrelKit::IconRequest;

namespace {

constexpr int IconSize = 256;
constexpr int EntryIconSize = 64;
constexpr int DrawableSize = 96;

struct Shape {
    const char *name;
    IconMask mask;
};

constexpr Shape Shapes[] = {{"none", IconMask::None},
                            {"circle", IconMask::Circle},
                            {"rounded", IconMask::RoundedSquare},
                            {"squircle", IconMask::Squircle}};

int sizeIn(const QJsonObject &request, int usual)
{
    return qBound(1, request.value(QLatin1String("size")).toInt(usual), Viewer::Protocol::MaxPixels);
}

QString base64(const QImage &picture)
{
    return picture.isNull() ? QString() : QString::fromLatin1(PngFile::fromImage(picture).toBase64());
}

} // namespace

QJsonObject Viewer::PictureTopics::icon(const QJsonObject &request)
{
    Shape shape = Shapes[0];
    for (const Shape &each : Shapes) {
        if (request.value(QLatin1String("shape")).toString() == QLatin1String(each.name))
            shape = each;
    }
    IconRequest wanted(sizeIn(request, IconSize));
    wanted.setMask(shape.mask);
    wanted.setNight(request.value(QLatin1String("night")).toBool());
    wanted.setMonochrome(request.value(QLatin1String("monochrome")).toBool());
    const QString png = base64(m_renderer.icon(wanted));
    return {
        {QStringLiteral("size"), wanted.size()},
        {QStringLiteral("shape"), QString::fromLatin1(shape.name)},
        {QStringLiteral("night"), wanted.isNight()},
        {QStringLiteral("monochrome"), wanted.isMonochrome()},
        {QStringLiteral("png"), png},
        {QStringLiteral("error"), cutText(m_renderer.error().text())},
    };
}

QJsonObject Viewer::PictureTopics::drawable(const QJsonObject &request, quint32 id)
{
    const IconRequest wanted(sizeIn(request, DrawableSize));
    const QString png = id == 0 ? QString() : base64(m_renderer.drawable(id, wanted));
    return {
        {QStringLiteral("name"), cutText(request.value(QLatin1String("name")).toString())},
        {QStringLiteral("size"), wanted.size()},
        {QStringLiteral("png"), png},
        {QStringLiteral("error"),
         id == 0 ? QStringLiteral("there is no such drawable") : cutText(m_renderer.error().text())},
    };
}

QJsonObject Viewer::PictureTopics::launchers(const Subject &subject)
{
    const QStringList kinds = EntryReport::kinds();
    ItemList items(Protocol::MaxEntries);
    for (int kind = 0; kind < int(kinds.size()); ++kind) {
        for (const Entry &entry : subject.package.entries(Entry::Kind(kind))) {
            if (items.isFull()) {
                items.skip(1);
                continue;
            }
            items.add({
                {QStringLiteral("className"), cutText(entry.className())},
                {QStringLiteral("label"), cutText(entry.label(subject.locale))},
                {QStringLiteral("isShown"), entry.isShown()},
                {QStringLiteral("kind"), kinds.at(kind)},
                {QStringLiteral("png"), entryIcon(entry)},
            });
        }
    }
    return items.toJson();
}

QString Viewer::PictureTopics::entryIcon(const Entry &entry)
{
    const quint32 resource = entry.iconResource();
    const auto known = m_icons.constFind(resource);
    if (known != m_icons.constEnd())
        return *known;
    if (m_drawn >= Protocol::MaxEntryIcons)
        return {};
    QString png = base64(m_renderer.icon(entry, IconRequest(EntryIconSize)));
    m_drawn = m_renderer.error().code() == IconError::Code::TooMuch ? Protocol::MaxEntryIcons : m_drawn + 1;
    // Without a resource, an icon is the path of a file.
    if (resource != 0)
        m_icons.insert(resource, png);
    return png;
}
