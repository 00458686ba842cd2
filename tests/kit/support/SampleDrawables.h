// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SAMPLEDRAWABLES_H
#define SAMPLEDRAWABLES_H

#include "archive/ZipArchive.h"
#include "resources/ResourceResolver.h"

#include <SorrelKit/IconMask.h>

#include <QImage>
#include <QString>
#include <QVector>

#include <optional>

/// Finds and draws the drawables of a sample application.
class SampleDrawables
{
public:
    struct Drawable {
        QString name;
        quint32 id = 0;
    };
    struct Drawing {
        QImage image; ///< null when the drawable could not be loaded
        QString error;
    };

    /// The drawables of the application @p app, for a screen with @p pixelsPerDp pixels for each dp.
    SampleDrawables(const QString &app, int pixelsPerDp);

    /// False when the package does not exist or has no table.
    bool isOpen() const { return m_resolver.has_value(); }
    /// All drawables, in the order of their names.
    QVector<Drawable> all() const;
    /// The intrinsic size of @p drawable; empty when it could not be loaded.
    QSizeF intrinsicSize(const Drawable &drawable);
    /// @p drawable in a picture of @p side by @p side pixels; adaptive icons are cut to @p mask.
    Drawing draw(const Drawable &drawable, int side, SorrelKit::IconMask mask);

private:
    int m_pixelsPerDp;
    ZipArchive m_files;
    std::optional<SorrelKit::ResourceResolver> m_resolver;
};

/// The name of a mask in names of files.
QString maskName(SorrelKit::IconMask mask);

#endif
