// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "LogCapture.h"

#include <QtTest>

using namespace fixture;

namespace {

const QString mainAction = QStringLiteral("android.intent.action.MAIN");
const QString launcherCategory = QStringLiteral("android.intent.category.LAUNCHER");
const QString filterTag = QStringLiteral("intent-filter");
const QString activityTag = QStringLiteral("activity");
const QString aliasTag = QStringLiteral("activity-alias");
const QString applicationTag = QStringLiteral("application");

enum TypeId : int {
    StringType = 1,
    DrawableType = 2,
    BoolType = 3,
};

constexpr qint64 resourceId(int type, int entry)
{
    return 0x7f000000 | (type << 16) | entry;
}

QString reference(const char *type, int entry)
{
    return QStringLiteral("@%1/%2").arg(QLatin1String(type)).arg(entry);
}

Attribute named(const char *name)
{
    return androidText(QStringLiteral("name"), QString::fromUtf8(name));
}

Attribute text(const char *attribute, const QString &value)
{
    return androidText(QLatin1String(attribute), value);
}

// The names and attributes of a launcher's elements. Tests replace single parts.
struct Launcher {
    QVector<Attribute> application;
    QVector<Attribute> activity = {named(".Main")};
    QVector<Attribute> filter;
    QString applicationElement = applicationTag;
    QString activityElement = activityTag;
    QString action = mainAction;
    QString category = launcherCategory;
};

void addFilter(XmlBuilder &builder, const Launcher &launcher)
{
    builder.start(filterTag, launcher.filter)
        .empty(QStringLiteral("action"), {text("name", launcher.action)})
        .empty(QStringLiteral("category"), {text("name", launcher.category)})
        .end(filterTag);
}

QByteArray manifestWith(const QVector<Launcher> &launchers)
{
    const QString manifest = QStringLiteral("manifest");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(manifest, {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    for (const Launcher &launcher : launchers) {
        builder.start(launcher.applicationElement, launcher.application)
            .start(launcher.activityElement, launcher.activity);
        addFilter(builder, launcher);
        builder.end(launcher.activityElement).end(launcher.applicationElement);
    }
    return builder.end(manifest).build();
}

// A table of these types. Their values index @p strings.
QByteArray table(const QStringList &strings, const QVector<TypeBuilder> &types)
{
    PackageBuilder package(0x7f, QStringLiteral("org.x"));
    package.types({QStringLiteral("string"), QStringLiteral("drawable"), QStringLiteral("bool")});
    for (const TypeBuilder &type : types)
        package.type(type);
    return TableBuilder().strings(strings).package(package).build();
}

TypeBuilder in(int type, const char *language, const char *country = "")
{
    return TypeBuilder(type, ConfigBuilder().locale(language, country).build());
}

QList<ApkLauncherInfo> launchers(const QByteArray &manifest, bool includeDisabled = false,
                                 const QByteArray &resources = emptyTable(), const QVector<Member> &members = {})
{
    PackageDevice device(resources, manifest, members);
    ApkFile apk(&device);
    const QList<ApkLauncherInfo> found = apk.getLauncherInfo(includeDisabled);
    if (apk.getError() != 0)
        qFatal("%s", qPrintable(apk.getErrorString()));
    return found;
}

ApkLauncherInfo only(const Launcher &launcher, const QByteArray &resources = emptyTable(),
                     const QVector<Member> &members = {})
{
    const QList<ApkLauncherInfo> found = launchers(manifestWith({launcher}), false, resources, members);
    return found.size() == 1 ? found.constFirst() : ApkLauncherInfo();
}

QVector<int> widths(const ApkLauncherInfo &info)
{
    QVector<int> widths;
    for (const QImage &icon : info.icons())
        widths.append(icon.width());
    return widths;
}

Member pictureMember(const char *name, int width, const char *format = "PNG")
{
    return {QString::fromLatin1(name), picture(width, 8, 0x336699, format)};
}

using Labels = QMap<QString, QString>;

} // namespace

class TestLaunchers : public QObject
{
    Q_OBJECT

private slots:
    void filterIsFound_data();
    void filterIsFound();
    void filterNeedsActionAndCategoryAsItsChildren();
    void furtherActionsAndCategoriesDoNotMatter();
    void everyFilterGivesAnEntryInTheirOrder();
    void brokenManifestGivesNone();

    void visibility_data();
    void visibility();
    void keepsTheApplicationsEnabledUnresolved();
    void enabledReferenceCountsInTheDefaultConfiguration();

    void className_data();
    void className();
    void aliasGivesTheClassOfItsTarget_data();
    void aliasGivesTheClassOfItsTarget();
    void onlyAnAliasHasATarget_data();
    void onlyAnAliasHasATarget();
    void packageIsTheManifests();
    void packageIsEmptyAndNotNull();

    void labelComesFromTheInnermostElement();
    void labelsOfEveryLocale();
    void labelReferencesAreFollowedToDepthFive();
    void missingLabelGivesNoLabels();
    void unresolvableLabelGivesNoLabels();

    void iconComesFromTheInnermostElement();
    void iconPathMayBeWrittenInTheManifest();
    void iconsOfEveryConfiguration();
    void keepsTheReverseOrderOfAnExpansion();
    void expansionIsDepthFirst();
    void iconReferencesThatLeadBackEnd();
    void pictureReachedTwiceIsTakenOnce();
    void pictureFormats_data();
    void pictureFormats();
    void iconsThatCannotBeHadAreDropped_data();
    void iconsThatCannotBeHadAreDropped();
    void missingIconGivesNoIcons();
    void picturesAreDecodedOncePerCall();
};

void TestLaunchers::filterIsFound_data()
{
    QTest::addColumn<QString>("applicationElement");
    QTest::addColumn<QString>("activityElement");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("category");
    QTest::addColumn<int>("count");
    const auto row = [](const char *name, const QString &application, const QString &activity, const QString &action,
                        const QString &category,
                        int count) { QTest::newRow(name) << application << activity << action << category << count; };
    row("activity", applicationTag, activityTag, mainAction, launcherCategory, 1);
    row("alias", applicationTag, aliasTag, mainAction, launcherCategory, 1);
    row("any tag that begins so", applicationTag, QStringLiteral("activityish"), mainAction, launcherCategory, 1);
    row("service", applicationTag, QStringLiteral("service"), mainAction, launcherCategory, 0);
    row("receiver", applicationTag, QStringLiteral("receiver"), mainAction, launcherCategory, 0);
    row("tag in upper case", applicationTag, QStringLiteral("Activity"), mainAction, launcherCategory, 0);
    row("under another element", QStringLiteral("applications"), activityTag, mainAction, launcherCategory, 0);
    row("other action", applicationTag, activityTag, QStringLiteral("android.intent.action.VIEW"), launcherCategory, 0);
    row("other category", applicationTag, activityTag, mainAction, QStringLiteral("android.intent.category.DEFAULT"),
        0);
    row("action in lower case", applicationTag, activityTag, mainAction.toLower(), launcherCategory, 0);
    row("category in lower case", applicationTag, activityTag, mainAction, launcherCategory.toLower(), 0);
    row("longer category", applicationTag, activityTag, mainAction, launcherCategory + QStringLiteral("_APP"), 0);
}

void TestLaunchers::filterIsFound()
{
    QFETCH(QString, applicationElement);
    QFETCH(QString, activityElement);
    QFETCH(QString, action);
    QFETCH(QString, category);
    Launcher wanted;
    wanted.applicationElement = applicationElement;
    wanted.activityElement = activityElement;
    wanted.action = action;
    wanted.category = category;
    const QByteArray manifest = manifestWith({wanted});
    QTEST(int(launchers(manifest).size()), "count");
    QTEST(int(launchers(manifest, true).size()), "count");
}

void TestLaunchers::filterNeedsActionAndCategoryAsItsChildren()
{
    const QString data = QStringLiteral("data");
    const QString manifest = QStringLiteral("manifest");
    const Attribute action = text("name", mainAction);
    const Attribute category = text("name", launcherCategory);
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(manifest).start(applicationTag).start(activityTag, {named("A")});
    builder.start(filterTag).empty(QStringLiteral("action"), {action}).end(filterTag);
    builder.start(filterTag).empty(QStringLiteral("category"), {category}).end(filterTag);
    builder.start(filterTag).end(filterTag);
    builder.start(filterTag)
        .start(data)
        .empty(QStringLiteral("action"), {action})
        .empty(QStringLiteral("category"), {category})
        .end(data)
        .end(filterTag);
    builder.end(activityTag).end(applicationTag).end(manifest);
    QVERIFY(launchers(builder.build(), true).isEmpty());

    // Without resource ids, the builder writes names outside Android's namespace.
    XmlBuilder plain;
    plain.start(manifest).start(applicationTag).start(activityTag).start(filterTag);
    plain.empty(QStringLiteral("action"), {plainText(QStringLiteral("name"), mainAction)});
    plain.empty(QStringLiteral("category"), {plainText(QStringLiteral("name"), launcherCategory)});
    plain.end(filterTag).end(activityTag).end(applicationTag).end(manifest);
    QVERIFY(launchers(plain.build(), true).isEmpty());
}

void TestLaunchers::furtherActionsAndCategoriesDoNotMatter()
{
    const QString manifest = QStringLiteral("manifest");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(manifest).start(applicationTag).start(activityTag, {named("A")}).start(filterTag);
    builder.empty(QStringLiteral("category"), {named("android.intent.category.DEFAULT")});
    builder.empty(QStringLiteral("action"), {named("android.intent.action.VIEW")});
    builder.empty(QStringLiteral("action"));
    builder.empty(QStringLiteral("category"), {text("name", launcherCategory)});
    builder.empty(QStringLiteral("action"), {text("name", mainAction)});
    builder.end(filterTag).end(activityTag).end(applicationTag).end(manifest);
    QCOMPARE(launchers(builder.build()).size(), 1);
}

void TestLaunchers::everyFilterGivesAnEntryInTheirOrder()
{
    const QString manifest = QStringLiteral("manifest");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(manifest, {plainText(QStringLiteral("package"), QStringLiteral("org.x"))}).start(applicationTag);
    for (const char *activity : {".Second", ".First"}) {
        builder.start(activityTag, {named(activity)});
        addFilter(builder, Launcher());
        addFilter(builder, Launcher());
        builder.end(activityTag);
    }
    addFilter(builder, Launcher()); // directly in the application
    builder.end(applicationTag).end(manifest);

    QStringList classes;
    for (const ApkLauncherInfo &info : launchers(builder.build()))
        classes.append(info.launcherClass());
    QCOMPARE(classes, QStringList({QStringLiteral("org.x.Second"), QStringLiteral("org.x.Second"),
                                   QStringLiteral("org.x.First"), QStringLiteral("org.x.First")}));
}

void TestLaunchers::brokenManifestGivesNone()
{
    PackageDevice device(emptyTable(), manifestWith({Launcher()}).chopped(8));
    ApkFile apk(&device);
    const LogCapture log;
    QVERIFY(apk.getLauncherInfo(true).isEmpty());
    QCOMPARE(apk.getError(), 5);
}

void TestLaunchers::visibility_data()
{
    QTest::addColumn<QString>("activityEnabled");
    QTest::addColumn<QString>("applicationEnabled");
    QTest::addColumn<QString>("exported");
    QTest::addColumn<bool>("shown");
    const QString no = QStringLiteral("false");
    const QString none;
    QTest::newRow("as written by default") << none << none << none << true;
    QTest::newRow("all true") << QStringLiteral("true") << QStringLiteral("true") << QStringLiteral("true") << true;
    QTest::newRow("activity disabled") << no << none << none << false;
    QTest::newRow("application disabled") << none << no << none << false;
    QTest::newRow("not exported") << none << none << no << false;
    QTest::newRow("False") << QStringLiteral("False") << QStringLiteral("False") << QStringLiteral("False") << true;
    QTest::newRow("0") << QStringLiteral("0") << QStringLiteral("0") << QStringLiteral("0") << true;
    QTest::newRow("empty") << QStringLiteral("") << QStringLiteral("") << QStringLiteral("") << true;
    QTest::newRow("activity's refers to false") << reference("bool", 0) << none << none << false;
    QTest::newRow("activity's refers to true") << reference("bool", 1) << none << none << true;
    QTest::newRow("activity's refers to nothing") << reference("bool", 9) << none << none << true;
    QTest::newRow("activity's refers to a reference to false") << reference("bool", 2) << none << none << true;
    QTest::newRow("exported refers to false") << none << none << reference("bool", 0) << true;
}

void TestLaunchers::visibility()
{
    QFETCH(QString, activityEnabled);
    QFETCH(QString, applicationEnabled);
    QFETCH(QString, exported);
    Launcher wanted;
    if (!activityEnabled.isNull())
        wanted.activity.append(text("enabled", activityEnabled));
    if (!exported.isNull())
        wanted.activity.append(text("exported", exported));
    if (!applicationEnabled.isNull())
        wanted.application.append(text("enabled", applicationEnabled));
    const QByteArray resources = table({}, {TypeBuilder(BoolType)
                                                .value(0, Boolean, 0)
                                                .value(1, Boolean, -1)
                                                .value(2, Reference, resourceId(BoolType, 0))});
    const QByteArray manifest = manifestWith({wanted});
    QTEST(!launchers(manifest, false, resources).isEmpty(), "shown");
    QCOMPARE(launchers(manifest, true, resources).size(), 1);
}

void TestLaunchers::keepsTheApplicationsEnabledUnresolved()
{
    Launcher wanted;
    wanted.application = {androidReference(QStringLiteral("enabled"), resourceId(BoolType, 0))};
    const QByteArray resources = table({}, {TypeBuilder(BoolType).value(0, Boolean, 0)});
    QCOMPARE(launchers(manifestWith({wanted}), false, resources).size(), 1);

    wanted.application.clear();
    wanted.activity.append(androidReference(QStringLiteral("enabled"), resourceId(BoolType, 0)));
    QVERIFY(launchers(manifestWith({wanted}), false, resources).isEmpty());
}

void TestLaunchers::enabledReferenceCountsInTheDefaultConfiguration()
{
    Launcher wanted;
    wanted.activity.append(text("enabled", reference("bool", 0)));
    const QByteArray disabledInGerman =
        table({}, {TypeBuilder(BoolType).value(0, Boolean, -1), in(BoolType, "de").value(0, Boolean, 0)});
    QCOMPARE(launchers(manifestWith({wanted}), false, disabledInGerman).size(), 1);
    const QByteArray inGermanAlone = table({}, {in(BoolType, "de").value(0, Boolean, 0)});
    QCOMPARE(launchers(manifestWith({wanted}), false, inGermanAlone).size(), 1);
}

void TestLaunchers::className_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("completed");
    const auto row = [](const char *name, const char *completed) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(completed);
    };
    row(".Main", "org.x.Main");
    row("Main", "org.x.Main");
    row("a.b.Main", "a.b.Main");
    row("a.Main", "a.Main");
    row("Main.", "Main.");
    row(".sub.Main", "org.x.sub.Main");
    row(".", "org.x.");
    row("", "org.x.");
    row("Outer$Inner", "org.x.Outer$Inner");
}

