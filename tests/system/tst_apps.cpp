// SPDX-License-Identifier: LGPL-2.1-or-later

// Packages compiled by both of Android's compilers. The library's answers are compared with the applications' sources,
// and with the output of aapt.

#include "ApkFile.h"
#include "ApkLauncherInfo.h"
#include "ApkResources.h"
#include "LogCapture.h"
#include "apps/AaptDump.h"
#include "apps/ExpectedApps.h"
#include "apps/SampleIcons.h"

#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
#include <QtTest>

namespace {

const QString androidNamespace = QStringLiteral("http://schemas.android.com/apk/res/android");

/**
 * Returns @p text as the library reads it from a UTF-8 table by aapt2. aapt2 writes a character beyond the basic plane
 * as two surrogates of three bytes each. These are not valid UTF-8, so each byte becomes a replacement character.
 */
QString outOfModifiedUtf8(const QString &text)
{
    QByteArray bytes;
    for (const QChar unit : text) {
        if (unit.isSurrogate()) {
            bytes.append(static_cast<char>(0xe0 | (unit.unicode() >> 12)));
            bytes.append(static_cast<char>(0x80 | ((unit.unicode() >> 6) & 0x3f)));
            bytes.append(static_cast<char>(0x80 | (unit.unicode() & 0x3f)));
        } else {
            bytes.append(QString(unit).toUtf8());
        }
    }
    return QString::fromUtf8(bytes);
}

/// The label that Android picks for @p locale.
QString bestLabel(const QMap<QString, QString> &labels, const QString &locale)
{
    const QString language = locale.section(QLatin1Char('-'), 0, 0);
    return labels.value(locale, labels.value(language, labels.value(QString())));
}

QStringList described(const QMap<QString, QString> &texts)
{
    QStringList lines;
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        lines.append(QStringLiteral("[%1] %2").arg(it.key(), it.value()));
    return lines;
}

/// The lines of AaptDump::loadTree() for an element and its descendants.
void appendTree(const QDomElement &element, int depth, QStringList *tree)
{
    const QString indent(2 * depth, QLatin1Char(' '));
    tree->append(indent + element.nodeName());
    QStringList attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i) {
        const QDomAttr attribute = map.item(i).toAttr();
        attributes.append(
            indent
            + QStringLiteral("  {%1} %2=%3").arg(attribute.namespaceURI(), attribute.nodeName(), attribute.value()));
    }
    attributes.sort();
    tree->append(attributes);
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement())
            appendTree(child.toElement(), depth + 1, tree);
        else
            tree->append(indent + QStringLiteral("  a node that is no element: ") + child.nodeName());
    }
}

} // namespace

class AppsTest : public QObject
{
    Q_OBJECT

private slots:
    void coversEverySampleInBothStringEncodings();
    void readsPackagesWithoutComplaint_data() { addPackages(); }
    void readsPackagesWithoutComplaint();
    void tellsPackageAndSdkLevel_data() { addPackages(); }
    void tellsPackageAndSdkLevel();
    void listsLaunchersInManifestOrder_data() { addPackages(); }
    void listsLaunchersInManifestOrder();
    void labelsLaunchersInEveryLocale_data() { addPackages(); }
    void labelsLaunchersInEveryLocale();
    void decodesIconsOfEveryFormatAndSize_data() { addPackages(); }
    void decodesIconsOfEveryFormatAndSize();
    void agreesWithBadging_data() { addPackages(); }
    void agreesWithBadging();
    void manifestIsTheTreeThatAaptPrints_data() { addPackages(); }
    void manifestIsTheTreeThatAaptPrints();
    void resourcesHaveTheValuesThatAaptPrints_data() { addPackages(); }
    void resourcesHaveTheValuesThatAaptPrints();

private:
    static void addPackages();
    static QString packageFile(const QString &app, const QString &compiler);
    static ExpectedApps::Labels expectedLabels(const ExpectedApps::Launcher &launcher, const QString &compiler,
                                               const AaptDump::Table &table);
};

