// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/ComparisonPage.h"
#include "pages/comparison/DiffCards.h"

#include <QJsonArray>
#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("diff");

QJsonObject package(const QString &version, const QString &code, bool isVerified)
{
    QJsonArray errors;
    if (!isVerified)
        errors.append(QJsonObject{{QStringLiteral("message"), QStringLiteral("no signature")}});
    return {{QStringLiteral("package"), QStringLiteral("org.example")},
            {QStringLiteral("versionName"), version},
            {QStringLiteral("versionCode"), code},
            {QStringLiteral("minSdkVersion"), 21},
            {QStringLiteral("targetSdkVersion"), code.toInt()},
            {QStringLiteral("signer"),
             QJsonObject{{QStringLiteral("verified"), isVerified}, {QStringLiteral("errors"), errors}}}};
}

QJsonObject change(const char *kind, const QString &name, const QString &before = QString(),
                   const QString &after = QString())
{
    return {{QStringLiteral("change"), QString::fromLatin1(kind)},
            {QStringLiteral("name"), name},
            {QStringLiteral("before"), before},
            {QStringLiteral("after"), after}};
}

QJsonObject sizes(const char *key, const QString &name, double before, double after)
{
    return {{QString::fromLatin1(key), name},
            {QStringLiteral("change"), QStringLiteral("changed")},
            {QStringLiteral("category"), QStringLiteral("code")},
            {QStringLiteral("packedBefore"), before},
            {QStringLiteral("packedAfter"), after},
            {QStringLiteral("sizeBefore"), before * 2},
            {QStringLiteral("sizeAfter"), after * 2}};
}

QJsonObject component(const char *kind, const QString &name, bool isOpened)
{
    const QJsonObject closed{{QStringLiteral("exported"), false}, {QStringLiteral("enabled"), true}};
    const QJsonObject open{{QStringLiteral("exported"), isOpened}, {QStringLiteral("enabled"), true}};
    return {{QStringLiteral("change"), QString::fromLatin1(kind)},
            {QStringLiteral("kind"), QStringLiteral("service")},
            {QStringLiteral("name"), name},
            {QStringLiteral("opened"), isOpened},
            {QStringLiteral("before"), closed},
            {QStringLiteral("after"), open}};
}

QJsonObject usualFacts(const char *match = "same")
{
    return {
        {QStringLiteral("before"), package(QStringLiteral("1.0"), QStringLiteral("28"), true)},
        {QStringLiteral("after"), package(QStringLiteral("2.0"), QStringLiteral("30"), true)},
        {QStringLiteral("different"), true},
        {QStringLiteral("complete"), true},
        {QStringLiteral("sameApplication"), true},
        {QStringLiteral("signerMatch"), QString::fromLatin1(match)},
        {QStringLiteral("signers"), QJsonArray()},
        {QStringLiteral("permissions"), QJsonArray{change("added", QStringLiteral("android.permission.INTERNET")),
                                                   change("removed", QStringLiteral("android.permission.READ_SMS")),
                                                   change("added", QStringLiteral("android.permission.CAMERA"))}},
        {QStringLiteral("components"), QJsonArray{component("changed", QStringLiteral("org.example.Sync"), true)}},
        {QStringLiteral("labels"),
         QJsonArray{change("changed", QString(), QStringLiteral("Old"), QStringLiteral("New"))}},
        {QStringLiteral("sizes"), QJsonArray{sizes("category", QStringLiteral("code"), 1024, 3072)}},
        {QStringLiteral("fileSize"), sizes("name", QString(), 2048, 4096)},
        {QStringLiteral("files"),
         QJsonObject{{QStringLiteral("added"), 0},
                     {QStringLiteral("removed"), 0},
                     {QStringLiteral("changed"), 3},
                     {QStringLiteral("list"), QJsonArray{sizes("path", QStringLiteral("classes.dex"), 1024, 3072)}}}},
        {QStringLiteral("otherBytes"), false},
    };
}

QJsonObject head(const QString &label)
{
    return {{QStringLiteral("label"), label},
            {QStringLiteral("packageName"), QStringLiteral("org.example")},
            {QStringLiteral("versionName"), QStringLiteral("2.0")},
            {QStringLiteral("error"), QJsonValue::Null}};
}

// Each card as title, badge and description.
QStringList lines(const QJsonObject &diff)
{
    QStringList all;
    const DiffCards cards(diff, QIcon());
    for (const Card &card : cards.cards()) {
        QString line = QStringList{card.title, card.badge, card.description}.join(QLatin1Char('|'));
        all.append(line.remove(QChar(0x2068)).remove(QChar(0x2069)));
    }
    return all;
}

} // namespace

class TestComparisonPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void states();
    void otherHead();
    void wholeComparison();
    void signers_data();
    void signers();
    void alarms();
    void sectionsHaveACeiling();
    void incomplete();
    void hostile();
    void wrongTypes();
};