void TestLaunchers::className()
{
    QFETCH(QString, name);
    Launcher wanted;
    wanted.activity = {text("name", name)};
    QTEST(only(wanted).launcherClass(), "completed");
}

void TestLaunchers::aliasGivesTheClassOfItsTarget_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("completed");
    QTest::newRow("relative") << QStringLiteral(".Main") << QStringLiteral("org.x.Main");
    QTest::newRow("bare") << QStringLiteral("Main") << QStringLiteral("org.x.Main");
    QTest::newRow("complete") << QStringLiteral("a.b.Main") << QStringLiteral("a.b.Main");
    QTest::newRow("none") << QString() << QStringLiteral("org.x.");
}

void TestLaunchers::aliasGivesTheClassOfItsTarget()
{
    QFETCH(QString, target);
    Launcher wanted;
    wanted.activityElement = aliasTag;
    wanted.activity = {named(".Alias")};
    if (!target.isNull())
        wanted.activity.append(text("targetActivity", target));
    QTEST(only(wanted).launcherClass(), "completed");
}

void TestLaunchers::onlyAnAliasHasATarget_data()
{
    QTest::addColumn<QString>("element");
    for (const char *element : {"activity", "activity-aliasx", "activity-alia", "activity-Alias", "activityalias"})
        QTest::newRow(element) << QString::fromLatin1(element);
}

