// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ICONPROVIDER_H
#define SORRELQML_ICONPROVIDER_H

#include <QQuickAsyncImageProvider>

#include <memory>

QT_BEGIN_NAMESPACE
class QQmlEngine;
QT_END_NAMESPACE

namespace SorrelQml {

class IconThreads;

/**
 * The provider of `image://sorrel/...`; IconUrl has the form of the URLs. `Image.sourceSize`, in pixels, replaces the
 * size in the URL. An icon that cannot be had gives Image.Error.
 *
 * Icons of an index are read in one thread (ShelfIcons). Icons of packages, which only a PackageInfo offers, are
 * drawn in this process within the limits of DrawableRenderer, in up to IconThreads::MaxThreads threads.
 */
class IconProvider : public QQuickAsyncImageProvider
{
public:
    IconProvider();
    /// Waits for the icons that are being drawn.
    ~IconProvider() override;

    /// Makes a provider for @p engine. Its threads end with the engine: the provider itself does not end when Images are
    /// still loading, because Qt leaves their responses behind, which keep it.
    static void addTo(QQmlEngine *engine);

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

private:
    const std::shared_ptr<IconThreads> m_threads;
};

} // namespace SorrelQml

#endif
