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

/// The drawables of a sample application, found in its package, and drawn.
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

    /// The drawables of the application @p app, for a screen on which a dp is @p pixelsPerDp.
    SampleDrawables(const QString &app, int pixelsPerDp);

    /// False when there is no such package, or it has no table.
    bool isOpen() const { return m_resolver.has_value(); }
    /// All of them, by their names.
    QVector<Drawable> all() const;
    /// The size that @p drawable has of itself; an empty one when it could not be loaded.
    QSizeF intrinsicSize(const Drawable &drawable);
    /// @p drawable, filling a picture of @p side pixels, adaptive icons cut to @p mask.
    Drawing draw(const Drawable &drawable, int side, SorrelKit::IconMask mask);

private:
    int m_pixelsPerDp;
    ZipArchive m_files;
    std::optional<SorrelKit::ResourceResolver> m_resolver;
};

/// What a mask is called in the names of files.
QString maskName(SorrelKit::IconMask mask);

#endif