void TestLaunchers::onlyAnAliasHasATarget()
{
    Launcher wanted;
    QFETCH(const QString, element);
    wanted.activityElement = element;
    wanted.activity = {named(".Named"), text("targetActivity", QStringLiteral(".Target"))};
    QCOMPARE(only(wanted).launcherClass(), QStringLiteral("org.x.Named"));
}

void TestLaunchers::packageIsTheManifests()
{
    QCOMPARE(only(Launcher()).launcherPackage(), QStringLiteral("org.x"));
}

void TestLaunchers::packageIsEmptyAndNotNull()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest")).start(applicationTag).start(activityTag);
    addFilter(builder, Launcher());
    builder.end(activityTag).end(applicationTag).end(QStringLiteral("manifest"));
    const QList<ApkLauncherInfo> found = launchers(builder.build());
    QCOMPARE(found.size(), 1);
    QVERIFY(found.constFirst().launcherPackage().isEmpty());
    QVERIFY(!found.constFirst().launcherPackage().isNull());
}

void TestLaunchers::labelComesFromTheInnermostElement()
{
    const auto label = [](const Launcher &wanted) { return only(wanted).labels(); };
    const auto plain = [](const char *value) { return Labels{{QString(), QString::fromLatin1(value)}}; };
    Launcher wanted;
    wanted.application = {text("label", QStringLiteral("application"))};
    QCOMPARE(label(wanted), plain("application"));
    wanted.activity.append(text("label", QStringLiteral("activity")));
    QCOMPARE(label(wanted), plain("activity"));
    wanted.filter = {text("label", QStringLiteral("filter"))};
    QCOMPARE(label(wanted), plain("filter"));
    wanted.filter = {text("label", QStringLiteral(""))};
    QCOMPARE(label(wanted), plain("activity"));
}

