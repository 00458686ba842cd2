// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GOLDENS_H
#define GOLDENS_H

#include <QImage>
#include <QString>
#include <QStringList>

/**
 * Pictures that somebody has looked at and found right, of one sample application: the directory golden/<app> beside the
 * tests' sources. When SORREL_REDRAW_GOLDENS is set in the environment, compare() writes them instead of reading.
 */
class Goldens
{
public:
    /// What other processors' painting may differ by: single steps in many places, more at a few edges.
    static constexpr int MaxDifference = 32;  ///< of a channel, anywhere
    static constexpr int SmallDifference = 2; ///< of a channel, in all but
    static constexpr double MaxShare = 0.01;  ///< this share of the pixels

    explicit Goldens(const QString &app);

    static bool isRedrawing();
    /// Why @p image is not the golden @p name; empty when it is.
    QString compare(const QString &name, const QImage &image) const;
    /// The names of all goldens.
    QStringList names() const;

private:
    QString m_directory;
};

#endif
