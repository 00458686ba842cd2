// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Goldens.h"
#include "SampleDrawables.h"

#include <QDir>
#include <QPainter>
#include <QSvgRenderer>
#include <QtTest>

Q_DECLARE_METATYPE(SampleDrawables::Drawable)

using SorrelKit::IconMask;

namespace {

constexpr int PixelsPerDp = 2;
constexpr int Side = 96;
constexpr int TwinScale = 8;

// The allowed difference of a vector and its twin. It is largest where edges of one path meet in a pixel, because a
// painter adds up their coverage.
constexpr int MaxDifference = 96;  // of a channel, anywhere
constexpr int SmallDifference = 8; // of a channel, in all but
constexpr double MaxShare = 0.01;  // this share of the pixels
constexpr double MaxMean = 0.5;    // of all channels

QString twinPath(const QString &name)
{
    return QStringLiteral(SORREL_TWINS_DIR "/%1.svg").arg(name);
}

// Enlarged, because Qt replaces a curve by lines that are off by some tenths of a pixel.
QImage twin(const QString &name)
{
    constexpr int LargeSide = Side * TwinScale;
    QImage image(LargeSide, LargeSide, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(twinPath(name));
    if (!renderer.isValid())
        return {};
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, LargeSide, LargeSide));
    painter.end();
    return image.scaled(Side, Side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// The difference of two images that should be equal; empty when there is none.
QString difference(const QImage &image, const QImage &expected)
{
    if (image.size() != expected.size() || image.format() != expected.format())
        return QStringLiteral("it is another kind of image");
    qint64 sum = 0;
    int most = 0;
    int different = 0;
    for (int y = 0; y < image.height(); ++y) {
        const uchar *const line = image.constScanLine(y);
        const uchar *const expectedLine = expected.constScanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            int pixel = 0;
            for (int channel = 4 * x; channel < 4 * x + 4; ++channel) {
                const int by = std::abs(line[channel] - expectedLine[channel]);
                sum += by;
                pixel = qMax(pixel, by);
            }
            most = qMax(most, pixel);
            different += pixel > SmallDifference ? 1 : 0;
        }
    }
    const int pixels = image.width() * image.height();
    const double mean = double(sum) / pixels / 4;
    const double share = double(different) / pixels;
    if (most <= MaxDifference && mean <= MaxMean && share <= MaxShare)
        return {};
    return QStringLiteral("channels differ by %1 at most, by %2 on average, %3 of the pixels by more than %4")
        .arg(most)
        .arg(mean)
        .arg(share)
        .arg(SmallDifference);
}

// The sizes in pixels of the vectors that are not 24 dp wide and high.
QSizeF expectedSize(const QString &name)
{
    constexpr qreal PixelsPerInch = 160 * PixelsPerDp;
    if (name == QLatin1String("path_lines"))
        return {PixelsPerInch / 4, 18 * PixelsPerInch / 72};
    if (name == QLatin1String("path_cubics"))
        return {100, 6 * PixelsPerInch / 25.4};
    if (name == QLatin1String("text_reference"))
        return {32 * PixelsPerDp, 40 * PixelsPerDp};
    return {24 * PixelsPerDp, 24 * PixelsPerDp};
}

} // namespace

/// Draws each vector of the application "vectors", and compares it with its twin, an SVG file of the same picture that
/// Qt draws. A vector with features that SVG does not have is compared with its golden picture.
class TestVectorDrawable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void drawables_data();
    void drawables();
    void sizes_data();
    void sizes();
    void everyTwinAndEveryGoldenHasADrawable();

private:
    SampleDrawables m_samples{QStringLiteral("vectors"), PixelsPerDp};
    const Goldens m_goldens{QStringLiteral("vectors")};
    QStringList m_names;
};

void TestVectorDrawable::initTestCase()
{
    QVERIFY(m_samples.isOpen());
}

void TestVectorDrawable::drawables_data()
{
    QTest::addColumn<SampleDrawables::Drawable>("drawable");
    m_names.clear();
    for (const SampleDrawables::Drawable &drawable : m_samples.all()) {
        // A part that the compiler moved into a file of its own.
        if (drawable.name.startsWith('$'))
            continue;
        m_names.append(drawable.name);
        QTest::newRow(qPrintable(drawable.name)) << drawable;
    }
    QVERIFY(m_names.size() > 70);
}

void TestVectorDrawable::drawables()
{
    QFETCH(SampleDrawables::Drawable, drawable);
    const SampleDrawables::Drawing drawing = m_samples.draw(drawable, Side, IconMask::None);
    QCOMPARE(drawing.error, QString());
    QVERIFY(!drawing.image.isNull());
    if (!QFile::exists(twinPath(drawable.name))) {
        QCOMPARE(m_goldens.compare(drawable.name, drawing.image), QString());
        return;
    }
    QVERIFY2(!m_goldens.names().contains(drawable.name), "a twin and a golden");
    const QImage expected = twin(drawable.name);
    QVERIFY(!expected.isNull());
    const QString wrong = difference(drawing.image, expected);
    if (!wrong.isEmpty()) {
        drawing.image.save(drawable.name + ".actual.png");
        expected.save(drawable.name + ".expected.png");
    }
    QCOMPARE(wrong, QString());
}

void TestVectorDrawable::sizes_data()
{
    drawables_data();
}

void TestVectorDrawable::sizes()
{
    QFETCH(SampleDrawables::Drawable, drawable);
    const QSizeF size = m_samples.intrinsicSize(drawable);
    const QSizeF expected = expectedSize(drawable.name);
    QVERIFY2(qAbs(size.width() - expected.width()) < 0.01 && qAbs(size.height() - expected.height()) < 0.01,
             qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())));
}

void TestVectorDrawable::everyTwinAndEveryGoldenHasADrawable()
{
    QStringList names = m_goldens.names();
    for (const QString &file : QDir(QStringLiteral(SORREL_TWINS_DIR)).entryList(QDir::Files)) {
        QVERIFY2(file.endsWith(".svg"), qPrintable(file));
        names.append(file.chopped(4));
    }
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QVERIFY2(m_names.contains(name), qPrintable(name));
}

QTEST_GUILESS_MAIN(TestVectorDrawable)
#include "tst_vectordrawable.moc"