void TestComparisonPage::states()
{
    ComparisonPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
}

void TestComparisonPage::otherHead()
{
    ComparisonPage page;
    page.take(QStringLiteral("otherHead"), head(QStringLiteral("Notes")));
    QCOMPARE(page.message(), QStringLiteral("Reading..."));
    QCOMPARE(page.otherPackage(),
             QStringLiteral("Changes from this package to \u2068Notes\u2069, version \u20682.0\u2069"));
    page.clear();
    QCOMPARE(page.otherPackage(), QString());
    QJsonObject broken = head(QString());
    broken.insert(QStringLiteral("error"), QJsonObject{{QStringLiteral("code"), 1},
                                                       {QStringLiteral("message"), QStringLiteral("not an archive")}});
    page.take(QStringLiteral("otherHead"), broken);
    QCOMPARE(page.message(), QStringLiteral("The other package cannot be read: \u2068not an archive\u2069"));
}

void TestComparisonPage::wholeComparison()
{
    QCOMPARE(
        lines(usualFacts()),
        (QStringList{
            QStringLiteral("Signer||"),
            QStringLiteral("The signer is the same||"),
            QStringLiteral("Permissions||"),
            QStringLiteral("android.permission.CAMERA|Added, dangerous|"),
            QStringLiteral("android.permission.READ_SMS|Removed, dangerous|"),
            QStringLiteral("android.permission.INTERNET|Added|"),
            QStringLiteral("Application||"),
            QStringLiteral("Package||org.example"),
            QStringLiteral("Version|Changed|1.0 (28) \u2192 2.0 (30)"),
            QStringLiteral("Lowest API level that it runs on||21"),
            QStringLiteral("API level that it was made for|Changed|28 \u2192 30"),
            QStringLiteral("Components||"),
            QStringLiteral("org.example.Sync|Open to other applications|closed to other applications \u2192 open to "
                           "other applications without a permission"),
            QStringLiteral("Names of the application||"),
            QStringLiteral("All other languages|Changed|Old \u2192 New"),
            QStringLiteral("Sizes||"),
            QStringLiteral("code|+2.0 KiB|1.0 KiB \u2192 3.0 KiB, unpacked 2.0 KiB \u2192 6.0 KiB"),
            QStringLiteral("the file|+2.0 KiB|2.0 KiB \u2192 4.0 KiB, unpacked 4.0 KiB \u2192 8.0 KiB"),
            QStringLiteral("Files||"),
            QStringLiteral("classes.dex|Changed|+2.0 KiB: 1.0 KiB \u2192 3.0 KiB"),
            QStringLiteral("and 2 more||"),
        }));
}

void TestComparisonPage::signers_data()
{
    QTest::addColumn<QString>("match");
    QTest::addColumn<bool>("isOldVerified");
    QTest::addColumn<bool>("isNewVerified");
    QTest::addColumn<QString>("line");
    const QString cannotCompare =
        QStringLiteral("The signers cannot be compared: the old package is not verified|Warning|no signature");
    const QString refused = QStringLiteral("Not verified: Android refuses the new package|Warning|no signature");
    QTest::newRow("same") << QStringLiteral("same") << true << true << QStringLiteral("The signer is the same||");
    QTest::newRow("rotated") << QStringLiteral("rotated") << true << true
                             << QStringLiteral("The signer is the same, with a new key||");
    QTest::newRow("rollback") << QStringLiteral("rollback") << true << true
                              << QStringLiteral("The signer is the same, with an earlier key||");
    QTest::newRow("different") << QStringLiteral("different") << true << true
                               << QStringLiteral("Signed by someone else: Android refuses this update|Warning|");
    QTest::newRow("old") << QStringLiteral("unverified") << false << true << cannotCompare;
    QTest::newRow("new") << QStringLiteral("unverified") << true << false << refused;
    QTest::newRow("both") << QStringLiteral("unverified") << false << false << refused;
    QTest::newRow("of a later version") << QStringLiteral("?") << false << true << cannotCompare;
}

void TestComparisonPage::signers()
{
    QFETCH(const QString, match);
    QFETCH(const bool, isOldVerified);
    QFETCH(const bool, isNewVerified);
    QJsonObject diff = usualFacts();
    diff.insert(QStringLiteral("signerMatch"), match);
    diff.insert(QStringLiteral("before"), package(QStringLiteral("1"), QStringLiteral("1"), isOldVerified));
    diff.insert(QStringLiteral("after"), package(QStringLiteral("1"), QStringLiteral("1"), isNewVerified));
    diff.insert(QStringLiteral("signers"),
                QJsonArray{change("added", QStringLiteral("aa00"), QString(), QStringLiteral("CN=x"))});
    QTEST(lines(diff).at(1), "line");
    QCOMPARE(lines(diff).at(2), QStringLiteral("CN=x|Added|"));
    QCOMPARE(DiffCards(diff, QIcon()).cards().at(2).name, QStringLiteral("aa00"));
}

