// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "FactTopics.h"
#include "ListTopics.h"
#include "PictureTopics.h"
#include "Protocol.h"
#include "format/AndroidAttributes.h"

#include <QTemporaryFile>
#include <QtTest>

using namespace fixture;
using namespace Viewer;

namespace {

constexpr qint64 Label = 0x7f010000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

XmlBuilder manifestStart()
{
    XmlBuilder builder;
    builder.attributeId(latin("label"), Attr::Label)
        .attributeId(latin("icon"), Attr::Icon)
        .attributeId(latin("name"), Attr::Name)
        .attributeId(latin("permission"), Attr::Permission)
        .startNamespace(latin("android"), androidUri)
        .start(latin("manifest"), {plainText(latin("package"), latin("org.x"))});
    return builder;
}

// A package without content of its own, whose label is a resource.
QByteArray packageWith(const QByteArray &table)
{
    return package(table, manifestStart()
                              .empty(latin("application"), {androidReference(latin("label"), Label)})
                              .end(latin("manifest"))
                              .build());
}

QStringList valuesOf(const QJsonObject &topic, const char *key)
{
    QStringList values;
    const QJsonArray items = topic.value(QLatin1String("items")).toArray();
    for (const QJsonValue &item : items)
        values.append(item.toObject().value(QLatin1String(key)).toString());
    return values;
}

} // namespace

// Ceilings of topics, in this process.
class TestTopicCeilings : public QObject
{
    Q_OBJECT

private slots:
    void entries();
    void valuesOfResources();
    void languagesWithoutALabel();
    void languagesOfOneLabel();

private:
    Subject subjectOf(const QByteArray &bytes);

    QTemporaryFile m_file;
};

Subject TestTopicCeilings::subjectOf(const QByteArray &bytes)
{
    m_file.close();
    if (!m_file.open() || !m_file.resize(0) || m_file.write(bytes) != bytes.size() || !m_file.flush())
        qFatal("no temporary file");
    const FileName file(QFile::encodeName(m_file.fileName()));
    return {file, SorrelKit::Package::fromNativePath(file.path()), QLocale::c(), {}};
}

void TestTopicCeilings::entries()
{
    constexpr int tiles = 3;
    XmlBuilder manifest = manifestStart();
    manifest.start(latin("application"), {androidText(latin("icon"), latin("icon.png"))});
    for (int i = 0; i < Protocol::MaxEntries; ++i) {
        manifest.start(latin("activity"), {androidText(latin("name"), QStringLiteral("org.x.A%1").arg(i))});
        manifest.launcherFilter().end(latin("activity"));
    }
    for (int i = 0; i < tiles; ++i) {
        manifest.start(latin("service"), {androidText(latin("name"), QStringLiteral("org.x.T%1").arg(i))})
            .start(latin("intent-filter"))
            .empty(latin("action"), {androidText(latin("name"), latin("android.service.quicksettings.action.QS_TILE"))})
            .end(latin("intent-filter"))
            .end(latin("service"));
    }
    manifest.end(latin("application")).end(latin("manifest"));
    const Subject subject =
        subjectOf(package(emptyTable(), manifest.build(), {{latin("icon.png"), picture(8, 8, 0xffff0000)}}));
    const QJsonObject launchers = PictureTopics(subject.package).launchers(subject);
    QCOMPARE(valuesOf(launchers, "className").size(), Protocol::MaxEntries);
    QCOMPARE(launchers.value(QLatin1String("more")).toInt(), tiles);
    const QStringList icons = valuesOf(launchers, "png");
    QVERIFY(!icons.at(Protocol::MaxEntryIcons - 1).isEmpty());
    QVERIFY(icons.at(Protocol::MaxEntryIcons).isEmpty());
}

void TestTopicCeilings::valuesOfResources()
{
    const QString most(Protocol::MaxValueLength, QLatin1Char('a'));
    PackageBuilder resources(0x7f, latin("org.x"));
    resources.types({latin("string"), latin("array")})
        .keys({latin("most"), latin("more"), latin("list")})
        .type(TypeBuilder(1).entry(0, simpleEntry(String, 0, 0, 0)).entry(1, simpleEntry(String, 1, 0, 1)))
        .type(TypeBuilder(2).entry(0, mapOf({mapItem(0x02000000, String, 0), mapItem(0x02000001, String, 0)}, 0, 2)));
    const Subject subject =
        subjectOf(packageWith(TableBuilder().strings({most, most + latin("b")}).package(resources).build()));
    const QStringList values = valuesOf(ResourceTopic(subject.package).toJson(), "value");
    QCOMPARE(values.at(0), most);
    for (const int cut : {1, 2}) {
        QCOMPARE(int(values.at(cut).size()), Protocol::MaxValueLength);
        QVERIFY(values.at(cut).endsWith(QChar(0x2026)));
    }
}

void TestTopicCeilings::languagesWithoutALabel()
{
    // The label is in English and for everybody. Another text is in many languages.
    constexpr int surplus = 5;
    PackageBuilder resources(0x7f, latin("org.x"));
    resources.types({latin("string")})
        .keys({latin("label"), latin("other")})
        .type(TypeBuilder(1).entry(0, simpleEntry(String, 0, 0, 0)))
        .type(TypeBuilder(1, ConfigBuilder().locale("en").build()).entry(0, simpleEntry(String, 1, 0, 0)));
    for (int i = 0; i < Protocol::MaxLabelLookups + surplus; ++i) {
        const char language[] = {'q', char('a' + i / 26), '\0'};
        const char country[] = {'A', char('A' + i % 26), '\0'};
        resources.type(
            TypeBuilder(1, ConfigBuilder().locale(language, country).build()).entry(1, simpleEntry(String, 0, 0, 1)));
    }
    const Subject subject =
        subjectOf(packageWith(TableBuilder().strings({latin("All"), latin("English")}).package(resources).build()));
    const QJsonObject languages = FactTopics::languages(subject);
    const QStringList labels = valuesOf(languages, "label");
    QCOMPARE(int(labels.size()), Protocol::MaxLabelLookups + surplus + 1);
    QCOMPARE(labels.at(int(valuesOf(languages, "tag").indexOf(latin("en")))), latin("English"));
    QCOMPARE(int(labels.count(QString())), surplus);
}

void TestTopicCeilings::languagesOfOneLabel()
{
    PackageBuilder resources(0x7f, latin("org.x"));
    resources.types({latin("string")})
        .keys({latin("label"), latin("other")})
        .type(TypeBuilder(1).entry(0, simpleEntry(String, 0, 0, 0)));
    for (const char *const language : {"de", "fr"})
        resources.type(TypeBuilder(1, ConfigBuilder().locale(language).build()).entry(1, simpleEntry(String, 0, 0, 1)));
    const Subject subject = subjectOf(packageWith(TableBuilder().strings({latin("All")}).package(resources).build()));
    QCOMPARE(valuesOf(FactTopics::languages(subject), "label"), (QStringList{latin("All"), latin("All")}));
}

QTEST_GUILESS_MAIN(TestTopicCeilings)
#include "tst_topicceilings.moc"
