// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "DrawableFixture.h"
#include "drawable/DrawableInflater.h"
#include "format/AndroidAttributes.h"
#include "icon/IconRenderer.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 First = 0x7f010000;
constexpr qint64 ColorId = 0x010101a5;
constexpr qint64 DrawableId = 0x01010199;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

XmlBuilder document()
{
    XmlBuilder builder;
    builder.attributeId(latin("color"), ColorId).attributeId(latin("drawable"), DrawableId);
    return builder;
}

// An element around the resource @p id.
QByteArray insetOf(quint32 id)
{
    return document().empty(latin("inset"), {androidReference(latin("drawable"), id)}).build();
}

QByteArray listOf(quint32 id, int count)
{
    XmlBuilder builder = document();
    builder.start(latin("layer-list"));
    for (int i = 0; i < count; ++i)
        builder.empty(latin("item"), {androidReference(latin("drawable"), id)});
    return builder.end(latin("layer-list")).build();
}

/// Resources that are files, in the order of their paths, and their loader.
struct Resources {
    explicit Resources(const QStringList &paths, const char *type = "drawable", int copies = 1)
        : loader(ResourceResolver({table(paths, latin(type), copies)}, Configuration::phone(160)), files, budget, 1)
    {
    }

    static QSharedPointer<const ResourceTable> table(const QStringList &paths, const QString &type, int copies)
    {
        TypeBuilder values(1);
        for (int i = 0; i < paths.size(); ++i)
            values.value(i, String, i);
        PackageBuilder package;
        package.types({type}).chunk(values.build().repeated(copies));
        return QSharedPointer<const ResourceTable>(
            new ResourceTable(TableBuilder().strings(paths).package(package).build()));
    }

    Files files;
    Budget budget = iconBudget();
    DrawableInflater loader;
};

} // namespace

class TestDrawableLoader : public QObject
{
    Q_OBJECT

private slots:
    void filesAreToldApartByTheirContent();
    void coloursByTheirType();
    void picturesAreDecodedOnce();
    void scalesOfDensities();

    void errorNoDrawableIsGiven();
    void errorResourceIsNoDrawable();
    void errorCannotBeRead();
    void errorIsNoPicture();
    void errorUnsupportedColor();
    void errorUnsupportedDrawable();
    void errorOfADocument();
    void errorNestedTooDeeply();
    void documentsOfAnyRoot();
    void picturesAreReadOnce();
    void readingDocumentsHasABudget();
    void charactersOfDocumentsHaveABudget();
    void filesUpToTheCeiling();
    void readingFilesHasABudget();
    void firstErrorIsKept();
};

void TestDrawableLoader::filesAreToldApartByTheirContent()
{
    Resources resources({latin("a"), latin("b.png")});
    resources.files.add(latin("a"), picture(3, 2, 0xff0000));
    resources.files.add(latin("b.png"),
                        document().empty(latin("color"), {androidValue(latin("color"), 0x1c, Blue)}).build());
    const DrawablePointer picture = resources.loader.fromResource(First);
    QVERIFY(picture != nullptr);
    QCOMPARE(picture->intrinsicSize(), QSizeF(3, 2));
    const DrawablePointer color = resources.loader.fromResource(First + 1);
    QVERIFY(color != nullptr);
    Canvas canvas(QSize(2, 2), resources.budget);
    color->draw(canvas, QRectF(0, 0, 2, 2));
    QCOMPARE(areaOf(canvas.image(), Blue), QRect(0, 0, 2, 2));
    QCOMPARE(described(resources.loader.error()), QString());
}

void TestDrawableLoader::coloursByTheirType()
{
    const QByteArray states = document()
                                  .start(latin("selector"))
                                  .empty(latin("item"), {androidValue(latin("color"), 0x1c, Green)})
                                  .end(latin("selector"))
                                  .build();
    Resources colors({latin("states")}, "color");
    colors.files.add(latin("states"), states);
    const DrawablePointer color = colors.loader.fromResource(First);
    QVERIFY(color != nullptr);
    Canvas canvas(QSize(2, 2), colors.budget);
    color->draw(canvas, QRectF(0, 0, 2, 2));
    QCOMPARE(areaOf(canvas.image(), Green), QRect(0, 0, 2, 2));
    // As a drawable, the item has no drawable.
    Resources drawables({latin("states")});
    drawables.files.add(latin("states"), states);
    QVERIFY(drawables.loader.fromResource(First) == nullptr);
    QVERIFY(drawables.loader.error());
}

