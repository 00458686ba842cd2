// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROGRESSBAR_H
#define PROGRESSBAR_H

#include <QElapsedTimer>
#include <QString>

/**
 * A line on standard error that tells how far a long work is: a bar, what was done of how much, how many a second, and the
 * time that is left. It is drawn at most ten times a second, and only on a terminal that can draw over a line.
 */
class ProgressBar
{
public:
    /// For @p total steps. Draws nothing when it is not @p isWanted.
    ProgressBar(int total, bool isWanted);
    ~ProgressBar() { clear(); }

    void setDone(int done);
    /// Takes the line away, so that others can be written; the next setDone() draws it again.
    void clear();

private:
    Q_DISABLE_COPY(ProgressBar)

    QString line(int done) const;

    const int m_total;
    const bool m_isShown;
    bool m_isDrawn = false;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceDrawn;
};

#endif