void TestComparisonPage::alarms()
{
    QJsonObject diff = usualFacts();
    diff.insert(QStringLiteral("after"), package(QStringLiteral("1"), QStringLiteral("9223372036854775807"), true));
    QVERIFY(!lines(diff).join(QLatin1Char(' ')).contains(QLatin1String("older")));
    diff.insert(QStringLiteral("before"), diff.value(QLatin1String("after")));
    diff.insert(QStringLiteral("after"), package(QStringLiteral("1"), QStringLiteral("9223372036854775806"), true));
    QCOMPARE(lines(diff).at(2), QStringLiteral("An older version: Android refuses this update|Warning|"));
    diff.insert(QStringLiteral("sameApplication"), false);
    QCOMPARE(lines(diff).at(2),
             QStringLiteral("Another application: Android installs it beside the other one|Warning|"));
    diff = usualFacts();
    diff.insert(QStringLiteral("different"), false);
    diff.insert(QStringLiteral("otherBytes"), true);
    QCOMPARE(lines(diff).at(2), QStringLiteral("The packages do not differ||"));
    QCOMPARE(lines(diff).constLast(),
             QStringLiteral("The same files, in another order or with other bytes between them||"));
}

void TestComparisonPage::sectionsHaveACeiling()
{
    const auto last = [](int count) {
        QJsonArray features;
        for (int i = 0; i < count; ++i)
            features.append(change("added", QString::number(i)));
        const QStringList all = lines({{QStringLiteral("features"), features}});
        return all.constLast();
    };
    QCOMPARE(last(DiffCards::MaxSectionCards), QStringLiteral("199|Added|"));
    QCOMPARE(last(DiffCards::MaxSectionCards + 1), QStringLiteral("and 1 more||"));
    // All sections together are below the ceiling of the model.
    QJsonObject diff = usualFacts();
    QJsonArray many;
    for (int i = 0; i < 10000; ++i)
        many.append(change("added", QString::number(i)));
    for (const char *key : {"signers", "facts", "permissions", "features", "components", "launchers", "labels",
                            "nativeAbis", "splits", "schemes", "sizes"})
        diff.insert(QString::fromLatin1(key), many);
    diff.insert(QStringLiteral("files"), QJsonObject{{QStringLiteral("list"), many}});
    QVERIFY(DiffCards(diff, QIcon()).cards().size() <= CardModel::MaxCards + 400);
    ComparisonPage page;
    page.take(topic, diff);
    QVERIFY(page.model().rowCount() <= CardModel::MaxCards + 1);
}

void TestComparisonPage::incomplete()
{
    ComparisonPage page;
    QJsonObject diff = usualFacts();
    diff.insert(QStringLiteral("complete"), false);
    page.take(topic, diff);
    QCOMPARE(page.notice(), QStringLiteral("Some parts were not compared, because a package exceeds a limit."));
    page.take(topic, usualFacts());
    QCOMPARE(page.notice(), QString());
}

void TestComparisonPage::hostile()
{
    ComparisonPage page;
    page.resize(300, 300);
    page.show();
    for (const QString &text : PageFacts::hostileTexts()) {
        QJsonObject diff = usualFacts("different");
        for (const char *key :
             {"signers", "facts", "permissions", "features", "launchers", "labels", "nativeAbis", "splits", "schemes"})
            diff.insert(QString::fromLatin1(key),
                        QJsonArray{change("added", text, QString(), text), change("changed", text, text, text)});
        diff.insert(QStringLiteral("components"), QJsonArray{component("changed", text, true)});
        QJsonObject side = package(text, text, false);
        side.insert(QStringLiteral("package"), text);
        diff.insert(QStringLiteral("before"), side);
        diff.insert(QStringLiteral("after"), package(text, text, false));
        QJsonObject file = sizes("path", text, 1, 2);
        file.insert(QStringLiteral("split"), text);
        diff.insert(QStringLiteral("files"), QJsonObject{{QStringLiteral("list"), QJsonArray{file}}});
        page.take(QStringLiteral("otherHead"), head(text));
        QVERIFY(PageFacts::isSafe(page.otherPackage()));
        page.take(topic, diff);
        for (const QString &shown : PageFacts::shownTexts(page.model()))
            QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
        for (const QString &toolTip : PageFacts::toolTips(page.model()))
            QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        QVERIFY(!page.grab().isNull());
    }
}

void TestComparisonPage::wrongTypes()
{
    ComparisonPage page;
    int ways = PageFacts::forEachWrongType(usualFacts(), [&page](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(page.model().rowCount() < 60);
    });
    ways += PageFacts::forEachWrongType(head(QStringLiteral("a")), [&page](const QJsonObject &content) {
        page.take(QStringLiteral("otherHead"), content);
    });
    QVERIFY(ways > 500);
}

QTEST_MAIN(TestComparisonPage)
#include "tst_comparisonpage.moc"