void TestLaunchers::labelsOfEveryLocale()
{
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("label"), resourceId(StringType, 0)));
    const QByteArray resources =
        table({QStringLiteral("Notes"), QStringLiteral("Notizen"), QStringLiteral("Anotações")},
              {TypeBuilder(StringType).value(0, String, 0), in(StringType, "de").value(0, String, 1),
               in(StringType, "pt", "BR").value(0, String, 2)});
    QCOMPARE(only(wanted, resources).labels(), (Labels{{QString(), QStringLiteral("Notes")},
                                                       {QStringLiteral("de"), QStringLiteral("Notizen")},
                                                       {QStringLiteral("pt-BR"), QStringLiteral("Anotações")}}));
}

void TestLaunchers::labelReferencesAreFollowedToDepthFive()
{
    // Entry n refers to entry n + 1; the last entry is a text.
    const auto labelOfChain = [](int references) {
        TypeBuilder strings(StringType);
        for (int i = 0; i < references; ++i)
            strings.value(i, Reference, resourceId(StringType, i + 1));
        strings.value(references, String, 0);
        Launcher wanted;
        wanted.activity.append(androidReference(QStringLiteral("label"), resourceId(StringType, 0)));
        return only(wanted, table({QStringLiteral("end")}, {strings})).label(QString());
    };
    QCOMPARE(labelOfChain(0), QStringLiteral("end"));
    QCOMPARE(labelOfChain(5), QStringLiteral("end"));
    QCOMPARE(labelOfChain(6), reference("string", 6));
}

