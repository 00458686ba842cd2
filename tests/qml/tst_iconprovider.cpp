// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"
#include "icons/IconProvider.h"
#include "icons/IconUrl.h"
#include "icons/PngPicture.h"
#include "icons/SourceNumber.h"

#include <QBuffer>
#include <QQmlEngine>
#include <QQuickTextureFactory>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace SorrelQml;
using fixture::QmlPlace;

namespace {

constexpr int Patience = 60000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

struct Answer {
    QImage image;
    QString error;
};

/// Waits for the icon @p id.
Answer ask(IconProvider &provider, const QString &id, const QSize &size = QSize())
{
    const std::unique_ptr<QQuickImageResponse> response(provider.requestImageResponse(id, size));
    QSignalSpy finished(response.get(), &QQuickImageResponse::finished);
    if (!finished.wait(Patience))
        return {QImage(), latin("timeout")};
    const std::unique_ptr<QQuickTextureFactory> factory(response->textureFactory());
    return {factory == nullptr ? QImage() : factory->image(), response->errorString()};
}

QByteArray pngOf(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

/// The first @p length bytes of @p bytes in a block of exactly that size.
QByteArray heapCopy(const QByteArray &bytes, int length)
{
    return QByteArray(bytes.constData(), length);
}

} // namespace

class TestIconProvider : public QObject
{
    Q_OBJECT

private slots:
    void urls_data();
    void urls();
    void urlsOfNothing_data();
    void urlsOfNothing();
    void numbersOfSources();
    void storedIcons();
    void picturesInAnIndex();
    void iconsThatWorkersDraw();
    void iconsOfPackages();
    void iconsThatCannotBeHad();
    void iconsOfVanishedPackages();
    void cancelledIcons();
    void endsAtAnyTime();
    void endsWithTheEngine();
};

void TestIconProvider::urls_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("shelf") << "shelf/3/42?size=96";
    QTest::newRow("all") << "shelf/3/42?size=48&ratio=1.5&shape=rounded-square&night=1&monochrome=1&v=1234567890123";
    QTest::newRow("the greatest ratio") << "shelf/1/1?size=24&ratio=16";
    QTest::newRow("package") << "package/7?size=1024&shape=squircle";
}

void TestIconProvider::urls()
{
    QFETCH(QString, id);
    QCOMPARE(IconUrl::parse(id).toString(), latin("image://sorrel/") + id);
}

void TestIconProvider::urlsOfNothing_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"",
                           "shelf",
                           "shelf/1",
                           "shelf/x/1",
                           "shelf/1/x",
                           "shelf/1/2/3",
                           "package/",
                           "package/x",
                           "package//etc/passwd",
                           "package/1/2",
                           "file/1",
                           "package/1?size=0",
                           "package/1?size=1025",
                           "package/1?size=x",
                           "package/1?ratio=0",
                           "package/1?ratio=nan",
                           "package/1?ratio=17",
                           "package/1?shape=star",
                           "package/1?night=yes",
                           "package/1?color=red",
                           "package/99999999999999999999"})
        QTest::newRow(id) << latin(id);
}

void TestIconProvider::urlsOfNothing()
{
    QFETCH(QString, id);
    QVERIFY(IconUrl::parse(id).source == IconUrl::Source::None);
    IconProvider provider;
    const Answer answer = ask(provider, id);
    QVERIFY(answer.image.isNull());
    QVERIFY2(answer.error.startsWith(latin("no URL of an icon")), qPrintable(answer.error));
}

void TestIconProvider::numbersOfSources()
{
    int number = 0;
    {
        const SourceNumber first(latin("/a"));
        const SourceNumber same(latin("/a"));
        const SourceNumber other(latin("/b"));
        number = first.value();
        QCOMPARE(same.value(), number);
        QVERIFY(other.value() != number);
        QCOMPARE(SourceNumber::fileName(number), latin("/a"));
    }
    QCOMPARE(SourceNumber::fileName(number), QString());
    const SourceNumber again(latin("/a"));
    QVERIFY(again.value() != number);
}

void TestIconProvider::storedIcons()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill(64));
    const SourceNumber number(place.index());
    IconProvider provider;
    const QString id = latin("shelf/%1/1").arg(number.value());
    const Answer answer = ask(provider, id + latin("?size=64"));
    QCOMPARE(answer.error, QString());
    QCOMPARE(answer.image.size(), QSize(64, 64));
    QCOMPARE(answer.image.pixel(32, 32), 0xff336699);
    // Pixels of the picture that is asked for replace the size.
    QCOMPARE(ask(provider, id + latin("?size=1"), QSize(64, 64)).image.size(), QSize(64, 64));
}

void TestIconProvider::picturesInAnIndex()
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(0x00ffffff);
    image.setPixel(0, 0, 0xff123456);
    image.setPixel(1, 0, 0x80ff8000);
    image.setPixel(2, 1, 0x01000000);
    const QByteArray png = pngOf(image);
    QCOMPARE(pictureOfPng(png), image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    for (int length = 0; length < png.size(); ++length)
        pictureOfPng(heapCopy(png, length));
    QVERIFY(pictureOfPng(png.left(png.size() / 2)).isNull());
    QVERIFY(pictureOfPng("no picture").isNull());
    QVERIFY(!pictureOfPng(pngOf(image.scaled(MaxPngSize, 1))).isNull());
    QVERIFY(pictureOfPng(pngOf(image.scaled(MaxPngSize + 1, 1))).isNull());
    QVERIFY(!pictureOfPng(pngOf(image.scaled(1, MaxPngSize))).isNull());
    QVERIFY(pictureOfPng(pngOf(image.scaled(1, MaxPngSize + 1))).isNull());
}