void TestDrawableLoader::picturesAreDecodedOnce()
{
    Resources resources({latin("a")});
    resources.files.add(latin("a"), picture(8, 8, 0xff0000));
    QCOMPARE(resources.loader.picture(latin("a")).cacheKey(), resources.loader.picture(latin("a")).cacheKey());
}

void TestDrawableLoader::scalesOfDensities()
{
    Files files;
    Budget budget = iconBudget();
    const DrawableInflater loader(ResourceResolver({}, Configuration::phone(320)), files, budget, 2);
    QCOMPARE(loader.scaleOf(320), 1.0);
    QCOMPARE(loader.scaleOf(160), 2.0);
    QCOMPARE(loader.scaleOf(640), 0.5);
    QCOMPARE(loader.scaleOf(Configuration::DefaultDensity), 2.0);
    QCOMPARE(loader.scaleOf(Configuration::AnyDensity), 1.0);
    QCOMPARE(loader.scaleOf(Configuration::NoDensity), 1.0);
}

void TestDrawableLoader::errorNoDrawableIsGiven()
{
    Resources resources({});
    QVERIFY(resources.loader.fromValue({}) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("NotDrawable: no drawable is given"));
}

void TestDrawableLoader::errorResourceIsNoDrawable()
{
    Resources resources({});
    QVERIFY(resources.loader.fromResource(First + 9) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("NotDrawable: resource 0x7f010009 is no drawable"));
}

void TestDrawableLoader::errorCannotBeRead()
{
    Resources resources({latin("res/a.png")});
    QVERIFY(resources.loader.fromResource(First) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("Unreadable: res/a.png cannot be read"));
}

void TestDrawableLoader::errorIsNoPicture()
{
    Resources resources({latin("res/a.png")});
    resources.files.add(latin("res/a.png"), QByteArray("text"));
    QVERIFY(resources.loader.fromResource(First) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("Unreadable: res/a.png is no picture that can be decoded"));
}

void TestDrawableLoader::errorUnsupportedColor()
{
    Resources resources({latin("res/a.xml")}, "color");
    resources.files.add(latin("res/a.xml"), document().empty(latin("rainbow")).build());
    QVERIFY(resources.loader.fromResource(First) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("Unsupported: unsupported color <rainbow>"));
}

void TestDrawableLoader::errorUnsupportedDrawable()
{
    Resources resources({latin("res/a.xml")});
    resources.files.add(latin("res/a.xml"), document().empty(latin("rainbow")).build());
    QVERIFY(resources.loader.fromResource(First) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("Unsupported: unsupported drawable <rainbow>"));
}

void TestDrawableLoader::errorOfADocument()
{
    Resources resources({latin("res/a.xml")});
    resources.files.add(latin("res/a.xml"), document().build());
    QVERIFY(resources.loader.fromResource(First) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("Unreadable: res/a.xml: XML document without an element"));
}

void TestDrawableLoader::errorNestedTooDeeply()
{
    Resources resources({latin("a"), latin("b"), latin("c")});
    resources.files.add(latin("a"), insetOf(First + 1));
    resources.files.add(latin("b"), insetOf(First));
    resources.files.add(latin("c"), listOf(First + 2, 3));
    QVERIFY(resources.loader.fromResource(First) == nullptr);
    QCOMPARE(described(resources.loader.error()), latin("TooMuch: drawables nested too deeply"));
}

// Android does not look at the first chunk of a document.
void TestDrawableLoader::documentsOfAnyRoot()
{
    constexpr int ColorType = 0x1c;
    const QByteArray green =
        document().empty(latin("color"), {androidValue(latin("color"), ColorType, 0xff00ff00)}).build();
    QByteArray namespaceType = green;
    poke16(namespaceType, 0, 0x0100);
    const QByteArray longHeader = chunk(0x0003, QByteArray(4, 'x'), green.mid(8));
    Resources resources({latin("usual"), latin("type"), latin("header"), latin("picture")});
    resources.files.add(latin("usual"), green);
    resources.files.add(latin("type"), namespaceType);
    resources.files.add(latin("header"), longHeader);
    resources.files.add(latin("picture"), QImage(2, 2, QImage::Format_ARGB32));
    for (const char *path : {"usual", "type", "header"})
        QVERIFY2(resources.loader.isDocument(latin(path)), path);
    QVERIFY(!resources.loader.isDocument(latin("picture")));
    for (quint32 id = First; id < First + 3; ++id)
        QVERIFY(resources.loader.fromResource(id) != nullptr);
    QCOMPARE(described(resources.loader.error()), QString());
}

