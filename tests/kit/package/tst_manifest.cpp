// SPDX-License-Identifier: LGPL-2.1-or-later
#include "XmlBuilder.h"
#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"
#include "package/Manifest.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

Manifest read(const XmlBuilder &builder)
{
    return Manifest(XmlReader(builder.build()).root());
}

XmlBuilder started()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(latin("manifest"), {plainText(latin("package"), latin("org.example"))});
    return builder;
}

Attribute nameOf(const char *name)
{
    return androidText(latin("name"), latin(name));
}

// Adds an activity, or the element @p element, with the filter that makes it an entry.
void addEntry(XmlBuilder &builder, const char *element, const QVector<Attribute> &attributes)
{
    builder.start(latin(element), attributes).launcherFilter().end(latin(element));
}

QStringList namesOf(const Manifest &manifest)
{
    QStringList names;
    for (const Manifest::EntryElements &entry : manifest.launchers())
        names.append(entry.name);
    return names;
}

} // namespace

class TestManifest : public QObject
{
    Q_OBJECT

private slots:
    void packageAndSplit();
    void firstApplicationCounts();
    void attributesOfChildren();
    void namesAreCompleted_data();
    void namesAreCompleted();
    void entriesInTheirOrder();
    void aliases();
    void filtersThatMakeNoEntry_data();
    void filtersThatMakeNoEntry();
    void firstFilterCounts();
    void entriesOutsideOfTheApplication();
    void emptyManifest();
};

void TestManifest::packageAndSplit()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.empty(latin("manifest"),
                  {plainText(latin("split"), latin("config.de")), plainText(latin("package"), latin("org.example"))});
    QCOMPARE(read(builder).packageName(), latin("org.example"));
    QCOMPARE(read(builder).splitName(), latin("config.de"));
    QCOMPARE(read(started().end(latin("manifest"))).splitName(), QString());
}

void TestManifest::firstApplicationCounts()
{
    XmlBuilder builder = started();
    builder.empty(latin("application"), {nameOf("first")})
        .empty(latin("application"), {nameOf("second")})
        .end(latin("manifest"));
    const Manifest manifest = read(builder);
    QVERIFY(manifest.application() != nullptr);
    QCOMPARE(Manifest::text(*manifest.application(), Attr::Name), latin("first"));
    QCOMPARE(Manifest::text(*manifest.application(), Attr::Label), QString());
    QVERIFY(read(started().end(latin("manifest"))).application() == nullptr);
}

void TestManifest::attributesOfChildren()
{
    XmlBuilder builder = started();
    builder.empty(latin("thing"))
        .empty(latin("other"), {nameOf("other")})
        .empty(latin("thing"), {nameOf("first")})
        .empty(latin("thing"), {nameOf("second")})
        .end(latin("manifest"));
    const Manifest manifest = read(builder);
    const XmlAttribute *const name = manifest.childAttribute(latin("thing"), Attr::Name);
    QVERIFY(name != nullptr);
    QCOMPARE(name->text, latin("first"));
    QVERIFY(manifest.childAttribute(latin("thing"), Attr::Label) == nullptr);
    QVERIFY(manifest.childAttribute(latin("nothing"), Attr::Name) == nullptr);
}

void TestManifest::namesAreCompleted_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("completed");
    QTest::newRow("dot") << ".Main"
                         << "org.example.Main";
    QTest::newRow("dots") << ".ui.Main"
                          << "org.example.ui.Main";
    QTest::newRow("plain") << "Main"
                           << "org.example.Main";
    QTest::newRow("whole") << "com.other.Main"
                           << "com.other.Main";
    QTest::newRow("inner class") << ".Main$Inner"
                                 << "org.example.Main$Inner";
    QTest::newRow("none") << ""
                          << "";
}

void TestManifest::namesAreCompleted()
{
    QFETCH(QString, name);
    QFETCH(QString, completed);
    QCOMPARE(read(started().end(latin("manifest"))).completed(name), completed);
}

void TestManifest::entriesInTheirOrder()
{
    XmlBuilder builder = started();
    builder.start(latin("application"));
    addEntry(builder, "activity", {nameOf(".B")});
    addEntry(builder, "service", {nameOf(".S")});
    addEntry(builder, "activity", {nameOf("A")});
    builder.empty(latin("activity"), {nameOf(".C")});
    // The same name, written in full.
    addEntry(builder, "activity", {nameOf("org.example.A")});
    builder.end(latin("application")).end(latin("manifest"));
    const Manifest manifest = read(builder);
    QCOMPARE(namesOf(manifest), QStringList({latin("org.example.B"), latin("org.example.A")}));
    const Manifest::EntryElements entry = manifest.launchers().first();
    QCOMPARE(entry.className, latin("org.example.B"));
    QVERIFY(!entry.isAlias);
    QVERIFY(entry.target == nullptr);
    QCOMPARE(entry.component, &manifest.application()->children.first());
    QCOMPARE(entry.filter, &manifest.application()->children.first().children.first());
}