QString AppsTest::packageFile(const QString &app, const QString &compiler)
{
    return QStringLiteral("%1/%2.%3.apk").arg(QStringLiteral(SORREL_SAMPLES_DIR), app, compiler);
}

void AppsTest::addPackages()
{
    QTest::addColumn<QString>("app");
    QTest::addColumn<QString>("compiler");
    const QMap<QString, ExpectedApps::App> apps = ExpectedApps::all();
    for (auto it = apps.cbegin(); it != apps.cend(); ++it) {
        for (const char *compiler : {"aapt", "aapt2"})
            QTest::addRow("%s, %s", qPrintable(it.key()), compiler) << it.key() << QString::fromLatin1(compiler);
    }
}

/// The expected labels for the package that @p compiler made.
ExpectedApps::Labels AppsTest::expectedLabels(const ExpectedApps::Launcher &launcher, const QString &compiler,
                                              const AaptDump::Table &table)
{
    ExpectedApps::Labels labels = launcher.labels;
    for (QString &label : labels) {
        if (label.startsWith(QLatin1Char('@')))
            label = table.reference(table.id(label.mid(1)));
        else if (!launcher.literalLabel && compiler == QLatin1String("aapt2"))
            label = outOfModifiedUtf8(label);
    }
    return labels;
}

void AppsTest::coversEverySampleInBothStringEncodings()
{
    const QMap<QString, ExpectedApps::App> apps = ExpectedApps::all();
    QStringList expected;
    QMap<QString, int> encodings;
    for (auto it = apps.cbegin(); it != apps.cend(); ++it) {
        for (const char *compiler : {"aapt", "aapt2"}) {
            const QString package = packageFile(it.key(), QLatin1String(compiler));
            if (QLatin1String(compiler) == QLatin1String("aapt"))
                expected.append(QFileInfo(package).fileName());
            AaptDump::Table table;
            QString error;
            QVERIFY2(table.load(package, &error), qPrintable(error));
            QCOMPARE(table.encodings.size(), 1);
            ++encodings[QLatin1String(compiler) + QLatin1Char(' ') + table.encodings.first()];
        }
    }
    // Applications that only aapt2 compiles are samples for the kit alone.
    const QStringList ofBoth{QStringLiteral("*.aapt.apk")};
    QCOMPARE(QDir(QStringLiteral(SORREL_SAMPLES_DIR)).entryList(ofBoth, QDir::Files, QDir::Name), expected);
    const QMap<QString, int> everySort{{QStringLiteral("aapt string16"), 2},
                                       {QStringLiteral("aapt string8"), 2},
                                       {QStringLiteral("aapt2 string8"), 4}};
    QCOMPARE(encodings, everySort);
}

void AppsTest::readsPackagesWithoutComplaint()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);

    QStringList log;
    ApkFile apk(packageFile(app, compiler));
    {
        const fixture::LogCapture capture;
        apk.getLauncherInfo(true);
        log = capture.texts();
    }
    QCOMPARE(log, QStringList());
    QVERIFY(apk.resources().isValid());
    QCOMPARE(apk.getError(), 0);
}

void AppsTest::tellsPackageAndSdkLevel()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    const ExpectedApps::App expected = ExpectedApps::all().value(app);

    ApkFile apk(packageFile(app, compiler));
    QCOMPARE(apk.mainPackage(), expected.package);
    QCOMPARE(apk.minSdkVersion(), expected.minSdkVersion);
}

void AppsTest::listsLaunchersInManifestOrder()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    const ExpectedApps::App expected = ExpectedApps::all().value(app);

    ApkFile apk(packageFile(app, compiler));
    for (const bool includeDisabled : {false, true}) {
        QStringList expectedNames;
        for (const ExpectedApps::Launcher &launcher : expected.launchers) {
            if (launcher.shown || includeDisabled)
                expectedNames.append(expected.package + QLatin1Char(' ') + QLatin1String(launcher.className));
        }
        QStringList names;
        const QList<ApkLauncherInfo> launchers = apk.getLauncherInfo(includeDisabled);
        for (const ApkLauncherInfo &launcher : launchers)
            names.append(launcher.launcherPackage() + QLatin1Char(' ') + launcher.launcherClass());
        QCOMPARE(names, expectedNames);
    }
}

