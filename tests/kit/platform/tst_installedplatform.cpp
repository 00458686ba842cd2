// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PlatformFixture.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>
#include <SorrelKit/Resources.h>

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

// Ids that every version of Android has for applications.
constexpr quint32 Ok = 0x0104000a;
constexpr quint32 Cancel = 0x01040000;
constexpr quint32 HoloBlueLight = 0x01060012;
constexpr quint32 DefaultIcon = 0x01080093;

} // namespace

/// The platform of this machine, Debian's package android-framework-res.
class TestInstalledPlatform : public QObject
{
    Q_OBJECT

private slots:
    void isAPlatform();
    void labelsAreInManyLanguages();
    void publicResourcesHaveTheirNames_data();
    void publicResourcesHaveTheirNames();
    void iconsAreDrawnWhole_data();
    void iconsAreDrawnWhole();

private:
    const Platform m_platform{QStringLiteral(SORREL_FRAMEWORK_RES)};
};

void TestInstalledPlatform::isAPlatform()
{
    QVERIFY(m_platform.isValid());
    QCOMPARE(m_platform.error(), Error());
    const Package itself(m_platform.fileName());
    QCOMPARE(m_platform.apiLevel(), itself.targetSdkVersion());
    QVERIFY(m_platform.apiLevel() >= 21);
}

void TestInstalledPlatform::labelsAreInManyLanguages()
{
    const QByteArray manifest = packageManifest()
                                    .start(latin("manifest"), {plainText(latin("package"), latin("org.example.app"))})
                                    .empty(latin("application"), {androidReference(latin("label"), Cancel)})
                                    .end(latin("manifest"))
                                    .build();
    PackageDevice device(package(emptyTable(), manifest));
    Package package(&device);
    package.setPlatform(m_platform);
    QCOMPARE(package.label(QLocale(QLocale::English)), latin("Cancel"));
    QCOMPARE(package.label(QLocale(QLocale::German)), latin("Abbrechen"));
    QCOMPARE(package.label(QLocale(QLocale::Chinese)), QString::fromUtf8("取消"));
    QVERIFY(package.labels().size() > 50);
}

void TestInstalledPlatform::publicResourcesHaveTheirNames_data()
{
    QTest::addColumn<quint32>("id");
    QTest::addColumn<QString>("name");
    QTest::newRow("ok") << Ok << latin("android:string/ok");
    QTest::newRow("cancel") << Cancel << latin("android:string/cancel");
    QTest::newRow("color") << HoloBlueLight << latin("android:color/holo_blue_light");
    QTest::newRow("icon") << DefaultIcon << latin("android:drawable/sym_def_app_icon");
    QTest::newRow("attribute") << 0x01010001u << latin("android:attr/label");
    QTest::newRow("style") << 0x01030005u << latin("android:style/Theme");
}

void TestInstalledPlatform::publicResourcesHaveTheirNames()
{
    QFETCH(quint32, id);
    PackageDevice device(package(emptyTable(), smallManifest()));
    Package package(&device);
    package.setPlatform(m_platform);
    QTEST(Resources(package).name(id), "name");
}

void TestInstalledPlatform::iconsAreDrawnWhole_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"sym_def_app_icon", "ic_menu_add",        "ic_menu_call",      "ic_menu_camera",  "ic_menu_delete",
          "ic_menu_edit",     "ic_menu_mylocation", "ic_menu_search",    "ic_menu_share",   "ic_dialog_alert",
          "ic_dialog_email",  "ic_dialog_info",     "ic_dialog_map",     "ic_dialog_time",  "ic_media_play",
          "ic_btn_speak_now", "star_big_on",        "stat_sys_download", "stat_sys_upload", "stat_sys_warning",
          "stat_notify_chat", "presence_online",    "btn_default",       "btn_radio",       "progress_horizontal",
          "toast_frame",      "menu_frame",         "btn_star_big_on"})
        QTest::newRow(name) << latin(name);
}

void TestInstalledPlatform::iconsAreDrawnWhole()
{
    QFETCH(QString, name);
    const Resources resources{Package(m_platform.fileName())};
    const quint32 id = resources.find(latin("drawable/") + name);
    QVERIFY(id != 0);
    Package package;
    package.setPlatform(m_platform);
    DrawableRenderer renderer(package);
    for (const int size : {24, 48, 96, 192}) {
        const QImage image = renderer.drawable(id, IconRequest(size));
        QCOMPARE(renderer.error().text(), QString());
        QImage empty(image.size(), image.format());
        empty.fill(Qt::transparent);
        QVERIFY(!image.isNull() && image != empty);
    }
}

QTEST_GUILESS_MAIN(TestInstalledPlatform)
#include "tst_installedplatform.moc"
