// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Goldens.h"
#include "SampleDrawables.h"

#include <QtTest>

Q_DECLARE_METATYPE(SampleDrawables::Drawable)
Q_DECLARE_METATYPE(SorrelKit::IconMask)

using SorrelKit::IconMask;

namespace {

constexpr int PixelsPerDp = 2;
constexpr int Side = 96;

// Drawables that are not drawn in full, and their errors.
QString expectedError(const QString &name)
{
    return name == QLatin1String("layers_partly") ? QStringLiteral("unsupported drawable <unknown-drawable>")
                                                  : QString();
}

// Drawables without visible content.
bool isInvisible(const QString &name)
{
    const QStringList names{"clip_at_level_0", "ripple_mask_alone", "scale_at_level_0", "shape_nothing",
                            "shape_ring_at_level"};
    return names.contains(name);
}

bool isTransparent(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                return false;
        }
    }
    return true;
}

} // namespace

/// Draws each drawable of the application "gallery", and compares it with its golden picture.
class TestGallery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void goldens_data();
    void goldens();
    void everyGoldenHasADrawable();

private:
    SampleDrawables m_samples{QStringLiteral("gallery"), PixelsPerDp};
    const Goldens m_goldens{QStringLiteral("gallery")};
    QStringList m_names;
};

void TestGallery::initTestCase()
{
    QVERIFY(m_samples.isOpen());
    QVERIFY(!m_samples.all().isEmpty());
}

void TestGallery::goldens_data()
{
    QTest::addColumn<SampleDrawables::Drawable>("drawable");
    QTest::addColumn<IconMask>("mask");
    const auto add = [&](const QString &name, const SampleDrawables::Drawable &drawable, IconMask mask) {
        m_names.append(name);
        QTest::newRow(qPrintable(name)) << drawable << mask;
    };
    for (const SampleDrawables::Drawable &drawable : m_samples.all()) {
        if (!drawable.name.contains(QLatin1String("adaptive"))) {
            add(drawable.name, drawable, IconMask::None);
            continue;
        }
        for (IconMask mask : {IconMask::None, IconMask::Circle, IconMask::RoundedSquare, IconMask::Squircle})
            add(drawable.name + QLatin1Char('.') + maskName(mask), drawable, mask);
    }
}

void TestGallery::goldens()
{
    QFETCH(SampleDrawables::Drawable, drawable);
    QFETCH(IconMask, mask);
    const SampleDrawables::Drawing drawing = m_samples.draw(drawable, Side, mask);
    QCOMPARE(drawing.error, expectedError(drawable.name));
    QCOMPARE(isTransparent(drawing.image), isInvisible(drawable.name));
    QCOMPARE(m_goldens.compare(QString::fromLatin1(QTest::currentDataTag()), drawing.image), QString());
}

void TestGallery::everyGoldenHasADrawable()
{
    for (const QString &name : m_goldens.names())
        QVERIFY2(m_names.contains(name), qPrintable(name));
}

QTEST_GUILESS_MAIN(TestGallery)
#include "tst_gallery.moc"
