// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "drawable/source/PictureCache.h"
#include "icon/IconRenderer.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

const QString path = QStringLiteral("icon");

constexpr qint64 Plenty = qint64(1) << 40;

} // namespace

/// The cost of the pictures of an icon. tst_drawableloader tests that each is read once.
class TestPictureCache : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsKnownOfOthers();
    void sizesTakeNoDecoding();
    void picturesAreDecodedOnce();
    void picturesMayTellWhatIsStretched();
    void pictureTakesItsFileAndItsDecoding();
    void pictureThatCannotBeDecodedTakesAsMuch();
    void openFilesLeaveRoomForDecoding();
};

void TestPictureCache::nothingIsKnownOfOthers()
{
    Budget budget = iconBudget();
    PictureCache pictures(budget);
    QVERIFY(!pictures.contains(path));
    QVERIFY(pictures.image(path).isNull());
    QVERIFY(pictures.size(path).isEmpty());
    pictures.add(path, "no picture");
    QVERIFY(pictures.contains(path));
    QVERIFY(pictures.image(path).isNull());
    QVERIFY(pictures.size(path).isEmpty());
}

void TestPictureCache::sizesTakeNoDecoding()
{
    Budget budget = iconBudget();
    PictureCache pictures(budget);
    pictures.add(path, blackPng(4096, 4096, 8, false, false));
    const qint64 workLeft = budget.workLeft();
    QCOMPARE(pictures.size(path), QSize(4096, 4096));
    QCOMPARE(budget.workLeft(), workLeft);
}

void TestPictureCache::picturesAreDecodedOnce()
{
    Budget budget = iconBudget();
    PictureCache pictures(budget);
    pictures.add(path, blackPng(20, 30));
    QCOMPARE(pictures.image(path).size(), QSize(20, 30));
    QCOMPARE(IconRenderer::MaxBytes - budget.bytesLeft(), qint64(20 * 30 * 4));
    QCOMPARE(pictures.image(path).cacheKey(), pictures.image(path).cacheKey());
    QCOMPARE(pictures.size(path), QSize(20, 30));
    QCOMPARE(IconRenderer::MaxBytes - budget.bytesLeft(), qint64(20 * 30 * 4));
    QCOMPARE(IconRenderer::MaxWork - budget.workLeft(), PictureFile(blackPng(20, 30)).decodingBytes());
}

void TestPictureCache::picturesMayTellWhatIsStretched()
{
    Budget budget = iconBudget();
    PictureCache pictures(budget);
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(Red);
    pictures.add(path, ninePatchPng(image, {1, 2}, {1, 2}));
    QVERIFY(pictures.ninePatch(path));
    QCOMPARE(pictures.image(path).size(), QSize(4, 4));
    QVERIFY(pictures.ninePatch(path));
}

void TestPictureCache::pictureTakesItsFileAndItsDecoding()
{
    const QByteArray file = blackPng(200, 100);
    const PictureFile opened(file);
    const auto sizeWithin = [&](qint64 work, qint64 bytes) {
        Budget budget(work, bytes);
        PictureCache pictures(budget);
        pictures.add(path, file);
        return pictures.image(path).size();
    };
    const qint64 work = opened.decodingBytes();
    const qint64 bytes = opened.decodingBytes() + opened.bytes().size();
    QCOMPARE(sizeWithin(work, bytes), QSize(200, 100));
    QVERIFY(sizeWithin(work - 1, bytes).isEmpty());
    QVERIFY(sizeWithin(work, bytes - 1).isEmpty());
}

void TestPictureCache::pictureThatCannotBeDecodedTakesAsMuch()
{
    const QByteArray broken = blackPng(200, 100, 8, false, false);
    const qint64 cost = PictureFile(broken).decodingBytes();
    Budget budget(cost, Plenty);
    PictureCache pictures(budget);
    pictures.add(path, broken);
    QVERIFY(pictures.image(path).isNull());
    QCOMPARE(budget.workLeft(), qint64(0));
    QCOMPARE(budget.bytesLeft(), Plenty);
}

void TestPictureCache::openFilesLeaveRoomForDecoding()
{
    // A BMP is kept as a whole.
    const auto bitmap = [](qint64 size) {
        const QByteArray file = picture(2, 2, 0, "BMP");
        return file + QByteArray(int(size) - file.size(), '\0');
    };
    constexpr qint64 Most = 4000;
    Budget budget(Plenty, Most * PictureCache::OpenShare);
    PictureCache pictures(budget);
    pictures.add(QStringLiteral("large"), bitmap(Most + 1));
    QVERIFY(pictures.size(QStringLiteral("large")).isEmpty());
    pictures.add(path, bitmap(Most));
    pictures.add(QStringLiteral("more"), bitmap(Most));
    QVERIFY(pictures.size(QStringLiteral("more")).isEmpty());
    QCOMPARE(pictures.image(path).size(), QSize(2, 2));
    // Decoding closed the file.
    pictures.add(QStringLiteral("another"), bitmap(Most - 100));
    QCOMPARE(pictures.size(QStringLiteral("another")), QSize(2, 2));
}

QTEST_GUILESS_MAIN(TestPictureCache)
#include "tst_picturecache.moc"
