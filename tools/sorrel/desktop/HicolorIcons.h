// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HICOLORICONS_H
#define HICOLORICONS_H

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Entry.h>

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

/**
 * A launcher's icon in the sizes of the icon theme hicolor. A drawable of any size is drawn in each. For an icon of
 * picture files, sizes above the largest picture are skipped: they would be blurred, and hosts can scale icons
 * themselves.
 */
class HicolorIcons
{
public:
    /// Draws the icons.
    HicolorIcons(SorrelKit::DrawableRenderer &renderer, const SorrelKit::Entry &launcher, SorrelKit::IconMask mask);

    /// The drawn icons, in ascending order of size.
    const QList<QImage> &pictures() const { return m_pictures; }
    /// The reasons why icons are missing or differ from the description in the package; each reason once.
    const QStringList &faults() const { return m_faults; }

    static QVector<int> sizes() { return {16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512}; }
    /// The path of the icon @p name of this size, below a data directory.
    static QString path(const QString &name, int size);

private:
    QList<QImage> m_pictures;
    QStringList m_faults;
};

#endif
