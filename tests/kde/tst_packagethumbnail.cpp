// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "KitIcons.h"

#include <KIO/ThumbnailCreator>
#include <KPluginFactory>
#include <KPluginMetaData>

#include <QColorSpace>
#include <QMimeDatabase>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::IconMask;
using SorrelKit::Package;

namespace {

QString sample(const char *name)
{
    return QStringLiteral(SORREL_SAMPLES_DIR "/") + QString::fromLatin1(name);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// As a PNG file keeps the pixels.
QImage pixels(QImage image)
{
    image.setColorSpace(QColorSpace());
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class TestPackageThumbnail : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void types();
    void sizes_data();
    void sizes();
    void shorterSideCounts();
    void shapes_data();
    void shapes();
    void shapeOfOtherTexts();
    void set();
    void namesOfFiles_data();
    void namesOfFiles();
    void noThumbnail_data();
    void noThumbnail();
    void filesElsewhere();
    void requestsWithoutASize();
    void cutFiles();
    void changedBytes();

private:
    KIO::ThumbnailResult make(const QString &file, QSize size, qreal ratio = 1) const;
    void setShape(const QByteArray &shape) const;

    QTemporaryDir m_directory;
    KPluginMetaData m_metaData;
    std::unique_ptr<KIO::ThumbnailCreator> m_creator;
};

void TestPackageThumbnail::initTestCase()
{
    QVERIFY(qputenv("XDG_CONFIG_HOME", m_directory.path().toLocal8Bit()));
    m_metaData = KPluginMetaData(QStringLiteral(SORREL_PLUGIN));
    QVERIFY(m_metaData.isValid());
    auto loaded = KPluginFactory::instantiatePlugin<KIO::ThumbnailCreator>(m_metaData);
    QVERIFY2(bool(loaded), qPrintable(loaded.errorString));
    m_creator.reset(loaded.plugin);
}

void TestPackageThumbnail::cleanup()
{
    QFile::remove(m_directory.filePath(QStringLiteral("sorrelrc")));
}

KIO::ThumbnailResult TestPackageThumbnail::make(const QString &file, QSize size, qreal ratio) const
{
    const QString type = QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension).name();
    return m_creator->create(KIO::ThumbnailRequest(QUrl::fromLocalFile(file), size, type, ratio, 0));
}

void TestPackageThumbnail::setShape(const QByteArray &shape) const
{
    writeFile(m_directory.filePath(QStringLiteral("sorrelrc")), "[Thumbnails]\nShape=" + shape + '\n');
}

// The types are those that file managers with other thumbnailers know.
void TestPackageThumbnail::types()
{
    const QByteArray entry = contentOf(QFINDTESTDATA("../../tools/sorrel-thumbnailer/sorrel.thumbnailer"));
    const QByteArray line = entry.mid(entry.indexOf("MimeType=") + int(qstrlen("MimeType="))).split('\n').constFirst();
    QStringList types = QString::fromLatin1(line).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QVERIFY(types.size() > 1);
    QCOMPARE(m_metaData.mimeTypes(), types);
    QVERIFY(m_metaData.value(QStringLiteral("CacheThumbnail"), false));
    QCOMPARE(m_metaData.pluginId(), QStringLiteral("sorrelthumbnail"));
}

void TestPackageThumbnail::sizes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("expected");
    QTest::newRow("1") << 1 << 1.0 << 1;
    QTest::newRow("48") << 48 << 1.0 << 48;
    QTest::newRow("256") << 256 << 1.0 << 256;
    QTest::newRow("128 twice as dense") << 256 << 2.0 << 256;
    QTest::newRow("between whole ratios") << 192 << 1.5 << 192;
    QTest::newRow("1024") << 1024 << 1.0 << 1024;
    QTest::newRow("above the largest") << 1025 << 1.0 << 1024;
}

void TestPackageThumbnail::sizes()
{
    QFETCH(int, size);
    QFETCH(qreal, ratio);
    QFETCH(int, expected);
    // One icon is a picture file and one is drawn.
    for (const char *name : {"notes.aapt2.apk", "babel.aapt2.apk"}) {
        const KIO::ThumbnailResult result = make(sample(name), QSize(size, size), ratio);
        QVERIFY(result.isValid());
        QCOMPARE(result.image().devicePixelRatio(), ratio);
        QCOMPARE(pixels(result.image()), pixels(iconOf(Package(sample(name)), expected)));
    }
}

void TestPackageThumbnail::shorterSideCounts()
{
    QCOMPARE(make(sample("notes.aapt2.apk"), QSize(96, 300)).image().size(), QSize(96, 96));
    QCOMPARE(make(sample("notes.aapt2.apk"), QSize(300, 96)).image().size(), QSize(96, 96));
}

void TestPackageThumbnail::shapes_data()
{
    QTest::addColumn<int>("mask");
    QTest::newRow("none") << int(IconMask::None);
    QTest::newRow("circle") << int(IconMask::Circle);
    QTest::newRow("rounded") << int(IconMask::RoundedSquare);
    QTest::newRow("squircle") << int(IconMask::Squircle);
}

