// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/DrawableRenderer.h>

#include "icon/IconErrorTable.h"
#include "icon/IconRenderer.h"
#include "package/DrawingAccess.h"

#include <SorrelKit/Entry.h>
#include <SorrelKit/Package.h>

using namespace SorrelKit::SORRELKIT_PRIVATE_NAMESPACE;

namespace SorrelKit {

namespace {

constexpr int MaxStandIns = 4;

} // namespace

class DrawableRendererPrivate
{
public:
    explicit DrawableRendererPrivate(const Package &owner) : package(owner) {}

    QImage drawn(DrawingSource &source, const ResolvedValue &icon, const IconRequest &request)
    {
        IconRenderer renderer(source.resolver(), source.files());
        QImage image = renderer.icon(icon, request);
        error = renderer.error();
        return image;
    }

    QImage bannerOf(DrawingSource &source, const ResolvedValue &banner, const IconRequest &request)
    {
        IconRenderer renderer(source.resolver(), source.files());
        QImage image = renderer.banner(banner, request);
        error = renderer.error();
        return image;
    }

    Package package;
    IconError error;
};

DrawableRenderer::DrawableRenderer(const Package &package) : d(std::make_unique<DrawableRendererPrivate>(package)) {}
DrawableRenderer::DrawableRenderer(DrawableRenderer &&other) noexcept = default;
DrawableRenderer &DrawableRenderer::operator=(DrawableRenderer &&other) noexcept = default;
DrawableRenderer::~DrawableRenderer() = default;

QImage DrawableRenderer::icon(const IconRequest &request)
{
    DrawingSource &source = drawingSource(d->package);
    const std::optional<ResolvedValue> own = source.applicationIcon(request.isRound());
    QImage image = d->drawn(source, own.value_or(ResolvedValue()), request);
    if (!image.isNull())
        return image;
    const IconError ownError = d->error;
    for (const ResolvedValue &icon : source.launcherIcons(MaxStandIns, request.isRound())) {
        image = d->drawn(source, icon, request);
        if (!image.isNull())
            break;
    }
    // An icon of the application that cannot be drawn stays an error; an icon that it does not have is none.
    if (image.isNull() || own)
        d->error = ownError;
    return image;
}

QImage DrawableRenderer::icon(const Entry &launcher, const IconRequest &request)
{
    const EntryIcon icon = entryIcon(launcher, request.isRound() ? EntryPicture::RoundIcon : EntryPicture::Icon);
    if (icon.source != nullptr)
        return d->drawn(*icon.source, icon.icon, request);
    d->error = IconErrorTable::iconError({DrawableFault::NoIcon, QString()});
    return {};
}

QImage DrawableRenderer::banner(const IconRequest &request)
{
    DrawingSource &source = drawingSource(d->package);
    return d->bannerOf(source, source.applicationBanner().value_or(ResolvedValue()), request);
}

QImage DrawableRenderer::banner(const Entry &entry, const IconRequest &request)
{
    const EntryIcon banner = entryIcon(entry, EntryPicture::Banner);
    if (banner.source != nullptr)
        return d->bannerOf(*banner.source, banner.icon, request);
    d->error = IconErrorTable::iconError({DrawableFault::NoIcon, QString()});
    return {};
}

QImage DrawableRenderer::drawable(quint32 id, const IconRequest &request)
{
    ResolvedValue reference;
    reference.value = {ValueType::Reference, id};
    reference.resource = id;
    return d->drawn(drawingSource(d->package), reference, request);
}

IconError DrawableRenderer::error() const
{
    return d->error;
}

} // namespace SorrelKit