void TestManifest::aliases()
{
    const auto target = [](const char *name) { return androidText(latin("targetActivity"), latin(name)); };
    XmlBuilder builder = started();
    builder.start(latin("application"));
    addEntry(builder, "activity-alias", {nameOf(".Alias"), target("Main")});
    addEntry(builder, "activity-alias", {nameOf(".Lost"), target(".Nowhere")});
    addEntry(builder, "activity-alias", {nameOf(".Aimless")});
    builder.empty(latin("activity"), {nameOf(".Main")}).end(latin("application")).end(latin("manifest"));
    const Manifest manifest = read(builder);
    const QVector<Manifest::EntryElements> entries = manifest.launchers();
    QCOMPARE(entries.size(), 3);
    QVERIFY(entries.at(0).isAlias);
    QCOMPARE(entries.at(0).name, latin("org.example.Alias"));
    QCOMPARE(entries.at(0).className, latin("org.example.Main"));
    QCOMPARE(entries.at(0).target, &manifest.application()->children.last());
    QCOMPARE(entries.at(1).className, latin("org.example.Nowhere"));
    QVERIFY(entries.at(1).target == nullptr);
    QCOMPARE(entries.at(2).className, QString());
    QVERIFY(entries.at(2).target == nullptr);
}

void TestManifest::filtersThatMakeNoEntry_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("category");
    QTest::addColumn<bool>("isEntry");
    const QString filter = latin("intent-filter");
    const QString main = latin("android.intent.action.MAIN");
    const QString launcher = latin("android.intent.category.LAUNCHER");
    QTest::newRow("entry") << filter << main << launcher << true;
    QTest::newRow("another action") << filter << "android.intent.action.VIEW" << launcher << false;
    QTest::newRow("another category") << filter << main << "android.intent.category.DEFAULT" << false;
    QTest::newRow("exchanged") << filter << launcher << main << false;
    QTest::newRow("no filter") << "meta-data" << main << launcher << false;
    QTest::newRow("another case") << filter << main.toLower() << launcher << false;
}

void TestManifest::filtersThatMakeNoEntry()
{
    QFETCH(QString, filter);
    QFETCH(QString, action);
    QFETCH(QString, category);
    QFETCH(bool, isEntry);
    XmlBuilder builder = started();
    builder.start(latin("application"))
        .start(latin("activity"), {nameOf(".Main")})
        .start(filter)
        .empty(latin("action"), {androidText(latin("name"), latin("android.intent.action.SEND"))})
        .empty(latin("action"), {androidText(latin("name"), action)})
        .empty(latin("category"), {androidText(latin("name"), category)})
        .end(filter)
        .end(latin("activity"))
        .end(latin("application"))
        .end(latin("manifest"));
    QCOMPARE(read(builder).launchers().size(), int(isEntry));
}

void TestManifest::firstFilterCounts()
{
    XmlBuilder builder = started();
    builder.start(latin("application"))
        .start(latin("activity"), {nameOf(".Main")})
        .empty(latin("intent-filter"))
        .launcherFilter()
        .launcherFilter()
        .end(latin("activity"))
        .end(latin("application"))
        .end(latin("manifest"));
    const Manifest manifest = read(builder);
    QCOMPARE(manifest.launchers().size(), 1);
    QCOMPARE(manifest.launchers().first().filter, &manifest.application()->children.first().children.at(1));
}

void TestManifest::entriesOutsideOfTheApplication()
{
    XmlBuilder builder = started();
    addEntry(builder, "activity", {nameOf(".Outside")});
    builder.start(latin("application"));
    builder.start(latin("group"));
    addEntry(builder, "activity", {nameOf(".Deeper")});
    builder.end(latin("group")).end(latin("application")).end(latin("manifest"));
    QVERIFY(read(builder).launchers().isEmpty());
}

void TestManifest::emptyManifest()
{
    const Manifest manifest;
    QVERIFY(manifest.root().isNull());
    QCOMPARE(manifest.packageName(), QString());
    QCOMPARE(manifest.splitName(), QString());
    QVERIFY(manifest.application() == nullptr);
    QVERIFY(manifest.launchers().isEmpty());
}

QTEST_GUILESS_MAIN(TestManifest)
#include "tst_manifest.moc"