void TestIconProvider::iconsThatWorkersDraw()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"), 40);
    QVERIFY(place.fill(64));
    const SourceNumber number(place.index());
    IconProvider provider;
    std::vector<std::unique_ptr<QQuickImageResponse>> responses;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (int i = 1; i <= 40; ++i) {
        const QString id = latin("shelf/%1/%2?size=20&ratio=2").arg(number.value()).arg(i);
        responses.emplace_back(provider.requestImageResponse(id, QSize()));
        spies.push_back(std::make_unique<QSignalSpy>(responses.back().get(), &QQuickImageResponse::finished));
    }
    for (std::size_t i = 0; i < responses.size(); ++i) {
        QTRY_COMPARE_WITH_TIMEOUT(spies[i]->size(), 1, Patience);
        QCOMPARE(responses[i]->errorString(), QString());
        const std::unique_ptr<QQuickTextureFactory> factory(responses[i]->textureFactory());
        QCOMPARE(factory->image().size(), QSize(40, 40));
    }
}

void TestIconProvider::iconsOfPackages()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    IconProvider provider;
    const SourceNumber number(place.path(latin("notes.apk")));
    const Answer answer = ask(provider, latin("package/%1?size=24&ratio=2").arg(number.value()));
    QCOMPARE(answer.error, QString());
    QCOMPARE(answer.image.size(), QSize(48, 48));
}

void TestIconProvider::iconsThatCannotBeHad()
{
    QmlPlace place;
    place.addBroken(latin("broken.apk"));
    QVERIFY(place.fill(64));
    IconProvider provider;
    const SourceNumber index(place.index());
    const SourceNumber package(place.path(latin("broken.apk")));
    const Answer stored = ask(provider, latin("shelf/%1/1?size=64").arg(index.value()));
    QVERIFY(stored.image.isNull());
    QVERIFY(!stored.error.isEmpty());
    const Answer drawn = ask(provider, latin("package/%1").arg(package.value()));
    QVERIFY(drawn.image.isNull());
    QVERIFY2(drawn.error.contains(latin("could not open APK file")), qPrintable(drawn.error));
    QCOMPARE(ask(provider, latin("package/1000000")).error, latin("the package is not open"));
    QCOMPARE(ask(provider, latin("shelf/1000000/1")).error, latin("the index is not open"));
}

// The end of the work is an answer, also without an icon.
void TestIconProvider::iconsOfVanishedPackages()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill(64));
    place.remove(latin("notes.apk"));
    const SourceNumber index(place.index());
    IconProvider provider;
    const Answer answer = ask(provider, latin("shelf/%1/1?size=33").arg(index.value()));
    QVERIFY(answer.image.isNull());
    QCOMPARE(answer.error, latin("the package changed, or it is gone"));
}

void TestIconProvider::cancelledIcons()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill(64));
    const SourceNumber index(place.index());
    IconProvider provider;
    const std::unique_ptr<QQuickImageResponse> response(
        provider.requestImageResponse(latin("shelf/%1/1?size=33").arg(index.value()), QSize()));
    response->cancel();
    QSignalSpy finished(response.get(), &QQuickImageResponse::finished);
    QVERIFY(finished.wait(Patience));
    QCOMPARE(response->errorString(), latin("cancelled"));
}

void TestIconProvider::endsAtAnyTime()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"), 30);
    QVERIFY(place.fill(64));
    const SourceNumber index(place.index());
    const SourceNumber package(place.path(latin("notes.apk")));
    for (int round = 0; round < 10; ++round) {
        std::vector<std::unique_ptr<QQuickImageResponse>> responses;
        auto provider = std::make_unique<IconProvider>();
        for (int i = 1; i <= 30; ++i) {
            const QString size = QString::number(100 + round);
            responses.emplace_back(provider->requestImageResponse(
                latin("shelf/%1/%2?size=%3").arg(index.value()).arg(i).arg(size), QSize()));
            responses.emplace_back(
                provider->requestImageResponse(latin("package/%1?size=%2").arg(package.value()).arg(size), QSize()));
            if (i % 3 == 0)
                responses.pop_back();
        }
        QTest::qWait(round);
        if (round % 2 == 0)
            responses.clear();
        provider.reset();
    }
}

// An Image whose icon is loading keeps the provider, but no thread works behind the end of the engine.
void TestIconProvider::endsWithTheEngine()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"), 30);
    QVERIFY(place.fill(64));
    const SourceNumber index(place.index());
    for (int round = 0; round < 10; ++round) {
        std::vector<std::unique_ptr<QQuickImageResponse>> responses;
        auto engine = std::make_unique<QQmlEngine>();
        IconProvider::addTo(engine.get());
        auto *const provider = static_cast<IconProvider *>(engine->imageProvider(latin("sorrel")));
        QVERIFY(provider != nullptr);
        const auto ask = [&](int item) {
            responses.emplace_back(
                provider->requestImageResponse(latin("shelf/%1/%2?size=64").arg(index.value()).arg(item), QSize()));
        };
        for (int i = 1; i <= 30; ++i)
            ask(i);
        if (round == 0) {
            // The signal comes before the provider goes, as when an Image keeps it.
            Q_EMIT engine->destroyed(engine.get());
            ask(1);
            QSignalSpy finished(responses.back().get(), &QQuickImageResponse::finished);
            QVERIFY(finished.wait(Patience));
            QCOMPARE(responses.back()->errorString(), latin("the program ends"));
        }
        QTest::qWait(round / 2);
        engine.reset();
    }
}

QTEST_MAIN(TestIconProvider)
#include "tst_iconprovider.moc"
