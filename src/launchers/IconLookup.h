// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONLOOKUP_H
#define ICONLOOKUP_H

#include "launchers/ArchiveImages.h"
#include "limits/Budget.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QString>

class ApkResources;
class QuaZip;

/**
 * Finds the pictures behind icon references, in every configuration. Results are remembered while this object lives, so
 * launchers with one icon share its pictures.
 *
 * A reference and each of its values cost work, by their length. Launchers may all start at different places of one
 * chain of references, and a path may be as long as the table.
 */
class IconLookup
{
public:
    /// The bytes that a value holds while an icon is resolved, besides two for each character.
    static constexpr qint64 ValueBytes = 128;

    /// Resolves references with @p resources. @p archive may be null; then there are no pictures. All outlive this
    /// object.
    IconLookup(const ApkResources &resources, QuaZip *archive, Budget &budget)
        : m_resources(resources), m_images(archive, budget), m_budget(budget)
    {
    }

    /**
     * The pictures of @p icon, a reference or a path in the archive, each once. The values of the icon itself come in
     * the table's order. The values of a reference among them take its place in reverse order, which is kept on
     * purpose. Values that are no readable picture are left out, and so are values that do not fit in the budget.
     */
    QList<QImage> images(const QString &icon);

private:
    QList<QImage> resolved(const QString &icon);
    QStringList values(const QString &reference);

    const ApkResources &m_resources;
    ArchiveImages m_images;
    Budget &m_budget;
    qint64 m_heldBytes = 0; ///< for the icon that is being resolved
    bool m_isOver = false;
    QMap<QString, QList<QImage>> m_known;
};

#endif