void TestPackageThumbnail::shapes()
{
    QFETCH(int, mask);
    // A change counts without a new plugin.
    setShape(QTest::currentDataTag());
    const QString file = sample("babel.aapt2.apk");
    const QImage image = make(file, QSize(96, 96)).image();
    QCOMPARE(pixels(image), pixels(iconOf(Package(file), 96, IconMask(mask))));
    QCOMPARE(image.pixelColor(0, 0).alpha() == 0, IconMask(mask) != IconMask::None);
}

void TestPackageThumbnail::shapeOfOtherTexts()
{
    const QString file = sample("babel.aapt2.apk");
    for (const char *shape : {"", "Circle", "circle rounded", "--help", "-", "\xff"}) {
        setShape(shape);
        QCOMPARE(pixels(make(file, QSize(96, 96)).image()), pixels(iconOf(Package(file), 96)));
    }
}

void TestPackageThumbnail::set()
{
    const QByteArray bytes = zip({{QStringLiteral("splits/base-master.apk"), contentOf(sample("babel.base.apk"))},
                                  {QStringLiteral("splits/base-de.apk"), contentOf(sample("babel.de.apk"))}},
                                 Compression::Stored);
    const QString file = writeFile(m_directory.filePath(QStringLiteral("set.apks")), bytes);
    QCOMPARE(pixels(make(file, QSize(128, 128)).image()), pixels(iconOf(Package(sample("babel.aapt2.apk")), 128)));
}

void TestPackageThumbnail::namesOfFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("space") << "a package.apk";
    QTest::newRow("percent") << "100%41.apk";
    QTest::newRow("hash") << "one #2?.apk";
    QTest::newRow("option") << "--size";
    QTest::newRow("not ASCII") << QStringLiteral("Ä ملاحظات.apk");
    QTest::newRow("URI") << "file:x.apk";
    QTest::newRow("line end") << "a\nb.apk";
}

void TestPackageThumbnail::namesOfFiles()
{
    QFETCH(QString, name);
    const QString file = writeFile(m_directory.filePath(name), contentOf(sample("notes.aapt2.apk")));
    QCOMPARE(make(file, QSize(64, 64)).image().size(), QSize(64, 64));
}

void TestPackageThumbnail::noThumbnail_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = contentOf(sample("notes.aapt2.apk"));
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("no archive") << QByteArray("nothing of the kind");
    QTest::newRow("ends early") << good.left(good.size() / 2);
    QTest::newRow("no manifest") << zip({{QStringLiteral("resources.arsc"), emptyTable()}});
    QTest::newRow("damaged manifest") << package(emptyTable(), "<manifest/>");
    QTest::newRow("damaged table") << package(emptyTable().chopped(1), smallManifest());
    QTest::newRow("no icon") << package(emptyTable(), smallManifest());
    QTest::newRow("set without a base") << zip(
        {{QStringLiteral("split_config.de.apk"), contentOf(sample("babel.de.apk"))}});
}

void TestPackageThumbnail::noThumbnail()
{
    QFETCH(QByteArray, content);
    const QString file = writeFile(m_directory.filePath(QStringLiteral("bad.apk")), content);
    const KIO::ThumbnailResult result = make(file, QSize(128, 128));
    QVERIFY(!result.isValid());
    QVERIFY(result.image().isNull());
}

void TestPackageThumbnail::filesElsewhere()
{
    for (const char *url : {"", "sftp://host/a.apk", "file:///nowhere/a.apk", "file:///", "data:,x"}) {
        const KIO::ThumbnailRequest request(QUrl(QString::fromLatin1(url)), QSize(64, 64), QString(), 1, 0);
        QVERIFY2(!m_creator->create(request).isValid(), url);
    }
}

void TestPackageThumbnail::requestsWithoutASize()
{
    for (const QSize size : {QSize(), QSize(0, 64), QSize(64, 0), QSize(-64, -64)})
        QVERIFY(!make(sample("notes.aapt2.apk"), size).isValid());
}

// Whatever is left of a package, it has an icon of the requested size, or none.
void TestPackageThumbnail::cutFiles()
{
    const QByteArray good = contentOf(sample("babel.aapt2.apk"));
    constexpr int Cuts = 25;
    for (int cut = 0; cut < Cuts; ++cut) {
        const QByteArray bytes = good.left(int(qint64(good.size()) * cut / Cuts));
        const QString file = writeFile(m_directory.filePath(QStringLiteral("cut.apk")), bytes);
        QVERIFY(!make(file, QSize(64, 64)).isValid());
    }
}

void TestPackageThumbnail::changedBytes()
{
    const QByteArray good = contentOf(sample("babel.aapt2.apk"));
    constexpr int Changes = 60;
    int made = 0;
    for (int change = 0; change < Changes; ++change) {
        QByteArray bytes = good;
        const int at = int(qint64(bytes.size()) * change / Changes);
        bytes[at] = char(~bytes.at(at));
        const QString file = writeFile(m_directory.filePath(QStringLiteral("changed.apk")), bytes);
        const KIO::ThumbnailResult result = make(file, QSize(64, 64));
        QCOMPARE(result.image().size(), result.isValid() ? QSize(64, 64) : QSize(0, 0));
        made += result.isValid() ? 1 : 0;
    }
    QVERIFY(made > 0 && made < Changes);
}

QTEST_GUILESS_MAIN(TestPackageThumbnail)
#include "tst_packagethumbnail.moc"