void TestLaunchers::missingLabelGivesNoLabels()
{
    QVERIFY(only(Launcher()).labels().isEmpty());
    QCOMPARE(only(Launcher()).launcherClass(), QStringLiteral("org.x.Main"));
}

void TestLaunchers::unresolvableLabelGivesNoLabels()
{
    for (const QString &label : {reference("string", 7), QStringLiteral("@android:string/1"), QStringLiteral("@?")}) {
        Launcher wanted;
        wanted.activity.append(text("label", label));
        const ApkLauncherInfo info = only(wanted, table({}, {TypeBuilder(StringType).value(0, Integer, 1)}));
        QCOMPARE(info.launcherClass(), QStringLiteral("org.x.Main"));
        QVERIFY(info.labels().isEmpty());
    }
}

void TestLaunchers::iconComesFromTheInnermostElement()
{
    const QVector<Member> members = {pictureMember("1.png", 1), pictureMember("2.png", 2), pictureMember("3.png", 3)};
    const auto icons = [&members](const Launcher &wanted) { return widths(only(wanted, emptyTable(), members)); };
    Launcher wanted;
    wanted.application = {text("icon", QStringLiteral("1.png"))};
    QCOMPARE(icons(wanted), QVector<int>({1}));
    wanted.activity.append(text("icon", QStringLiteral("2.png")));
    QCOMPARE(icons(wanted), QVector<int>({2}));
    wanted.filter = {text("icon", QStringLiteral("3.png"))};
    QCOMPARE(icons(wanted), QVector<int>({3}));
    wanted.filter = {text("icon", QStringLiteral(""))};
    QCOMPARE(icons(wanted), QVector<int>({2}));
}