void AppsTest::labelsLaunchersInEveryLocale()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    const ExpectedApps::App expected = ExpectedApps::all().value(app);
    AaptDump::Table table;
    QString error;
    QVERIFY2(table.load(packageFile(app, compiler), &error), qPrintable(error));

    ApkFile apk(packageFile(app, compiler));
    for (const bool includeDisabled : {false, true}) {
        const QList<ApkLauncherInfo> launchers = apk.getLauncherInfo(includeDisabled);
        int next = 0;
        for (const ExpectedApps::Launcher &launcher : expected.launchers) {
            if (!launcher.shown && !includeDisabled)
                continue;
            QVERIFY(next < launchers.size());
            const ApkLauncherInfo &info = launchers.at(next++);
            const ExpectedApps::Labels labels = expectedLabels(launcher, compiler, table);
            QCOMPARE(described(info.labels()), described(labels));
            for (auto it = labels.cbegin(); it != labels.cend(); ++it)
                QCOMPARE(info.label(it.key()), it.value());
            QCOMPARE(info.label(QStringLiteral("xx")), QString());
        }
        QCOMPARE(next, launchers.size());
    }
}

void AppsTest::decodesIconsOfEveryFormatAndSize()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    const ExpectedApps::App expected = ExpectedApps::all().value(app);
    AaptDump::Table table;
    QString error;
    QVERIFY2(table.load(packageFile(app, compiler), &error), qPrintable(error));

    ApkFile apk(packageFile(app, compiler));
    for (const bool includeDisabled : {false, true}) {
        const QList<ApkLauncherInfo> launchers = apk.getLauncherInfo(includeDisabled);
        int next = 0;
        for (const ExpectedApps::Launcher &launcher : expected.launchers) {
            if (!launcher.shown && !includeDisabled)
                continue;
            QVERIFY(next < launchers.size());
            QStringList files = SampleIcons::identified(launchers.at(next++).icons(), app);
            QCOMPARE(files, SampleIcons::inOrder(launcher.icon, table, app));
            QStringList expectedFiles = SampleIcons::filesOf(app, launcher.icon);
            files.sort();
            expectedFiles.sort();
            QCOMPARE(files, expectedFiles);
        }
        QCOMPARE(next, launchers.size());
    }
}

void AppsTest::agreesWithBadging()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    const ExpectedApps::App expected = ExpectedApps::all().value(app);
    AaptDump::Badging badging;
    QString error;
    QVERIFY2(badging.load(packageFile(app, compiler), &error), qPrintable(error));
    // aapt decodes the output of aapt2; see outOfModifiedUtf8().
    const auto asRead = [&compiler](const QString &text, bool literal) {
        return compiler == QLatin1String("aapt2") && !literal ? outOfModifiedUtf8(text) : text;
    };

    ApkFile apk(packageFile(app, compiler));
    QCOMPARE(apk.mainPackage(), badging.package);
    QCOMPARE(apk.minSdkVersion(), badging.sdkVersion.isEmpty() ? 1 : badging.sdkVersion.toInt());

    const QString label = apk.getManifest()
                              .documentElement()
                              .firstChildElement(QStringLiteral("application"))
                              .attributeNS(androidNamespace, QStringLiteral("label"));
    const QMap<QString, QString> labels = apk.resources().lookupByLocale(label, 5);
    QVERIFY(!badging.applicationLabels.isEmpty());
    // aapt prints every locale of the table. The library lists only locales in which the label has a text.
    for (auto it = badging.applicationLabels.cbegin(); it != badging.applicationLabels.cend(); ++it)
        QCOMPARE(bestLabel(labels, it.key()), asRead(it.value(), !label.startsWith(QLatin1Char('@'))));
    for (auto it = labels.cbegin(); it != labels.cend(); ++it)
        QVERIFY2(badging.applicationLabels.contains(it.key()), qPrintable(it.key()));

    // aapt omits aliases, and prints an activity once, whether it is enabled or not.
    const QList<ApkLauncherInfo> launchers = apk.getLauncherInfo(true);
    QCOMPARE(launchers.size(), expected.launchers.size());
    QStringList names;
    QStringList namesByAapt;
    for (int i = 0; i < launchers.size(); ++i) {
        if (!expected.launchers.at(i).alias && !names.contains(launchers.at(i).launcherClass()))
            names.append(launchers.at(i).launcherClass());
    }
    for (const AaptDump::LaunchableActivity &activity : badging.launchableActivities) {
        // aapt accepts an action and a category in different filters.
        if (activity.name == QLatin1String("org.example.toolbox.Square"))
            continue;
        namesByAapt.append(activity.name);

        const int index = [&] {
            for (int i = 0; i < launchers.size(); ++i) {
                if (launchers.at(i).launcherClass() == activity.name)
                    return i;
            }
            return -1;
        }();
        QVERIFY2(index >= 0, qPrintable(activity.name));
        const ApkLauncherInfo &info = launchers.at(index);
        // aapt prints the activity's own label and icon, not those of the filter. It follows any number of references.
        if (!activity.label.isEmpty() && activity.name != QLatin1String("org.example.kiosk.Snacks")
            && activity.name != QLatin1String("org.example.toolbox.Chain")) {
            QCOMPARE(bestLabel(info.labels(), QStringLiteral("en-US")),
                     asRead(activity.label, expected.launchers.at(index).literalLabel));
        }
        if (!activity.icon.isEmpty() && !activity.icon.endsWith(QLatin1String(".xml")))
            QVERIFY(SampleIcons::identified(info.icons(), app).contains(SampleIcons::sourceOf(activity.icon, app)));
    }
    QCOMPARE(names, namesByAapt);
}

