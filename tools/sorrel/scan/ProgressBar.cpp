// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ProgressBar.h"

#include <cstdio>
#include <unistd.h>

namespace {

constexpr int BarWidth = 24;
constexpr qint64 DrawEveryMs = 100;

bool canDraw()
{
    return isatty(STDERR_FILENO) == 1 && qgetenv("TERM") != "dumb";
}

QString clockText(qint64 seconds)
{
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ProgressBar::ProgressBar(int total, bool isWanted) : m_total(total), m_isShown(isWanted && total > 0 && canDraw())
{
    m_sinceStart.start();
    m_sinceDrawn.start();
}

void ProgressBar::setDone(int done)
{
    if (!m_isShown || (m_isDrawn && m_sinceDrawn.elapsed() < DrawEveryMs))
        return;
    // Moves the cursor to the start of the line and erases the line.
    std::fprintf(stderr, "\r\033[K%s", qPrintable(line(done)));
    m_sinceDrawn.restart();
    m_isDrawn = true;
}

void ProgressBar::clear()
{
    if (m_isDrawn)
        std::fputs("\r\033[K", stderr);
    m_isDrawn = false;
}

QString ProgressBar::line(int done) const
{
    const double share = double(done) / m_total;
    const int filled = int(share * BarWidth);
    const double seconds = double(qMax(qint64(1), m_sinceStart.elapsed())) / 1000;
    const double perSecond = done / seconds;
    QString text = QStringLiteral("[%1%2] %3/%4  %5 %")
                       .arg(QString(filled, QLatin1Char('#')), QString(BarWidth - filled, QLatin1Char('.')))
                       .arg(done)
                       .arg(m_total)
                       .arg(int(share * 100));
    if (done > 0)
        text += QStringLiteral("  %1/s  %2 left")
                    .arg(qRound(perSecond))
                    .arg(clockText(qint64((m_total - done) / perSecond)));
    return text;
}
