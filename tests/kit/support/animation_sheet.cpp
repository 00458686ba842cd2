// SPDX-License-Identifier: LGPL-2.1-or-later

// animation_sheet FILE FRAMEWORK: writes a picture of animated vectors of a framework package: a row for each, with frames
// at equal steps of its time. The name is red when a part could not be drawn.

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Resources.h>

#include <QGuiApplication>
#include <QPainter>

#include <cstdio>
#include <iterator>

using SorrelKit::DrawableRenderer;
using SorrelKit::IconFrame;
using SorrelKit::IconRequest;
using SorrelKit::Package;
using SorrelKit::Resources;

namespace {

constexpr int Side = 72;
constexpr int Gap = 4;
constexpr int NameHeight = 16;
constexpr int Steps = 14;
constexpr int RowHeight = Side + NameHeight + 2 * Gap;

constexpr const char *Drawables[] = {
    "ft_avd_toarrow_animation",           "ft_avd_tooverflow_animation",
    "btn_radio_off_to_on_mtrl_animation", "btn_checkbox_unchecked_to_checked_mtrl_animation",
    "ic_signal_wifi_transient_animation", "progress_medium",
};

int durationOf(const QVector<IconFrame> &frames)
{
    int duration = 0;
    for (const IconFrame &frame : frames)
        duration += frame.duration();
    return duration;
}

QImage imageAt(const QVector<IconFrame> &frames, int time)
{
    for (const IconFrame &frame : frames) {
        if (time < frame.duration())
            return frame.image();
        time -= frame.duration();
    }
    return frames.isEmpty() ? QImage() : frames.constLast().image();
}

QImage sheetOf(const Package &package)
{
    const Resources resources(package);
    DrawableRenderer renderer(package);
    IconRequest request(Side - 2 * Gap);
    request.setThemeStyle(resources.find(QStringLiteral("style/Theme.Material.Light")));
    QImage sheet(Steps * (Side + Gap) + Gap, int(std::size(Drawables)) * RowHeight, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    int y = Gap;
    for (const char *const name : Drawables) {
        const QVector<IconFrame> frames =
            renderer.frames(resources.find(QStringLiteral("drawable/") + QLatin1String(name)), request);
        const int duration = durationOf(frames);
        const QString error = renderer.error().text();
        for (int step = 0; step < Steps; ++step) {
            const QRect cell(Gap + step * (Side + Gap), y, Side, Side);
            painter.fillRect(cell, QColor(0xff, 0xf3, 0xe0));
            painter.drawImage(cell.topLeft() + QPoint(Gap, Gap), imageAt(frames, duration * step / (Steps - 1)));
        }
        painter.setPen(error.isEmpty() ? Qt::black : Qt::red);
        painter.drawText(QRect(Gap, y + Side, sheet.width(), NameHeight), Qt::AlignVCenter,
                         QStringLiteral("%1: %2 pictures in %3 ms%4")
                             .arg(QLatin1String(name), QString::number(frames.size()), QString::number(duration),
                                  error.isEmpty() ? QString() : QLatin1String("; ") + error));
        y += RowHeight;
    }
    return sheet;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: animation_sheet FILE FRAMEWORK\n", stderr);
        return 2;
    }
    const Package package(arguments.at(2));
    if (package.isValid() && sheetOf(package).save(arguments.at(1)))
        return 0;
    std::fprintf(stderr, "animation_sheet: cannot draw %s into %s\n", qPrintable(arguments.at(2)),
                 qPrintable(arguments.at(1)));
    return 1;
}
