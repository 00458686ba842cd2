// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONLOOKUP_H
#define ICONLOOKUP_H

#include "format/Allowance.h"
#include "launchers/ArchiveImages.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <utility>

class ApkResources;
class QuaZip;

/**
 * The pictures that icon references lead to, in every configuration. What a reference led to is remembered while this
 * object lives, so that launchers with one icon share its pictures.
 */
class IconLookup
{
public:
    /// Characters of the references, and of the values that they lead to, while this object lives; each counts 16 more.
    /// Launchers may all start elsewhere in one chain of references, and a path may be as long as the table.
    static constexpr int MaxCharacters = 1 << 22;

    /// Resolves by @p resources, which outlives this object; the others are as for ArchiveImages.
    IconLookup(const ApkResources &resources, QuaZip *archive, std::function<qint64()> decodingBytes)
        : m_resources(resources), m_images(archive, std::move(decodingBytes)), m_characters(MaxCharacters)
    {
    }

    /**
     * The pictures of @p icon, a reference or a path in the archive, each once. The values of the icon itself come in
     * the table's order; those of a reference among them stand in its place in reverse order, which is kept so on
     * purpose. What is no readable picture is left out, and all that comes after MaxCharacters.
     */
    QList<QImage> images(const QString &icon);

private:
    QList<QImage> resolved(const QString &icon);
    QStringList values(const QString &reference);

    const ApkResources &m_resources;
    ArchiveImages m_images;
    QMap<QString, QList<QImage>> m_known;
    Allowance m_characters;
};

#endif