void TestLaunchers::iconPathMayBeWrittenInTheManifest()
{
    Launcher wanted;
    wanted.activity.append(text("icon", QStringLiteral("res/icon.png")));
    const ApkLauncherInfo info = only(wanted, emptyTable(), {pictureMember("res/icon.png", 5)});
    QCOMPARE(widths(info), QVector<int>({5}));
    QCOMPARE(info.icons().constFirst().size(), QSize(5, 8));
    QCOMPARE(info.icons().constFirst().pixelColor(2, 2), QColor(0x33, 0x66, 0x99));
}

void TestLaunchers::iconsOfEveryConfiguration()
{
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("icon"), resourceId(DrawableType, 0)));
    const auto at = [](int density) { return TypeBuilder(DrawableType, ConfigBuilder().density(density).build()); };
    const QByteArray resources =
        table({QStringLiteral("m.png"), QStringLiteral("h.png"), QStringLiteral("x.png")},
              {at(160).value(0, String, 0), at(240).value(0, String, 1), at(320).value(0, String, 2)});
    const QVector<Member> members = {pictureMember("h.png", 72), pictureMember("m.png", 48),
                                     pictureMember("x.png", 96)};
    QCOMPARE(widths(only(wanted, resources, members)), QVector<int>({48, 72, 96}));
}

void TestLaunchers::keepsTheReverseOrderOfAnExpansion()
{
    // Values of the icon are used in the order of the table, values of a reference in reverse.
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("icon"), resourceId(DrawableType, 0)));
    const QByteArray resources =
        table({QStringLiteral("1.png"), QStringLiteral("2.png"), QStringLiteral("3.png")},
              {TypeBuilder(DrawableType).value(0, Reference, resourceId(DrawableType, 1)).value(1, String, 0),
               in(DrawableType, "de").value(0, String, 2).value(1, String, 1)});
    const QVector<Member> members = {pictureMember("1.png", 1), pictureMember("2.png", 2), pictureMember("3.png", 3)};
    QCOMPARE(widths(only(wanted, resources, members)), QVector<int>({2, 1, 3}));
}

void TestLaunchers::expansionIsDepthFirst()
{
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("icon"), resourceId(DrawableType, 0)));
    // 0 refers to 1 and to picture 3; 1 refers to 2; 2 has the pictures 1 and 2.
    const QByteArray resources = table({QStringLiteral("1.png"), QStringLiteral("2.png"), QStringLiteral("3.png")},
                                       {TypeBuilder(DrawableType)
                                            .value(0, Reference, resourceId(DrawableType, 1))
                                            .value(1, Reference, resourceId(DrawableType, 2))
                                            .value(2, String, 0),
                                        in(DrawableType, "de").value(0, String, 2).value(2, String, 1)});
    const QVector<Member> members = {pictureMember("1.png", 1), pictureMember("2.png", 2), pictureMember("3.png", 3)};
    QCOMPARE(widths(only(wanted, resources, members)), QVector<int>({2, 1, 3}));
}

