// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "drawable/source/PictureCache.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

const QString path = QStringLiteral("icon");

/// The picture in @p file, which comes behind @p other, a file that was decoded.
QImage imageBeside(const QByteArray &other, const QByteArray &file)
{
    PictureCache pictures;
    pictures.add(QStringLiteral("other"), other);
    pictures.image(QStringLiteral("other"));
    pictures.add(path, file);
    return pictures.image(path);
}

} // namespace

/// The budgets for the pictures of an icon. tst_drawableloader holds that each is read once.
class TestPictureCache : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsKnownOfOthers();
    void sizesTakeNoDecoding();
    void picturesAreDecodedOnce();
    void picturesMayTellWhatIsStretched();
    void heldUpToTheCeiling();
    void decodingUpToTheCeiling();
    void openFilesUpToTheCeiling();
};

void TestPictureCache::nothingIsKnownOfOthers()
{
    PictureCache pictures;
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
    PictureCache pictures;
    pictures.add(path, blackPng(4096, 4096, 8, false, false));
    QCOMPARE(pictures.size(path), QSize(4096, 4096));
    QCOMPARE(pictures.heldBytes(), qint64(0));
}

void TestPictureCache::picturesAreDecodedOnce()
{
    PictureCache pictures;
    pictures.add(path, blackPng(20, 30));
    QCOMPARE(pictures.image(path).size(), QSize(20, 30));
    QCOMPARE(pictures.heldBytes(), qint64(20 * 30 * 4));
    QCOMPARE(pictures.image(path).cacheKey(), pictures.image(path).cacheKey());
    QCOMPARE(pictures.size(path), QSize(20, 30));
    QCOMPARE(pictures.heldBytes(), qint64(20 * 30 * 4));
}

void TestPictureCache::picturesMayTellWhatIsStretched()
{
    PictureCache pictures;
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(Red);
    pictures.add(path, ninePatchPng(image, {1, 2}, {1, 2}));
    QVERIFY(pictures.ninePatch(path));
    QCOMPARE(pictures.image(path).size(), QSize(4, 4));
    QVERIFY(pictures.ninePatch(path));
}

void TestPictureCache::heldUpToTheCeiling()
{
    constexpr int Rows = int(PictureCache::MaxHeldBytes) / (4 * 2048);
    QCOMPARE(imageBeside({}, blackPng(2048, Rows)).size(), QSize(2048, Rows));
    QVERIFY(imageBeside({}, blackPng(2048, Rows + 1)).isNull());
    QCOMPARE(imageBeside(blackPng(2048, 48), blackPng(2048, Rows - 48)).size(), QSize(2048, Rows - 48));
    QVERIFY(imageBeside(blackPng(2048, 48), blackPng(2048, Rows - 47)).isNull());
}

void TestPictureCache::decodingUpToTheCeiling()
{
    // What cannot be decoded takes as much, and holds nothing.
    PictureCache pictures;
    constexpr int Rows = int(PictureCache::MaxHeldBytes) / (4 * 2048);
    const QByteArray broken = blackPng(2048, Rows, 8, false, false);
    pictures.add(QStringLiteral("first"), broken);
    QVERIFY(pictures.image(QStringLiteral("first")).isNull());
    pictures.add(QStringLiteral("second"), broken);
    pictures.add(path, blackPng(2, 2));
    QCOMPARE(pictures.size(path), QSize(2, 2));
    QVERIFY(pictures.image(QStringLiteral("second")).isNull());
    QVERIFY(pictures.image(path).isNull());
    QCOMPARE(PictureCache::MaxDecodingBytes, 2 * PictureCache::MaxHeldBytes);
}

void TestPictureCache::openFilesUpToTheCeiling()
{
    // All of a BMP counts, as nothing is left of it.
    const auto bitmap = [](qint64 size) {
        const QByteArray file = picture(2, 2, 0, "BMP");
        return file + QByteArray(int(size) - file.size(), '\0');
    };
    constexpr qint64 Most = PictureCache::MaxOpenBytes;
    PictureCache pictures;
    pictures.add(QStringLiteral("large"), bitmap(Most - 1000));
    pictures.add(QStringLiteral("more"), bitmap(1001));
    pictures.add(path, bitmap(1000));
    QVERIFY(pictures.size(QStringLiteral("more")).isEmpty());
    QCOMPARE(pictures.image(path).size(), QSize(2, 2));
    // Once it is decoded, a file is closed.
    pictures.add(QStringLiteral("another"), bitmap(1000));
    QCOMPARE(pictures.size(QStringLiteral("another")), QSize(2, 2));
}

QTEST_GUILESS_MAIN(TestPictureCache)
#include "tst_picturecache.moc"
