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

bool isNothing(const QImage &image)
{
    return image.isNull();
}

bool isNothing(const QVector<IconFrame> &frames)
{
    return frames.isEmpty();
}

EntryIcon iconOf(const Entry &entry, const IconRequest &request)
{
    return entryIcon(entry, request.isRound() ? EntryPicture::RoundIcon : EntryPicture::Icon);
}

ResolvedValue referenceTo(quint32 id)
{
    ResolvedValue reference;
    reference.value = {ValueType::Reference, id};
    reference.resource = id;
    return reference;
}

} // namespace

class DrawableRendererPrivate
{
public:
    explicit DrawableRendererPrivate(const Package &owner) : package(owner) {}

    /// Draws by @p draw, a function of IconRenderer.
    template <typename Result>
    Result drawn(DrawingSource &source, const ResolvedValue &icon, const IconRequest &request,
                 Result (IconRenderer::*draw)(const ResolvedValue &, const IconRequest &),
                 const XmlElement *activity = nullptr)
    {
        const bool needsTheme = request.theme() == IconRequest::Theme::Package;
        IconRenderer renderer(source.resolver(), source.files());
        renderer.setPackageTheme(needsTheme ? source.theme(activity) : 0);
        Result result = (renderer.*draw)(icon, request);
        error = renderer.error();
        return result;
    }

    /// The same for a picture of an entry.
    template <typename Result>
    Result drawn(const EntryIcon &icon, const IconRequest &request,
                 Result (IconRenderer::*draw)(const ResolvedValue &, const IconRequest &))
    {
        if (icon.source != nullptr)
            return drawn(*icon.source, icon.icon, request, draw, icon.activity);
        error = IconErrorTable::iconError({DrawableFault::NoIcon, QString()});
        return {};
    }

    /// The same for the icon of the application, or of a launcher in its place.
    template <typename Result>
    Result drawnForApplication(const IconRequest &request,
                               Result (IconRenderer::*draw)(const ResolvedValue &, const IconRequest &))
    {
        DrawingSource &source = drawingSource(package);
        const std::optional<ResolvedValue> own = source.applicationIcon(request.isRound());
        Result result = drawn(source, own.value_or(ResolvedValue()), request, draw);
        if (!isNothing(result))
            return result;
        const IconError ownError = error;
        for (const LauncherIcon &launcher : source.launcherIcons(MaxStandIns, request.isRound())) {
            result = drawn(source, launcher.icon, request, draw, launcher.activity);
            if (!isNothing(result))
                break;
        }
        // An icon of the application that cannot be drawn stays an error; an icon that it does not have is none.
        if (isNothing(result) || own)
            error = ownError;
        return result;
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
    return d->drawnForApplication(request, &IconRenderer::icon);
}

QImage DrawableRenderer::icon(const Entry &launcher, const IconRequest &request)
{
    return d->drawn(iconOf(launcher, request), request, &IconRenderer::icon);
}

QImage DrawableRenderer::drawable(quint32 id, const IconRequest &request)
{
    return d->drawn(drawingSource(d->package), referenceTo(id), request, &IconRenderer::icon);
}

QImage DrawableRenderer::banner(const IconRequest &request)
{
    DrawingSource &source = drawingSource(d->package);
    return d->drawn(source, source.applicationBanner().value_or(ResolvedValue()), request, &IconRenderer::banner);
}

QImage DrawableRenderer::banner(const Entry &entry, const IconRequest &request)
{
    return d->drawn(entryIcon(entry, EntryPicture::Banner), request, &IconRenderer::banner);
}

QVector<IconFrame> DrawableRenderer::frames(const IconRequest &request)
{
    return d->drawnForApplication(request, &IconRenderer::frames);
}

QVector<IconFrame> DrawableRenderer::frames(const Entry &entry, const IconRequest &request)
{
    return d->drawn(iconOf(entry, request), request, &IconRenderer::frames);
}

QVector<IconFrame> DrawableRenderer::frames(quint32 id, const IconRequest &request)
{
    return d->drawn(drawingSource(d->package), referenceTo(id), request, &IconRenderer::frames);
}

IconError DrawableRenderer::error() const
{
    return d->error;
}

} // namespace SorrelKit
