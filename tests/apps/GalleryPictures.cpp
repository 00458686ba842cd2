// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GalleryPictures.h"

#include <QPainter>
#include <QRadialGradient>

namespace {

QImage transparent(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    return image;
}

// Three fields, and a corner of a fourth colour.
QImage flag()
{
    QImage image = transparent(10, 8);
    QPainter painter(&image);
    painter.fillRect(0, 0, 4, 8, QColor(0x20, 0x40, 0xa0));
    painter.fillRect(4, 0, 6, 4, QColor(0xff, 0xff, 0xff));
    painter.fillRect(4, 4, 6, 4, QColor(0xd0, 0x30, 0x30));
    painter.fillRect(0, 0, 2, 2, QColor(0xff, 0xcc, 0x00));
    return image;
}

// A ball with a soft edge, lit from the top left, on a transparent background.
QImage photo()
{
    QImage image = transparent(96, 96);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QRadialGradient light(48, 48, 40, 34, 30);
    light.setColorAt(0, QColor(0xff, 0xff, 0xe0));
    light.setColorAt(0.6, QColor(0x40, 0xa0, 0xe0));
    light.setColorAt(1, QColor(0x10, 0x30, 0x60));
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    painter.drawEllipse(8, 8, 80, 80);
    return image;
}

// A framed disc on stripes that are one pixel wide. Good scaling turns the stripes grey.
QImage poster()
{
    QImage image = transparent(960, 960);
    QPainter painter(&image);
    for (int x = 0; x < image.width(); ++x)
        painter.fillRect(x, 0, 1, image.height(), x % 2 == 0 ? Qt::black : Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xc0, 0x20, 0x20), 80));
    painter.drawRect(40, 40, 880, 880);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x20, 0x60, 0xc0));
    painter.drawEllipse(240, 240, 480, 480);
    return image;
}

// The source of a nine-patch: @p content with a border of one pixel for the marks.
QImage ninePatch(const QImage &content)
{
    QImage image = transparent(content.width() + 2, content.height() + 2);
    QPainter painter(&image);
    painter.drawImage(1, 1, content);
    return image;
}

// These mark the border in coordinates of the content: stretched columns and rows, and the end of the padding.
void markColumns(QImage *patch, int start, int end)
{
    for (int x = start; x < end; ++x)
        patch->setPixel(x + 1, 0, 0xff000000);
}

void markRows(QImage *patch, int start, int end)
{
    for (int y = start; y < end; ++y)
        patch->setPixel(0, y + 1, 0xff000000);
}

void markPadding(QImage *patch, int left, int top, int right, int bottom)
{
    for (int x = left; x < patch->width() - 2 - right; ++x)
        patch->setPixel(x + 1, patch->height() - 1, 0xff000000);
    for (int y = top; y < patch->height() - 2 - bottom; ++y)
        patch->setPixel(patch->width() - 1, y + 1, 0xff000000);
}

// A panel with round corners, each in its own colour.
QImage panel()
{
    QImage content = transparent(16, 16);
    QPainter painter(&content);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x40, 0x40, 0x40), 2));
    painter.setBrush(QColor(0xe8, 0xe8, 0xf8));
    painter.drawRoundedRect(QRectF(1, 1, 14, 14), 4, 4);
    painter.fillRect(3, 3, 2, 2, QColor(0xd0, 0x20, 0x20));
    painter.fillRect(11, 3, 2, 2, QColor(0x20, 0xa0, 0x20));
    painter.fillRect(3, 11, 2, 2, QColor(0x20, 0x20, 0xd0));
    painter.fillRect(11, 11, 2, 2, QColor(0xd0, 0xa0, 0x00));
    painter.end();
    QImage patch = ninePatch(content);
    markColumns(&patch, 6, 10);
    markRows(&patch, 6, 10);
    markPadding(&patch, 6, 4, 3, 5);
    return patch;
}

// A button with a mark of fixed size in the middle. The stretched columns are on both sides of it, three times as many
// on the right.
QImage button()
{
    QImage content = transparent(32, 24);
    QPainter painter(&content);
    painter.fillRect(0, 0, 32, 24, QColor(0x30, 0x80, 0x50));
    painter.fillRect(2, 2, 28, 20, QColor(0x90, 0xd0, 0xa0));
    painter.fillRect(14, 8, 6, 8, QColor(0x80, 0x20, 0x80));
    painter.fillRect(22, 2, 6, 20, QColor(0xf0, 0xd0, 0x60));
    painter.end();
    QImage patch = ninePatch(content);
    markColumns(&patch, 6, 8);
    markColumns(&patch, 22, 28);
    markRows(&patch, 4, 6);
    markRows(&patch, 18, 20);
    return patch;
}

} // namespace

QVector<GalleryPicture> galleryPictures()
{
    return {
        {"drawable-mdpi/flag.png", flag()},        {"drawable-xhdpi/photo.png", photo()},
        {"drawable-nodpi/poster.png", poster()},   {"drawable-mdpi/panel.9.png", panel()},
        {"drawable-xhdpi/button.9.png", button()},
    };
}
