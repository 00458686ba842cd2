// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "Tool.h"
#include "format/AndroidAttributes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

/// The facts that `sorrel info --json --all` adds. The system test badging compares those that aapt2 has, too.
class TestInfoDetails : public QObject
{
    Q_OBJECT

private slots:
    void referencesAreResolved();
    void providedServices();

private:
    QJsonObject detailsOf(const QByteArray &apk) const;

    QTemporaryDir m_directory;
};

QJsonObject TestInfoDetails::detailsOf(const QByteArray &apk) const
{
    const QString file = writeFile(m_directory.filePath(QStringLiteral("a.apk")), apk);
    const QByteArray output =
        runSorrel({QStringLiteral("info"), QStringLiteral("--json"), QStringLiteral("--all"), file}).output;
    return QJsonDocument::fromJson(output).object().value(QLatin1String("details")).toObject();
}

void TestInfoDetails::referencesAreResolved()
{
    const QString name = QStringLiteral("name");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .empty(QStringLiteral("supports-screens"), {androidReference(QStringLiteral("largestWidthLimitDp"), 0x7f010002),
                                                    androidReference(QStringLiteral("smallScreens"), 0x7f010003)})
        .empty(QStringLiteral("feature-group"), {androidReference(QStringLiteral("label"), 0x7f010000)})
        .start(QStringLiteral("application"), {androidReference(QStringLiteral("debuggable"), 0x7f010001),
                                               androidReference(QStringLiteral("testOnly"), 0x7f010009)})
        .empty(QStringLiteral("uses-library"), {androidReference(name, 0x7f010000)})
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"));
    const QByteArray table = TableBuilder()
                                 .strings({QStringLiteral("A text")})
                                 .package(PackageBuilder()
                                              .types({QStringLiteral("any")})
                                              .type(TypeBuilder(1)
                                                        .value(0, String, 0)
                                                        .value(1, Boolean, -1)
                                                        .value(2, Integer, 600)
                                                        .value(3, Boolean, 0)))
                                 .build();
    const QJsonObject details = detailsOf(package(table, builder.build()));
    QCOMPARE(details.value(QLatin1String("debuggable")), QJsonValue(true));
    QCOMPARE(details.value(QLatin1String("testOnly")), QJsonValue(false));
    const QJsonObject screens = details.value(QLatin1String("screens")).toObject();
    QCOMPARE(screens.value(QLatin1String("largestWidth")), QJsonValue(600));
    QCOMPARE(screens.value(QLatin1String("small")), QJsonValue(false));
    const QJsonObject group = details.value(QLatin1String("featureGroups")).toArray().at(0).toObject();
    QCOMPARE(group.value(QLatin1String("label")), QJsonValue(QStringLiteral("A text")));
    const QJsonObject library = details.value(QLatin1String("libraries")).toArray().at(0).toObject();
    QCOMPARE(library.value(QLatin1String("name")), QJsonValue(QStringLiteral("A text")));
}

void TestInfoDetails::providedServices()
{
    const QString name = QStringLiteral("name");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.attributeId(QStringLiteral("permission"), Attr::Permission)
        .start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("application"));
    const auto add = [&](const char *element, const char *action, const char *permission) {
        const QString tag = QString::fromLatin1(element);
        builder
            .start(tag, {androidText(name, QStringLiteral(".A")),
                         androidText(QStringLiteral("permission"), QString::fromLatin1(permission))})
            .start(QStringLiteral("intent-filter"))
            .empty(QStringLiteral("action"), {androidText(name, QString::fromLatin1(action))})
            .end(QStringLiteral("intent-filter"))
            .end(tag);
    };
    add("activity", "android.media.action.STILL_IMAGE_CAMERA", "");
    add("activity-alias", "android.media.action.STILL_IMAGE_CAMERA_SECURE", "");
    add("service", "android.nfc.cardemulation.action.HOST_APDU_SERVICE", "android.permission.BIND_NFC_SERVICE");
    add("service", "android.printservice.PrintService", "org.x.OTHER");
    add("service", "android.intent.action.SEARCH", "");
    const QByteArray manifest = builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
    const QJsonObject details = detailsOf(package(emptyTable(), manifest));
    const QJsonArray expected{QStringLiteral("camera"), QStringLiteral("camera-when-locked"),
                              QStringLiteral("card-emulation")};
    QCOMPARE(details.value(QLatin1String("provides")), QJsonValue(expected));
}

QTEST_GUILESS_MAIN(TestInfoDetails)

#include "tst_info_details.moc"