void AppsTest::manifestIsTheTreeThatAaptPrints()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    const QString package = packageFile(app, compiler);
    AaptDump::Table table;
    QStringList expected;
    QString error;
    QVERIFY2(table.load(package, &error), qPrintable(error));
    QVERIFY2(AaptDump::loadTree(package, table, &expected, &error), qPrintable(error));

    QStringList tree;
    const QDomDocument manifest = ApkFile(package).getManifest();
    for (QDomNode node = manifest.firstChild(); !node.isNull(); node = node.nextSibling())
        appendTree(node.toElement(), 0, &tree);
    QVERIFY(tree.size() > 20);
    QCOMPARE(tree, expected);
}

void AppsTest::resourcesHaveTheValuesThatAaptPrints()
{
    QFETCH(QString, app);
    QFETCH(QString, compiler);
    AaptDump::Table table;
    QString error;
    QVERIFY2(table.load(packageFile(app, compiler), &error), qPrintable(error));
    QVERIFY(!table.resources.isEmpty());

    const ApkResources resources = ApkFile(packageFile(app, compiler)).resources();
    int values = 0;
    for (auto it = table.resources.cbegin(); it != table.resources.cend(); ++it) {
        const QString reference = resources.refToString(int(it.key()));
        QCOMPARE(reference, table.reference(it.key()));

        // Bags (styles, arrays, plurals) have no values here, because neither the library nor AaptDump keeps them.
        QStringList all;
        QMap<QString, QString> byConfig;
        QMap<QString, QString> byLocale;
        for (const AaptDump::Value &value : it->values) {
            const AaptDump::ConfigNames names(value.config);
            const QString text = table.text(value);
            QCOMPARE(resources.valueToString(value.type, int(value.data)), text);
            all.append(text);
            byConfig.insert(names.qualifiers, text); // the last value counts
            if (!byLocale.contains(names.locale))    // the first value counts
                byLocale.insert(names.locale, text);
        }
        QCOMPARE(resources.lookupAll(reference), all);
        QCOMPARE(described(resources.lookupAllByConfig(reference)), described(byConfig));
        QCOMPARE(described(resources.lookupByLocale(reference, 0)), described(byLocale));
        values += int(it->values.size());
    }
    if (app == QLatin1String("atlas"))
        QVERIFY2(values > 4000, qPrintable(QString::number(values)));
}

QTEST_GUILESS_MAIN(AppsTest)
#include "tst_apps.moc"
