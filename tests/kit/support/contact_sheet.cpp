// SPDX-License-Identifier: LGPL-2.1-or-later

// contact_sheet FILE APP...: writes a picture of all drawables of the sample applications, each with its name, on a
// checkerboard and in two sizes. An adaptive icon is drawn in every mask.
// contact_sheet FILE --framework FRAMEWORK NAME...: the same of these drawables of a platform ("ic_menu_add"), as a package
// without any resources of its own sees them, in the platform's default theme.

#include "SampleDrawables.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>
#include <SorrelKit/Resources.h>

#include <QGuiApplication>
#include <QPainter>

#include <cstdio>

using SorrelKit::IconMask;

namespace {

constexpr int PixelsPerDp = 2;
constexpr int LargeSide = 96;
constexpr int SmallSide = 32;
constexpr int CellWidth = 160;
constexpr int CellHeight = 128;
constexpr int Columns = 10;
constexpr int Square = 8;

struct Cell {
    QString name;
    QString error;
    QImage large;
    QImage small;
};

void append(QVector<Cell> *cells, SampleDrawables *samples, const SampleDrawables::Drawable &drawable, IconMask mask,
            const QString &name)
{
    const SampleDrawables::Drawing large = samples->draw(drawable, LargeSide, mask);
    cells->append({name, large.error, large.image, samples->draw(drawable, SmallSide, mask).image});
}

bool appendApp(QVector<Cell> *cells, const QString &app)
{
    SampleDrawables samples(app, PixelsPerDp);
    if (!samples.isOpen())
        return false;
    for (const SampleDrawables::Drawable &drawable : samples.all()) {
        // A part of another file, which is drawn with that file.
        if (drawable.name.startsWith(QLatin1Char('$')))
            continue;
        if (!drawable.name.contains(QLatin1String("adaptive"))) {
            append(cells, &samples, drawable, IconMask::None, drawable.name);
            continue;
        }
        for (IconMask mask : {IconMask::None, IconMask::Circle, IconMask::RoundedSquare, IconMask::Squircle})
            append(cells, &samples, drawable, mask, drawable.name + QLatin1Char('.') + maskName(mask));
    }
    return true;
}

bool appendPlatform(QVector<Cell> *cells, const QString &fileName, const QStringList &names)
{
    using namespace SorrelKit;
    const Platform platform(fileName);
    Package package;
    package.setPlatform(platform);
    DrawableRenderer renderer(package);
    const Resources resources{Package(fileName)};
    IconRequest large(LargeSide);
    large.setThemeStyle(resources.find(QStringLiteral("style/Theme.DeviceDefault.Light.DarkActionBar")));
    IconRequest small = large;
    small.setSize(SmallSide);
    for (const QString &name : names) {
        const quint32 id = resources.find(QStringLiteral("drawable/") + name);
        Cell cell{name, QString(), renderer.drawable(id, large), QImage()};
        cell.error = renderer.error().text();
        cell.small = renderer.drawable(id, small);
        cells->append(cell);
    }
    return platform.isValid();
}

void paintOnCheckerboard(QPainter *painter, QPoint at, const QImage &image, int side)
{
    for (int y = 0; y < side; y += Square) {
        for (int x = 0; x < side; x += Square) {
            const QRect square = QRect(x, y, Square, Square) & QRect(0, 0, side, side);
            painter->fillRect(square.translated(at), (x + y) / Square % 2 == 0 ? 0xffc8c8c8 : 0xfff0f0f0);
        }
    }
    painter->drawImage(at, image);
}

QImage sheetOf(const QVector<Cell> &cells)
{
    const int rows = (int(cells.size()) + Columns - 1) / Columns;
    QImage sheet(Columns * CellWidth, rows * CellHeight, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    QFont font = painter.font();
    font.setPixelSize(9);
    painter.setFont(font);
    for (int i = 0; i < cells.size(); ++i) {
        const Cell &cell = cells.at(i);
        const QPoint at(i % Columns * CellWidth + 8, i / Columns * CellHeight + 8);
        paintOnCheckerboard(&painter, at, cell.large, LargeSide);
        paintOnCheckerboard(&painter, at + QPoint(LargeSide + 8, 0), cell.small, SmallSide);
        painter.setPen(cell.error.isEmpty() ? Qt::black : Qt::red);
        painter.drawText(QRect(at + QPoint(0, LargeSide), QSize(CellWidth - 10, 14)), Qt::AlignLeft,
                         painter.fontMetrics().elidedText(cell.name, Qt::ElideMiddle, CellWidth - 10));
        if (cell.large.isNull())
            painter.drawText(QRect(at, QSize(LargeSide, LargeSide)), Qt::TextWordWrap, cell.error);
    }
    return sheet;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3) {
        std::fputs("usage: contact_sheet FILE APP...\n       contact_sheet FILE --framework FRAMEWORK NAME...\n",
                   stderr);
        return 2;
    }
    QVector<Cell> cells;
    const bool isOfPlatform = arguments.at(2) == QLatin1String("--framework") && arguments.size() > 3;
    if (isOfPlatform && !appendPlatform(&cells, arguments.at(3), arguments.mid(4)))
        std::fprintf(stderr, "contact_sheet: %s is no platform\n", qPrintable(arguments.at(3)));
    for (const QString &app : isOfPlatform ? QStringList() : arguments.mid(2)) {
        if (!appendApp(&cells, app))
            std::fprintf(stderr, "contact_sheet: no package of %s\n", qPrintable(app));
    }
    if (!cells.isEmpty() && sheetOf(cells).save(arguments.at(1)))
        return 0;
    std::fprintf(stderr, "contact_sheet: cannot write %s\n", qPrintable(arguments.at(1)));
    return 1;
}
