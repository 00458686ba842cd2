// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Goldens.h"

#include <QDir>

#include <cstdlib>

namespace {

int difference(QRgb a, QRgb b)
{
    return qMax(qMax(std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b))),
                qMax(std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))));
}

} // namespace

Goldens::Goldens(const QString &app) : m_directory(QStringLiteral(SORREL_GOLDEN_DIR "/%1").arg(app)) {}

bool Goldens::isRedrawing()
{
    return qEnvironmentVariableIsSet("SORREL_REDRAW_GOLDENS");
}

QString Goldens::compare(const QString &name, const QImage &image) const
{
    const QString path = QStringLiteral("%1/%2.png").arg(m_directory, name);
    if (isRedrawing())
        return QDir().mkpath(m_directory) && image.save(path) ? QString() : QStringLiteral("cannot be written");
    const QImage golden = QImage(path).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (golden.isNull())
        return QStringLiteral("there is no golden");
    if (golden.size() != image.size())
        return QStringLiteral("it has %1 by %2 pixels").arg(image.width()).arg(image.height());
    int different = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            // Premultiplied, so that the colours of transparent pixels do not count.
            const auto pixel = [&](const QImage &of) { return reinterpret_cast<const QRgb *>(of.constScanLine(y))[x]; };
            const int by = difference(pixel(golden), pixel(image));
            if (by > MaxDifference)
                return QStringLiteral("pixel %1, %2 differs by %3").arg(x).arg(y).arg(by);
            different += by > SmallDifference ? 1 : 0;
        }
    }
    if (different <= MaxShare * image.width() * image.height())
        return {};
    return QStringLiteral("%1 pixels differ by more than %2").arg(different).arg(int(SmallDifference));
}

QStringList Goldens::names() const
{
    QStringList names;
    for (const QString &file : QDir(m_directory).entryList({QStringLiteral("*.png")}, QDir::Files))
        names.append(file.chopped(4));
    return names;
}
