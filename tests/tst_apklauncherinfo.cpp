// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "ApkLauncherInfo.h"

#include <QtTest>

using namespace fixture;

namespace {

// A launcher with three labels and an icon, filled in like by ApkFile.
ApkLauncherInfo filledRecord()
{
    const QString name = QStringLiteral("name");
    const QByteArray manifest =
        XmlBuilder::manifest()
            .start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
            .start(QStringLiteral("application"))
            .start(QStringLiteral("activity"),
                   {androidText(name, QStringLiteral(".Main")), androidReference(QStringLiteral("label"), 0x7f010000),
                    androidText(QStringLiteral("icon"), QStringLiteral("icon.png"))})
            .launcherFilter()
            .end(QStringLiteral("activity"))
            .end(QStringLiteral("application"))
            .end(QStringLiteral("manifest"))
            .build();
    PackageBuilder resources;
    resources.types({QStringLiteral("string")})
        .type(TypeBuilder(1).value(0, String, 0))
        .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 1))
        .type(TypeBuilder(1, ConfigBuilder().locale("pt", "BR").build()).value(0, String, 2));
    const QByteArray table =
        TableBuilder()
            .strings({QStringLiteral("Notes"), QStringLiteral("Notizen"), QStringLiteral("Anotações")})
            .package(resources)
            .build();
    PackageDevice device(table, manifest, {{QStringLiteral("icon.png"), picture(48, 48, 0)}});
    return ApkFile(&device).getLauncherInfo(false).value(0);
}

} // namespace

class TestApkLauncherInfo : public QObject
{
    Q_OBJECT

private slots:
    void newRecordIsEmpty();
    void gettersGiveWhatIsStored();
    void labelHasNoFallback();
    void copiesShareTheirData();
    void copyOutlivesTheOriginal();
    void assignmentToItselfChangesNothing();
};

void TestApkLauncherInfo::newRecordIsEmpty()
{
    const ApkLauncherInfo info;
    QCOMPARE(info.launcherPackage(), QString());
    QCOMPARE(info.launcherClass(), QString());
    QVERIFY(info.labels().isEmpty());
    QVERIFY(info.icons().isEmpty());
    QCOMPARE(info.label(QString()), QString());
}

void TestApkLauncherInfo::gettersGiveWhatIsStored()
{
    const ApkLauncherInfo info = filledRecord();
    QCOMPARE(info.launcherPackage(), QStringLiteral("org.x"));
    QCOMPARE(info.launcherClass(), QStringLiteral("org.x.Main"));
    QCOMPARE(info.labels(), (QMap<QString, QString>{{QString(), QStringLiteral("Notes")},
                                                    {QStringLiteral("de"), QStringLiteral("Notizen")},
                                                    {QStringLiteral("pt-BR"), QStringLiteral("Anotações")}}));
    QCOMPARE(info.icons().size(), 1);
    QCOMPARE(info.icons().constFirst().size(), QSize(48, 48));
}

void TestApkLauncherInfo::labelHasNoFallback()
{
    const ApkLauncherInfo info = filledRecord();
    QCOMPARE(info.label(QString()), QStringLiteral("Notes"));
    QCOMPARE(info.label(QStringLiteral("")), QStringLiteral("Notes"));
    QCOMPARE(info.label(QStringLiteral("de")), QStringLiteral("Notizen"));
    QCOMPARE(info.label(QStringLiteral("pt-BR")), QStringLiteral("Anotações"));
    for (const char *other : {"DE", "de-AT", "pt", "pt-br", "pt-PT", "fr"}) {
        const QString label = info.label(QLatin1String(other));
        QVERIFY(label.isEmpty());
        QVERIFY(!label.isNull());
    }
}

void TestApkLauncherInfo::copiesShareTheirData()
{
    const ApkLauncherInfo info = filledRecord();
    const ApkLauncherInfo copy(info);
    ApkLauncherInfo assigned;
    assigned = info;
    for (const ApkLauncherInfo &other : {copy, assigned}) {
        QVERIFY(other.labels().isSharedWith(info.labels()));
        QVERIFY(other.launcherClass().isSharedWith(info.launcherClass()));
        QCOMPARE(other.icons().constFirst().cacheKey(), info.icons().constFirst().cacheKey());
    }
}

void TestApkLauncherInfo::copyOutlivesTheOriginal()
{
    ApkLauncherInfo info = filledRecord();
    const ApkLauncherInfo copy(info);
    info = ApkLauncherInfo();
    QCOMPARE(info.launcherClass(), QString());
    QVERIFY(info.icons().isEmpty());
    QCOMPARE(copy.launcherClass(), QStringLiteral("org.x.Main"));
    QCOMPARE(copy.label(QStringLiteral("de")), QStringLiteral("Notizen"));
    QCOMPARE(copy.icons().size(), 1);
}

void TestApkLauncherInfo::assignmentToItselfChangesNothing()
{
    ApkLauncherInfo info = filledRecord();
    const ApkLauncherInfo &same = info;
    info = same;
    QCOMPARE(info.launcherClass(), QStringLiteral("org.x.Main"));
}

QTEST_GUILESS_MAIN(TestApkLauncherInfo)
#include "tst_apklauncherinfo.moc"
