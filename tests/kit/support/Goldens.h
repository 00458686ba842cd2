// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GOLDENS_H
#define GOLDENS_H

#include <QImage>
#include <QString>
#include <QStringList>

/**
 * Pictures of one sample application that a person has checked: the directory golden/<app> beside the sources of the
 * tests. When SORREL_REDRAW_GOLDENS is set in the environment, compare() writes them instead of reading.
 */
class Goldens
{
public:
    /// The allowed difference, as other processors paint differently: single steps in many places, more at a few edges.
    static constexpr int MaxDifference = 32;  ///< of a channel, anywhere
    static constexpr int SmallDifference = 2; ///< of a channel, except in
    static constexpr double MaxShare = 0.01;  ///< this share of the pixels

    explicit Goldens(const QString &app);

    static bool isRedrawing();
    /// The difference of @p image from the golden @p name; empty when there is none.
    QString compare(const QString &name, const QImage &image) const;
    /// The names of all goldens.
    QStringList names() const;

private:
    QString m_directory;
};

#endif
