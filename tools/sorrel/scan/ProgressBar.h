// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROGRESSBAR_H
#define PROGRESSBAR_H

#include <QElapsedTimer>
#include <QString>

/**
 * Shows progress in a line on standard error: a bar, the steps done and in total, the steps per second, and the
 * remaining time. It is drawn at most ten times a second, and only on a terminal that can overwrite a line.
 */
class ProgressBar
{
public:
    /// Shows the progress of @p total steps; draws nothing unless @p isWanted.
    ProgressBar(int total, bool isWanted);
    ~ProgressBar() { clear(); }

    void setDone(int done);
    /// Erases the line, so other lines can be written. The next setDone() draws it again.
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
