// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"
#include "package/PackageInfo.h"

#include <QSignalSpy>
#include <QtTest>

using namespace SorrelQml;
using fixture::QmlPlace;

namespace {

constexpr int Patience = 60000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QUrl urlOf(const QmlPlace &place, const char *name)
{
    return QUrl::fromLocalFile(place.path(latin(name)));
}

} // namespace

class TestPackageInfo : public QObject
{
    Q_OBJECT

private slots:
    void factsOfAPackage();
    void aSourceThatIsTakenAway();
    void aFileThatIsNoPackage();
    void aFileThatIsNotLocal();
    void theLastSourceCounts();
    void endsAtAnyTime();
};

void TestPackageInfo::factsOfAPackage()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"), 2);
    PackageInfo info;
    info.setSource(urlOf(place, "notes.apk"));
    QCOMPARE(info.status(), PackageInfo::Null); // properties are set before the component is complete
    info.componentComplete();
    QCOMPARE(info.status(), PackageInfo::Loading);
    QTRY_COMPARE_WITH_TIMEOUT(info.status(), PackageInfo::Ready, Patience);
    QCOMPARE(info.label(), latin("Notes"));
    QCOMPARE(info.packageName(), latin("org.example.notes"));
    QCOMPARE(info.permissions(), QStringList{latin("android.permission.CAMERA")});
    QCOMPARE(info.launchers().size(), 2);
    QCOMPARE(info.launchers().at(1).toMap().value(latin("name")).toString(), latin("org.example.notes.Activity1"));
    QCOMPARE(info.minSdkVersion(), 1);
    QVERIFY(info.icon().toString().startsWith(latin("image://sorrel/package/")));
    QVERIFY(!info.icon().toString().contains(latin("notes")));
    QCOMPARE(info.errorString(), QString());
}

void TestPackageInfo::aSourceThatIsTakenAway()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    PackageInfo info;
    info.componentComplete();
    QCOMPARE(info.status(), PackageInfo::Null);
    info.setSource(urlOf(place, "notes.apk"));
    QTRY_COMPARE_WITH_TIMEOUT(info.status(), PackageInfo::Ready, Patience);
    info.setSource(QUrl());
    QCOMPARE(info.status(), PackageInfo::Null);
    QCOMPARE(info.label(), QString());
    QCOMPARE(info.icon(), QUrl());
}

void TestPackageInfo::aFileThatIsNoPackage()
{
    QmlPlace place;
    place.addBroken(latin("broken.apk"));
    PackageInfo info;
    info.componentComplete();
    for (const char *name : {"broken.apk", "missing.apk"}) {
        info.setSource(urlOf(place, name));
        QTRY_COMPARE_WITH_TIMEOUT(info.status(), PackageInfo::Error, Patience);
        QVERIFY2(info.errorString().contains(latin("could not open APK file")), qPrintable(info.errorString()));
        QCOMPARE(info.icon(), QUrl());
    }
}

void TestPackageInfo::aFileThatIsNotLocal()
{
    PackageInfo info;
    info.componentComplete();
    info.setSource(QUrl(latin("http://example.org/notes.apk")));
    QCOMPARE(info.status(), PackageInfo::Error);
    QCOMPARE(info.errorString(), latin("only local files can be read"));
}

void TestPackageInfo::theLastSourceCounts()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    place.add(latin("atlas.apk"), latin("Atlas"));
    PackageInfo info;
    info.componentComplete();
    for (int i = 0; i < 50; ++i)
        info.setSource(urlOf(place, i % 2 == 0 ? "notes.apk" : "atlas.apk"));
    QTRY_COMPARE_WITH_TIMEOUT(info.status(), PackageInfo::Ready, Patience);
    QCOMPARE(info.label(), latin("Atlas"));
}

void TestPackageInfo::endsAtAnyTime()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    for (int i = 0; i < 100; ++i) {
        PackageInfo info;
        info.componentComplete();
        info.setSource(urlOf(place, "notes.apk"));
        if (i % 3 == 0)
            QTest::qWait(1);
    }
}

QTEST_GUILESS_MAIN(TestPackageInfo)
#include "tst_packageinfo.moc"
