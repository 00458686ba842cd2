// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HICOLORICONS_H
#define HICOLORICONS_H

#include <SorrelKit/IconMask.h>
#include <SorrelKit/Launcher.h>

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

/**
 * A launcher's icon in the sizes that the icon theme hicolor has directories for. What the package draws in any size is
 * drawn in each; of an icon that is pictures alone, sizes above the largest of them would be blurred, and are left to
 * hosts, which scale themselves.
 */
class HicolorIcons
{
public:
    /// Draws them.
    HicolorIcons(const SorrelKit::Launcher &launcher, SorrelKit::IconMask mask);

    /// Those that could be drawn, ascending.
    const QList<QImage> &pictures() const { return m_pictures; }
    /// Why some, or all, were not, or not as the package describes them; each reason once.
    const QStringList &faults() const { return m_faults; }

    static QVector<int> sizes() { return {16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512}; }
    /// Where below a directory of data the icon @p name is looked for, in this size.
    static QString path(const QString &name, int size);

private:
    QList<QImage> m_pictures;
    QStringList m_faults;
};

#endif