void TestDrawableLoader::picturesAreReadOnce()
{
    Resources resources({latin("good"), latin("bad"), latin("none"), latin("nine")});
    resources.files.add(latin("good"), QImage(2, 2, QImage::Format_ARGB32));
    resources.files.add(latin("bad"), "no picture");
    resources.files.add(latin("nine"), ninePatchPng(QImage(4, 4, QImage::Format_ARGB32), {1, 2}, {1, 2}));
    for (int i = 0; i < 3; ++i) {
        for (quint32 id = First; id < First + 4; ++id)
            resources.loader.fromResource(id);
        resources.loader.pictureSize(latin("good"));
        resources.loader.isDocument(latin("bad"));
        QVERIFY(resources.loader.ninePatch(latin("nine")));
    }
    QCOMPARE(resources.files.timesRead(latin("good")), 1);
    QCOMPARE(resources.files.timesRead(latin("bad")), 1);
    QCOMPARE(resources.files.timesRead(latin("none")), 1);
    QCOMPARE(resources.files.timesRead(latin("nine")), 1);
}

// A document is read, and costs work, for each reference to it.
void TestDrawableLoader::readingDocumentsHasABudget()
{
    QByteArray large = document().empty(latin("color"), {androidValue(latin("color"), 0x1c, Blue)}).build();
    large += QByteArray(1 << 20, '\0');
    Resources resources({latin("a")});
    resources.files.add(latin("a"), large);
    int read = 0;
    while (read < 100 && !resources.loader.document(latin("a")).root.isNull())
        ++read;
    QCOMPARE(read, int(IconRenderer::MaxWork
                       / (large.size() * (Budget::ByteWork + Budget::DocumentByteWork) + DrawableLoader::FileWork)));
    QCOMPARE(described(resources.loader.error()), latin("TooMuch: drawing takes too much"));
}

// A few bytes may be millions of characters, because attributes share their texts.
void TestDrawableLoader::charactersOfDocumentsHaveABudget()
{
    constexpr int Length = 1 << 13;
    constexpr int Copies = 128;
    XmlBuilder builder = document();
    builder.start(latin("color"), {androidValue(latin("color"), 0x1c, Blue)});
    for (int i = 0; i < Copies; ++i)
        builder.empty(latin("a"), {plainText(latin("x"), QString(Length, QLatin1Char('x')))});
    Resources resources({latin("a")});
    const QByteArray bytes = builder.end(latin("color")).build();
    resources.files.add(latin("a"), bytes);
    int read = 0;
    while (read < 100 && !resources.loader.document(latin("a")).root.isNull())
        ++read;
    QCOMPARE(read, int(IconRenderer::MaxWork / ((bytes.size() + Copies * Length) * Budget::DocumentByteWork)));
    QVERIFY(read > 1);
    QCOMPARE(described(resources.loader.error()), latin("TooMuch: drawing takes too much"));
    QCOMPARE(resources.budget.workLeft(), qint64(0));
}

void TestDrawableLoader::filesUpToTheCeiling()
{
    const auto sizeOf = [](qint64 size) {
        Resources resources({latin("a")});
        resources.files.add(latin("a"), QByteArray(int(size), 'x'));
        return resources.loader.file(latin("a")).size();
    };
    QCOMPARE(sizeOf(DrawableLoader::MaxFileBytes), int(DrawableLoader::MaxFileBytes));
    QCOMPARE(sizeOf(DrawableLoader::MaxFileBytes + 1), 0);
}

void TestDrawableLoader::readingFilesHasABudget()
{
    Resources resources({latin("a")});
    const QByteArray large(int(DrawableLoader::MaxFileBytes), 'x');
    resources.files.add(latin("a"), large);
    constexpr int Most = int(IconRenderer::MaxWork / (DrawableLoader::MaxFileBytes + DrawableLoader::FileWork));
    for (int i = 0; i < Most; ++i)
        QCOMPARE(resources.loader.file(latin("a")).size(), large.size());
    QVERIFY(!resources.loader.error());
    QVERIFY(resources.loader.file(latin("a")).isEmpty());
    QCOMPARE(described(resources.loader.error()), latin("Unreadable: a cannot be read"));
}

void TestDrawableLoader::firstErrorIsKept()
{
    Resources resources({});
    resources.loader.setError(DrawableFault::NoLayers, latin("first"));
    resources.loader.setError(DrawableFault::NoDrawable, latin("second"));
    QCOMPARE(described(resources.loader.error()), latin("Damaged: <first> has no layers"));
}

QTEST_GUILESS_MAIN(TestDrawableLoader)
#include "tst_drawableloader.moc"
