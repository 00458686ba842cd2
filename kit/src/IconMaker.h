// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONMAKER_H
#define SORRELKIT_ICONMAKER_H

#include "Allowance.h"
#include "Drawable.h"
#include "PackageFiles.h"
#include "ResourceResolver.h"

#include <SorrelKit/IconMask.h>
#include <SorrelKit/Launcher.h>

#include <QImage>
#include <QString>
#include <QVector>

namespace SorrelKit {

/**
 * Chooses among what a package has for an icon, and makes a picture of it: what the newest platform takes when that is
 * XML or a colour, else the picture file whose size fits best.
 */
class IconMaker
{
public:
    /// Sides of a picture at least and at most.
    static constexpr int MinSize = 1;
    static constexpr int MaxSize = 1024;
    /// An icon's side on a device. Together with the pixels that are asked for, it gives the density of the screen.
    static constexpr int IconDp = 48;
    /// Picture files of an icon that are looked at, at most, and their bytes.
    static constexpr int MaxFiles = 64;
    static constexpr qint64 MaxFileBytes = 16 << 20;
    static constexpr qint64 MaxBytes = 32 << 20;
    /// What finding these files may take, in ResourceResolver::steps(): a table may have as many type chunks for each
    /// resource, and as many launchers as there may be ask for theirs. The largest applications take some thousands.
    static constexpr qint64 MaxSteps = 1 << 17;

    /// Both outlive this object.
    IconMaker(const ResourceResolver &resolver, PackageFiles &files) : m_resolver(resolver), m_files(files) {}

    /// The icon that @p icon stands for, a reference or a path, as a square of @p size pixels.
    QImage icon(const ResolvedValue &icon, int size, IconMask mask);
    /// What there is for it, as Launcher::iconFiles() has it.
    QVector<IconFile> iconFiles(const ResolvedValue &icon) const;
    /// Why the icon is not, or not wholly, what the package describes; empty when it is.
    QString error() const { return m_error; }

private:
    QVector<ResolvedValue> candidates(const ResolvedValue &icon, const ResourceResolver &resolver) const;
    QImage drawn(const ResolvedValue &value, const ResourceResolver &resolver, int size, IconMask mask);
    QImage bestPicture(const QVector<ResolvedValue> &candidates, int size);
    QByteArray file(const QString &path, Allowance *bytesLeft) const;
    void setError(const QString &text);

    const ResourceResolver &m_resolver;
    PackageFiles &m_files;
    QString m_error;
};

} // namespace SorrelKit

#endif
