// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "KitIcons.h"

#include <SorrelKit/Package.h>

#include <QtTest>

using namespace fixture;
using SorrelKit::IconMask;
using SorrelKit::Package;

using Attributes = QVector<Attribute>;
using Activities = QVector<Attributes>;

Q_DECLARE_METATYPE(fixture::Attribute)

namespace {

constexpr QRgb Red = 0xffff0000u;
constexpr QRgb Green = 0xff00ff00u;
constexpr QRgb NoColor = 0;
constexpr int Size = 48;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

Attribute icon(const char *path)
{
    return androidText(latin("icon"), latin(path));
}

Attribute off(const char *name)
{
    return androidText(latin(name), latin("false"));
}

// A package of launchers with these attributes.
QByteArray packageOf(const Attributes &application, const Activities &activities)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(latin("manifest"), {plainText(latin("package"), latin("org.example.app"))});
    builder.start(latin("application"), application);
    for (int i = 0; i < activities.size(); ++i) {
        const Attributes name{androidText(latin("name"), QStringLiteral(".L%1").arg(i))};
        builder.start(latin("activity"), name + activities.at(i)).launcherFilter().end(latin("activity"));
    }
    builder.end(latin("application")).end(latin("manifest"));
    return package(emptyTable(), builder.build(),
                   {{latin("red.png"), picture(Size, Size, Red)}, {latin("green.png"), picture(Size, Size, Green)}});
}

} // namespace

class TestPackageIcon : public QObject
{
    Q_OBJECT

private slots:
    void launcherStandsIn_data();
    void launcherStandsIn();
    void launchersThatAreTriedAreFew();
};

void TestPackageIcon::launcherStandsIn_data()
{
    QTest::addColumn<Attributes>("application");
    QTest::addColumn<Activities>("activities");
    QTest::addColumn<QRgb>("color");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const Attributes &application, const Activities &activities, QRgb color,
                        const char *error) {
        QTest::newRow(name) << application << activities << color << latin(error);
    };
    const Attribute red = icon("red.png");
    const Attribute green = icon("green.png");
    const Attribute missing = icon("missing.png");
    const char *const noIcon = "there is no icon";
    const char *const noFile = "missing.png cannot be read or decoded";

    row("the application's own first", {green}, {{red}}, Green, "");
    row("none of the application", {}, {{red}, {green}}, Red, "");
    row("the first launcher has none", {}, {{}, {green}}, Green, "");
    row("the first launcher's is missing", {}, {{missing}, {green}}, Green, "");
    row("the first launcher is disabled", {}, {{red, off("enabled")}, {green}}, Green, "");
    row("the first launcher is not exported", {}, {{red, off("exported")}, {green}}, Green, "");
    row("the application's is missing", {missing}, {{}, {red}}, Red, noFile);
    row("no launcher is shown", {}, {{red, off("enabled")}}, NoColor, noIcon);
    row("the application is disabled", {off("enabled")}, {{red}}, NoColor, noIcon);
    row("no launcher", {}, {}, NoColor, noIcon);
    row("all are missing", {missing}, {{missing}, {}}, NoColor, noFile);
    row("a launcher's alone is missing", {}, {{missing}}, NoColor, noIcon);
}

void TestPackageIcon::launcherStandsIn()
{
    QFETCH(Attributes, application);
    QFETCH(Activities, activities);
    QFETCH(QRgb, color);
    QFETCH(QString, error);
    PackageDevice device(packageOf(application, activities));
    const Package package(&device);
    QString actual = latin("unset");
    const QImage image = iconOf(package, Size, IconMask::None, &actual);
    QCOMPARE(image.isNull(), color == NoColor);
    if (color != NoColor)
        QCOMPARE(image.pixel(Size / 2, Size / 2), color);
    QCOMPARE(actual, error);
    QCOMPARE(iconOf(package, Size), image);
}

void TestPackageIcon::launchersThatAreTriedAreFew()
{
    const Attributes missing{icon("missing.png")};
    const Attributes hidden{icon("red.png"), off("enabled")};
    // Hidden launchers, and launchers without their own icon, do not count.
    Activities activities{{}, hidden, {}, missing, missing, missing, {icon("green.png")}};
    PackageDevice fourth(packageOf({}, activities));
    QCOMPARE(iconOf(Package(&fourth), Size).pixel(Size / 2, Size / 2), Green);
    activities.insert(3, missing);
    PackageDevice fifth(packageOf({}, activities));
    QVERIFY(iconOf(Package(&fifth), Size).isNull());
}

QTEST_GUILESS_MAIN(TestPackageIcon)
#include "tst_packageicon.moc"