void TestLaunchers::iconReferencesThatLeadBackEnd()
{
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("icon"), resourceId(DrawableType, 0)));
    const QByteArray resources =
        table({QStringLiteral("1.png")}, {TypeBuilder(DrawableType)
                                              .value(0, Reference, resourceId(DrawableType, 1))
                                              .value(1, Reference, resourceId(DrawableType, 0)),
                                          in(DrawableType, "de").value(1, String, 0)});
    QCOMPARE(widths(only(wanted, resources, {pictureMember("1.png", 1)})), QVector<int>({1}));
}

void TestLaunchers::pictureReachedTwiceIsTakenOnce()
{
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("icon"), resourceId(DrawableType, 0)));
    const QByteArray resources = table({QStringLiteral("1.png")}, {TypeBuilder(DrawableType).value(0, String, 0),
                                                                   in(DrawableType, "de").value(0, String, 0)});
    QCOMPARE(widths(only(wanted, resources, {pictureMember("1.png", 1)})), QVector<int>({1}));
}

void TestLaunchers::pictureFormats_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char *format : {"PNG", "JPG", "WEBP", "BMP"})
        QTest::newRow(format) << QByteArray(format);
}

void TestLaunchers::pictureFormats()
{
    QFETCH(QByteArray, format);
    Launcher wanted;
    // The data decide the format, the name does not matter.
    wanted.activity.append(text("icon", QStringLiteral("res/icon")));
    const QVector<Member> members = {pictureMember("res/icon", 16, format.constData())};
    QCOMPARE(widths(only(wanted, emptyTable(), members)), QVector<int>({16}));
}

void TestLaunchers::iconsThatCannotBeHadAreDropped_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("<adaptive-icon/>");
    QTest::newRow("cut off") << picture(16, 16, 0).left(40);
}

void TestLaunchers::iconsThatCannotBeHadAreDropped()
{
    QFETCH(QByteArray, content);
    Launcher wanted;
    wanted.activity.append(androidReference(QStringLiteral("icon"), resourceId(DrawableType, 0)));
    const QByteArray resources =
        table({QStringLiteral("bad"), QStringLiteral("good.png")},
              {TypeBuilder(DrawableType).value(0, String, 0), in(DrawableType, "de").value(0, String, 1)});
    QVector<Member> members = {pictureMember("good.png", 4)};
    if (!content.isNull())
        members.append({QStringLiteral("bad"), content});
    const LogCapture log;
    QCOMPARE(widths(only(wanted, resources, members)), QVector<int>({4}));
}

void TestLaunchers::missingIconGivesNoIcons()
{
    QVERIFY(only(Launcher()).icons().isEmpty());
    Launcher wanted;
    wanted.activity.append(text("icon", reference("drawable", 3)));
    QVERIFY(only(wanted).icons().isEmpty());
}

void TestLaunchers::picturesAreDecodedOncePerCall()
{
    Launcher wanted;
    wanted.activity.append(text("icon", QStringLiteral("1.png")));
    PackageDevice device(emptyTable(), manifestWith({wanted, wanted}), {pictureMember("1.png", 1)});
    ApkFile apk(&device);
    const auto cacheKeys = [&apk] {
        QVector<qint64> keys;
        for (const ApkLauncherInfo &info : apk.getLauncherInfo(false))
            keys.append(info.icons().constFirst().cacheKey());
        return keys;
    };
    const QVector<qint64> first = cacheKeys();
    QCOMPARE(first.size(), 2);
    QCOMPARE(first.at(0), first.at(1));
    const QVector<qint64> second = cacheKeys();
    QVERIFY(first.at(0) != second.at(0));
}

QTEST_GUILESS_MAIN(TestLaunchers)
#include "tst_launchers.moc"
