// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CatalogCard.h"
#include "CatalogPage.h"
#include "Cost.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDomDocument>
#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QtTest>

using namespace fixture;

namespace {

using Elements = QVector<QDomElement>;

const char onePixel[] =
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==";

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QString utf16(const char16_t *text)
{
    return QString::fromUtf16(text);
}

QByteArray pageOf(const QVector<QJsonObject> &packages, const QString &title = latin("Packages"))
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    CatalogPage page(&buffer, title);
    for (const QJsonObject &package : packages)
        page.add(package);
    return page.finish() ? buffer.data() : QByteArray();
}

/// A page as parsed XML. White space between two elements is ignored.
struct Parsed {
    explicit Parsed(const QByteArray &page)
    {
        QString text;
        int line = 0;
        if (!document.setContent(page, true, &text, &line))
            error = QStringLiteral("line %1: %2").arg(line).arg(text);
    }
    Elements withClass(const char *name) const
    {
        return all([&](const QDomElement &element) {
            return element.attribute(latin("class")).split(QLatin1Char(' ')).contains(latin(name));
        });
    }
    Elements named(const char *name) const
    {
        return all([&](const QDomElement &element) { return element.tagName() == latin(name); });
    }
    /// Texts of the elements of a class.
    QStringList texts(const char *name) const
    {
        QStringList texts;
        for (const QDomElement &element : withClass(name))
            texts.append(element.text());
        return texts;
    }
    /// Names of elements and of their attributes, in the order of the page, without texts.
    QStringList skeleton() const
    {
        QStringList names;
        for (const QDomElement &element : all([](const QDomElement &) { return true; })) {
            QStringList attributes;
            for (int i = 0; i < element.attributes().length(); ++i)
                attributes.append(element.attributes().item(i).nodeName());
            attributes.sort();
            names.append(element.tagName() + QLatin1Char(' ') + attributes.join(QLatin1Char(' ')));
        }
        return names;
    }
    Elements all(const std::function<bool(const QDomElement &)> &isWanted) const
    {
        Elements found;
        Elements open{document.documentElement()};
        while (!open.isEmpty()) {
            const QDomElement element = open.takeLast();
            if (isWanted(element))
                found.append(element);
            for (QDomElement child = element.lastChildElement(); !child.isNull();
                 child = child.previousSiblingElement())
                open.append(child);
        }
        return found;
    }

    QDomDocument document;
    QString error;
};

QJsonObject launcher(const QJsonObject &labels, const QString &name = latin("org.x.Main"))
{
    return {{latin("package"), latin("org.x")},
            {latin("name"), name},
            {latin("class"), latin("org.x.Class")},
            {latin("labels"), labels},
            {latin("icons"), QJsonArray()}};
}

QJsonObject finding(const QString &severity, const QString &text = latin("text"))
{
    return {{latin("check"), latin("a-check")}, {latin("severity"), severity}, {latin("text"), text}};
}

QJsonObject package(const QJsonArray &launchers = {})
{
    return {{latin("file"), latin("/packages/x.apk")},
            {latin("error"), QJsonObject{{latin("code"), 0}, {latin("text"), latin("no error")}}},
            {latin("package"), latin("org.x")},
            {latin("versionCode"), latin("12")},
            {latin("versionName"), latin("1.2")},
            {latin("minSdkVersion"), 21},
            {latin("targetSdkVersion"), 33},
            {latin("splits"), QJsonArray()},
            {latin("launchers"), launchers}};
}

// A package with @p text in every text field.
QJsonObject packageOf(const QString &text)
{
    QJsonObject json = package({launcher({{QString(), text}, {latin("de"), text}, {text, text}}, text)});
    json.insert(latin("file"), QString(text + latin("/x/") + text));
    json.insert(latin("error"), QJsonObject{{latin("code"), 3}, {latin("text"), text}});
    json.insert(latin("package"), QString(latin("org.") + text));
    json.insert(latin("versionCode"), text);
    json.insert(latin("versionName"), text);
    json.insert(latin("splits"), QJsonArray{text});
    json.insert(latin("icon"), text);
    json.insert(latin("lint"),
                QJsonArray{QJsonObject{{latin("check"), text}, {latin("severity"), text}, {latin("text"), text}}});
    json.insert(latin("signatures"), QJsonObject{{latin("signers"), QJsonArray{text}},
                                                 {latin("errors"), QJsonArray{QJsonObject{{latin("message"), text}}}}});
    return json;
}

/// Accepts @p room bytes, then no more.
class FullDevice : public QIODevice
{
public:
    explicit FullDevice(qint64 room) : m_room(room) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }
    int refusals() const { return m_refusals; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override
    {
        const qint64 taken = qMin(size, m_room);
        m_room -= taken;
        m_refusals += taken < size ? 1 : 0;
        return taken == 0 && size > 0 ? -1 : taken;
    }

private:
    qint64 m_room;
    int m_refusals = 0;
};

} // namespace

class TestCatalogPage : public QObject
{
    Q_OBJECT

private slots:
    void pageOfNoPackages();
    void cardTellsWhatThePackageIs();
    void hostileTextsStayTexts_data();
    void hostileTextsStayTexts();
    void hostileTitle();
    void charactersThatAreNotShown_data();
    void charactersThatAreNotShown();
    void longLabelsAreCut();
    void labelsOfLanguages();
    void labelsOfAPackageWithoutLaunchers();
    void titleOfACard_data();
    void titleOfACard();
    void keysMayBeMissing();
    void valuesOfAnotherType_data();
    void valuesOfAnotherType();
    void pictures_data();
    void pictures();
    void versionsOfAndroid_data();
    void versionsOfAndroid();
    void signers();
    void findingsBySeverity();
    void rankGrowsWithFindings();
    void packageThatCouldNotBeRead();
    void policyAllowsTheStyleAndTheScriptAlone();
    void xmllintFindsNoFault();
    void samePackagesGiveTheSameBytes();
    void cardsAreWrittenAsTheyAreAdded();
    void memoryDoesNotGrow();
    void deviceThatIsFull_data();
    void deviceThatIsFull();
    void fileOnAFullDisk();
};

void TestCatalogPage::pageOfNoPackages()
{
    const Parsed page(pageOf({}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.withClass("card").size(), 0);
    QCOMPARE(page.named("footer").first().text().trimmed(), latin("There is no package here."));
    QCOMPARE(page.named("title").first().text(), latin("Packages"));
}

void TestCatalogPage::cardTellsWhatThePackageIs()
{
    QJsonObject json = package({launcher({{QString(), latin("Notes")}}), launcher({}, latin("org.x.Class"))});
    json.insert(latin("splits"), QJsonArray{latin("config.de"), latin("config.xhdpi")});
    json.insert(latin("lint"), QJsonArray());
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.withClass("card").size(), 1);
    QCOMPARE(page.named("h2").first().text(), latin("Notes"));
    QCOMPARE(page.texts("package"), QStringList(latin("org.x")));
    QCOMPARE(page.texts("facts"), QStringList(latin("Version1.2 (12)Runs fromAndroid 5.0 (21)Splits2")));
    QCOMPARE(page.texts("file"), QStringList(latin("/packages/x.apk")));
    QCOMPARE(page.withClass("file").first().attribute(latin("title")), latin("/packages/x.apk"));
    QCOMPARE(page.named("summary").first().text(), latin("2 launchers"));
    QCOMPARE(page.texts("label"), QStringList({latin("Notes"), latin("org.x.Class")}));
    QCOMPARE(page.texts("name"), QStringList({latin("org.x.Main"), latin("org.x.Class")}));
    // The class is shown when it differs from the name.
    QCOMPARE(page.texts("runs"), QStringList(latin("runs org.x.Class")));
    QCOMPARE(page.texts("none"), QStringList(latin("No findings")));
    QCOMPARE(page.texts("problem"), QStringList());
    const QDomElement card = page.withClass("card").first();
    QCOMPARE(card.attribute(latin("data-sdk")), latin("21"));
    QCOMPARE(card.attribute(latin("aria-labelledby")), page.named("h2").first().attribute(latin("id")));
    QCOMPARE(page.named("footer").first().text().trimmed(), latin("1 package"));
}

void TestCatalogPage::hostileTextsStayTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const QString &text, const QString &shown = QString()) {
        QTest::newRow(name) << text << (shown.isNull() ? text : shown);
    };
    row("script", latin("<script>alert(1)</script>"));
    row("end of an attribute", latin("\"><img src=x onerror=alert(1)>"));
    row("end of a quoted attribute", latin("' onmouseover='alert(1)"));
    row("end of the script", latin("</script><script>alert(1)</script>"));
    row("end of style, title and list", latin("</style></title></ul></svg>"));
    row("end of a comment", latin("--><script>alert(1)</script><!--"));
    row("end of a section", latin("]]><script>alert(1)</script><![CDATA["));
    row("references", latin("&lt;b&gt; &#60; &amp; &nosuch; &"));
    row("placeholders", latin("{{script}} {{cards}} {{title}} }} {{"));
    row("place markers", latin("%1 %2 %%"));
    row("URL", latin("javascript:alert(1)"));
    row("backquotes", latin("`${alert(1)}`"));
    row("equals signs", latin("=de=x="));
    row("line feed", utf16(u"a\nde=b\r\nc"));
    row("escape", utf16(u"a\u001b[31mb"), utf16(u"a\ufffd[31mb"));
    row("NUL", QString::fromLatin1("a\0b", 3), utf16(u"a\ufffdb"));
    row("delete and C1", utf16(u"a\u007f\u0085\u009bb"));
    row("turned text", utf16(u"a\u202egpj\u202c\u2066b\u2069"), utf16(u"a\ufffdgpj\ufffd\ufffdb\ufffd"));
    row("separators", utf16(u"a\u2028b\u2029c"));
    row("half of a pair", QString(QLatin1Char('a')) + QChar(0xd83d) + QLatin1Char('b'), utf16(u"a\ufffdb"));
    row("other half", QString(QLatin1Char('a')) + QChar(0xdc00) + QLatin1Char('b'), utf16(u"a\ufffdb"));
    row("half at the end", QString(QLatin1Char('a')) + QChar(0xd83d), utf16(u"a\ufffd"));
    row("no characters", utf16(u"a\ufffe\uffff\ufdd0b"), utf16(u"a\ufffd\ufffd\ufffdb"));
    row("beyond the first plane", utf16(u"\U0001f5fc \U00020000"));
    row("long", QString(10000, QLatin1Char('W')));
    row("long and of markup", latin("<b>").repeated(3000));
}

void TestCatalogPage::hostileTextsStayTexts()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    const QByteArray bytes = pageOf({packageOf(text)});
    const Parsed page(bytes);
    QCOMPARE(page.error, QString());
    QCOMPARE(page.skeleton(), Parsed(pageOf({packageOf(latin("harmless"))})).skeleton());
    QCOMPARE(QString::fromUtf8(bytes).toUtf8(), bytes);
    for (const QChar character : QString::fromUtf8(bytes)) {
        const bool isSteering = character.category() == QChar::Other_Control && character != QLatin1Char('\n');
        QVERIFY(!isSteering && character != QChar(0x202e) && character != QChar(0x2066));
    }
    if (text.contains(QLatin1Char('\n')) || text.contains(QChar(0x2028)) || text.contains(QChar(0x0085))
        || text.size() > CatalogCard::MaxLabelLength)
        return;
    for (const QString &label : page.texts("label") + QStringList(page.named("h2").first().text()))
        QCOMPARE(label, shown);
    QCOMPARE(page.texts("file"), QStringList(shown + latin("/x/") + shown));
    QCOMPARE(page.texts("package"), QStringList(latin("org.") + shown));
    QCOMPARE(page.texts("problem"), QStringList(latin("Not read:") + shown));
    QCOMPARE(page.texts("findings"), QStringList(latin("1 notenote") + shown + shown));
    QCOMPARE(page.withClass("label").first().attribute(latin("data-labels")), QStringLiteral("=%1\nde=%1").arg(shown));
}

void TestCatalogPage::hostileTitle()
{
    const QString title = latin("{{script}}</title><script>alert(1)</script>{{cards}}");
    const Parsed page(pageOf({package()}, title));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.named("title").first().text(), title);
    QCOMPARE(page.named("h1").first().text(), title);
    QCOMPARE(page.skeleton(), Parsed(pageOf({package()})).skeleton());
}

void TestCatalogPage::charactersThatAreNotShown_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("shown");
    QTest::newRow("line feed") << utf16(u"a\nb.apk") << utf16(u"a\ufffdb.apk");
    QTest::newRow("carriage return") << utf16(u"a\rb.apk") << utf16(u"a\ufffdb.apk");
    QTest::newRow("tab") << utf16(u"a\tb.apk") << utf16(u"a\ufffdb.apk");
    QTest::newRow("C1") << utf16(u"a\u0085\u009bb.apk") << utf16(u"a\ufffd\ufffdb.apk");
    QTest::newRow("separators") << utf16(u"a\u2028\u2029b.apk") << utf16(u"a\ufffd\ufffdb.apk");
    QTest::newRow("spaces stay") << utf16(u"a  b .apk") << utf16(u"a  b .apk");
    QTest::newRow("marks of direction stay") << utf16(u"\u200ea\u200f.apk") << utf16(u"\u200ea\u200f.apk");
}

void TestCatalogPage::charactersThatAreNotShown()
{
    QFETCH(QString, file);
    QFETCH(QString, shown);
    QJsonObject json = package();
    json.insert(latin("file"), file);
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.withClass("file").first().attribute(latin("title")), shown);
    QCOMPARE(page.texts("file"), QStringList(shown));
}

void TestCatalogPage::longLabelsAreCut()
{
    const int most = CatalogCard::MaxLabelLength;
    const QString ellipsis = QString(QChar(0x2026));
    const QString fits(most, QLatin1Char('a'));
    const QString tower = utf16(u"\U0001f5fc");
    const auto label = [](const QString &text) {
        return Parsed(pageOf({package({launcher({{QString(), text}})})})).texts("label");
    };
    QCOMPARE(label(fits), QStringList(fits));
    QCOMPARE(label(fits + QLatin1Char('b')), QStringList(fits + ellipsis));
    QCOMPARE(label(fits.left(most - 1) + tower), QStringList(fits.left(most - 1) + ellipsis));
    QCOMPARE(label(fits.left(most - 2) + tower), QStringList(fits.left(most - 2) + tower));
    QCOMPARE(label(QString(10000, QLatin1Char('a'))), QStringList(fits + ellipsis));
}

void TestCatalogPage::labelsOfLanguages()
{
    const QJsonObject labels{{QString(), utf16(u" Notes\n of today ")},
                             {latin("de-AT"), latin("Notizen")},
                             {latin("sr-Latn"), QStringLiteral("Beleške")},
                             {latin("fr"), latin("  ")},
                             {latin("d"), latin("no tag")},
                             {latin("de_AT"), latin("no tag")},
                             {latin("de-"), latin("no tag")},
                             {latin("de="), latin("no tag")},
                             {latin("constructor"), latin("no tag")},
                             {latin("de-AT\n"), latin("no tag")}};
    const Parsed page(pageOf({package({launcher(labels)})}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.withClass("label").first().attribute(latin("data-labels")),
             QStringLiteral("=Notes of today\nde-AT=Notizen\nsr-Latn=Beleške"));
    QCOMPARE(page.texts("label"), QStringList(latin("Notes of today")));
}

void TestCatalogPage::labelsOfAPackageWithoutLaunchers()
{
    QJsonObject json = package();
    json.insert(latin("labels"), QJsonObject{{QString(), latin("<b>")}, {latin("de"), latin("Galerie")}});
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.named("h2").first().firstChildElement().attribute(latin("data-labels")), latin("=<b>\nde=Galerie"));
    json.insert(latin("launchers"), QJsonArray{launcher({})});
    QVERIFY(!Parsed(pageOf({json})).named("h2").first().firstChildElement().hasAttribute(latin("data-labels")));
}

void TestCatalogPage::titleOfACard_data()
{
    QTest::addColumn<QJsonObject>("json");
    QTest::addColumn<QString>("title");
    QTest::newRow("label of the first launcher")
        << package({launcher({{QString(), latin("Notes")}}), launcher({{QString(), latin("Lists")}})}) << "Notes";
    QTest::newRow("no label for every language")
        << package({launcher({{latin("de"), latin("Notizen")}})}) << "org.x.Main";
    QTest::newRow("no launcher") << package() << "org.x";
    QJsonObject labelled = package();
    labelled.insert(latin("labels"), QJsonObject{{QString(), latin("Gallery")}, {latin("de"), latin("Galerie")}});
    QTest::newRow("label of the application") << labelled << "Gallery";
    labelled.insert(latin("labels"), QJsonObject{{latin("de"), latin("Galerie")}});
    QTest::newRow("label of the application in one language") << labelled << "org.x";
    QTest::newRow("file alone") << QJsonObject{{latin("file"), latin("/packages/<x>.apk")}} << "<x>.apk";
    QTest::newRow("nothing") << QJsonObject() << "Unnamed";
}

void TestCatalogPage::titleOfACard()
{
    QFETCH(QJsonObject, json);
    QFETCH(QString, title);
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.named("h2").first().text(), title);
}

void TestCatalogPage::keysMayBeMissing()
{
    QJsonObject whole = packageOf(latin("text"));
    for (const QString &key : whole.keys()) {
        QJsonObject json = whole;
        json.remove(key);
        const Parsed page(pageOf({json}));
        QCOMPARE(page.error, QString());
        QCOMPARE(page.withClass("card").size(), 1);
    }
    const Parsed page(pageOf({QJsonObject()}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.withClass("card").size(), 1);
    QCOMPARE(page.withClass("facts").size(), 0);
    QCOMPARE(page.withClass("file").size(), 0);
}

void TestCatalogPage::valuesOfAnotherType_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("null") << QJsonValue();
    QTest::newRow("boolean") << QJsonValue(true);
    QTest::newRow("number") << QJsonValue(-1e300);
    QTest::newRow("text") << QJsonValue(latin("<b>"));
    QTest::newRow("array") << QJsonValue(QJsonArray{1, latin("<b>"), QJsonArray(), QJsonObject(), QJsonValue()});
    QTest::newRow("object") << QJsonValue(
        QJsonObject{{latin("<b>"), latin("<b>")}, {latin("code"), latin("<b>")}, {latin("labels"), 1}});
    QTest::newRow("objects that hold other types") << QJsonValue(QJsonArray{
        QJsonObject{{latin("labels"), QJsonArray{1}}, {latin("name"), 1}, {latin("class"), QJsonObject()}},
        QJsonObject{{latin("labels"), QJsonObject{{latin("de"), 1}}}, {latin("severity"), 1}, {latin("text"), 1}}});
}

void TestCatalogPage::valuesOfAnotherType()
{
    QFETCH(QJsonValue, value);
    QJsonObject whole = packageOf(latin("text"));
    for (const QString &key : whole.keys()) {
        QJsonObject json = whole;
        json.insert(key, value);
        const Parsed page(pageOf({json}));
        QVERIFY2(page.error.isEmpty(), qPrintable(key + latin(": ") + page.error));
        QCOMPARE(page.withClass("card").size(), 1);
        QCOMPARE(page.named("b").size(), 0);
    }
}

void TestCatalogPage::pictures_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("PNG") << latin(onePixel) << true;
    QTest::newRow("none") << QString() << false;
    QTest::newRow("JPEG") << latin("/9j/4AAQSkZJRgABAQ==") << false;
    QTest::newRow("end of the attribute") << latin("iVBORw0KGgo\" onerror=\"alert(1)") << false;
    QTest::newRow("with spaces") << latin("iVBORw0KGgo AAAA") << false;
    QTest::newRow("letters that are not base64's") << utf16(u"iVBORw0KGgo\u00e4\u0661") << false;
    QTest::newRow("of another address") << latin("https://example.org/x.png") << false;
    QTest::newRow("SVG") << latin("PHN2Zy8+") << false;
}

void TestCatalogPage::pictures()
{
    QFETCH(QString, icon);
    QFETCH(bool, isShown);
    QJsonObject json = package();
    json.insert(latin("icon"), icon);
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    const Elements icons = page.withClass("icon");
    QCOMPARE(icons.size(), 1);
    QCOMPARE(icons.first().tagName(), isShown ? latin("img") : latin("svg"));
    if (isShown)
        QCOMPARE(icons.first().attribute(latin("src")), latin("data:image/png;base64,") + icon);
    QCOMPARE(page.named("img").size(), isShown ? 1 : 0);
}

void TestCatalogPage::versionsOfAndroid_data()
{
    QTest::addColumn<QJsonValue>("level");
    QTest::addColumn<QString>("text");
    QTest::newRow("first") << QJsonValue(1) << "Android 1.0 (1)";
    QTest::newRow("4.4") << QJsonValue(19) << "Android 4.4 (19)";
    QTest::newRow("watches") << QJsonValue(20) << "Android 4.4W (20)";
    QTest::newRow("5.0") << QJsonValue(21) << "Android 5.0 (21)";
    QTest::newRow("8.1") << QJsonValue(27) << "Android 8.1 (27)";
    QTest::newRow("9") << QJsonValue(28) << "Android 9 (28)";
    QTest::newRow("12L") << QJsonValue(32) << "Android 12L (32)";
    QTest::newRow("16") << QJsonValue(36) << "Android 16 (36)";
    QTest::newRow("to come") << QJsonValue(99) << "SDK 99";
    QTest::newRow("preview") << QJsonValue(10000) << "a preview of Android";
    QTest::newRow("none") << QJsonValue(0) << "";
    QTest::newRow("negative") << QJsonValue(-5) << "";
    QTest::newRow("no integer") << QJsonValue(1e100) << "";
    QTest::newRow("no number") << QJsonValue(latin("21")) << "";
}

void TestCatalogPage::versionsOfAndroid()
{
    QFETCH(QJsonValue, level);
    QFETCH(QString, text);
    QJsonObject json = package();
    json.insert(latin("minSdkVersion"), level);
    const QString runsFrom = text.isEmpty() ? QString() : latin("Runs from") + text;
    QCOMPARE(Parsed(pageOf({json})).texts("facts"), QStringList(latin("Version1.2 (12)") + runsFrom));
}

void TestCatalogPage::signers()
{
    const auto signedBy = [](const char *scheme, const char *subject) {
        return QJsonObject{{latin("scheme"), latin(scheme)},
                           {latin("certificate"), QJsonObject{{latin("subject"), latin(subject)}}}};
    };
    QJsonObject verified = package();
    verified.insert(latin("signatures"),
                    QJsonObject{{latin("verified"), true},
                                {latin("signers"), QJsonArray{signedBy("v2", "CN=Jane"), signedBy("v2", "CN=<b>"),
                                                              signedBy("v1", "CN=Old")}}});
    QJsonObject changed = package();
    changed.insert(latin("signatures"),
                   QJsonObject{{latin("verified"), false},
                               {latin("signers"), QJsonArray{signedBy("v1", "CN=Jane")}},
                               {latin("errors"), QJsonArray{QJsonObject{{latin("message"), latin("a\nreason")}}}}});
    const Parsed page(pageOf({verified, changed, package()}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.texts("signer"), QStringList({latin("CN=Jane; CN=<b>"), latin("Not verified:a reason")}));
    QCOMPARE(page.texts("unverified"), QStringList(latin("Not verified:a reason")));
}

void TestCatalogPage::findingsBySeverity()
{
    QJsonObject json = package();
    json.insert(latin("lint"), QJsonArray{finding(latin("note"), latin("small")), finding(latin("warning")),
                                          finding(latin("error"), latin("great")), finding(latin("warning")),
                                          finding(latin("<b>"), latin("of no known severity"))});
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    const QDomElement findings = page.withClass("findings").first();
    QCOMPARE(findings.attribute(latin("class")), latin("findings error"));
    QCOMPARE(findings.firstChildElement().text(), latin("1 error, 2 warnings, 2 notes"));
    QStringList texts;
    for (QDomElement item = findings.lastChildElement().firstChildElement(); !item.isNull();
         item = item.nextSiblingElement())
        texts.append(item.text());
    QCOMPARE(texts, QStringList({latin("errorgreata-check"), latin("warningtexta-check"), latin("warningtexta-check"),
                                 latin("notesmalla-check"), latin("noteof no known severitya-check")}));
    QCOMPARE(Parsed(pageOf({package()})).withClass("findings").size(), 0);
}

void TestCatalogPage::rankGrowsWithFindings()
{
    const auto rank = [](const QStringList &severities, int errorCode = 0) {
        QJsonObject json = package();
        QJsonArray lint;
        for (const QString &severity : severities)
            lint.append(finding(severity));
        json.insert(latin("lint"), lint);
        json.insert(latin("error"), QJsonObject{{latin("code"), errorCode}});
        return Parsed(pageOf({json})).withClass("card").first().attribute(latin("data-rank")).toLongLong();
    };
    const QString note = latin("note");
    const QString warning = latin("warning");
    const QString error = latin("error");
    QCOMPARE(rank({}), 0);
    QVERIFY(rank({note}) > 0);
    QVERIFY(rank({note, note}) > rank({note}));
    QVERIFY(rank({warning}) > rank({note, note, note}));
    QVERIFY(rank({warning, note}) > rank({warning}));
    QVERIFY(rank({error}) > rank({warning, warning, note}));
    QCOMPARE(rank({}, 1), rank({error}));
    QStringList notes;
    for (int i = 0; i < 1200; ++i)
        notes.append(note);
    QVERIFY(rank({warning}) > rank(notes));
}

void TestCatalogPage::packageThatCouldNotBeRead()
{
    const QJsonObject json{
        {latin("file"), latin("/packages/broken.apk")},
        {latin("error"), QJsonObject{{latin("code"), 1}, {latin("text"), latin("could not open APK file")}}},
        {latin("package"), QString()},
        {latin("versionCode"), latin("0")},
        {latin("minSdkVersion"), 1},
        {latin("launchers"), QJsonArray()},
    };
    const Parsed page(pageOf({json}));
    QCOMPARE(page.error, QString());
    QCOMPARE(page.named("h2").first().text(), latin("broken.apk"));
    QCOMPARE(page.texts("problem"), QStringList(latin("Not read:could not open APK file")));
    QCOMPARE(page.withClass("facts").size(), 0);
    QCOMPARE(page.withClass("folds").size(), 0);
}

void TestCatalogPage::policyAllowsTheStyleAndTheScriptAlone()
{
    const Parsed page(pageOf({packageOf(latin("text"))}));
    QString policy;
    for (const QDomElement &meta : page.named("meta")) {
        if (meta.attribute(latin("http-equiv")) == latin("Content-Security-Policy"))
            policy = meta.attribute(latin("content"));
    }
    // HTML treats the CDATA marks as part of the content, so the hash includes their bytes.
    const QByteArray bytes = pageOf({packageOf(latin("text"))});
    const auto hashed = [&](const QByteArray &start, const QByteArray &end) {
        const int from = int(bytes.indexOf(start)) + int(start.size());
        const QByteArray content = bytes.mid(from, bytes.indexOf(end, from) - from);
        return "'sha256-" + QCryptographicHash::hash(content, QCryptographicHash::Sha256).toBase64() + "'";
    };
    QCOMPARE(policy.toUtf8(), "default-src 'none'; img-src data:; style-src " + hashed("<style>", "</style>")
                                  + "; script-src " + hashed("<script>", "</script>")
                                  + "; base-uri 'none'; form-action 'none'");
    QCOMPARE(bytes.count("<style"), 1);
    QCOMPARE(bytes.count("</style"), 1);
    QCOMPARE(bytes.count("<script"), 1);
    QCOMPARE(bytes.count("</script"), 1);
    QCOMPARE(bytes.count("]]>"), 2);
    QVERIFY(page.named("script").first().text().contains(latin("\"use strict\"")));
    QVERIFY(page.named("style").first().text().contains(latin(".card {")));
    for (const QDomElement &element : page.all([](const QDomElement &) { return true; })) {
        for (int i = 0; i < element.attributes().length(); ++i) {
            const QString name = element.attributes().item(i).nodeName();
            QVERIFY2(!name.startsWith(latin("on")) && name != latin("style"), qPrintable(name));
        }
    }
}

void TestCatalogPage::xmllintFindsNoFault()
{
    QJsonObject json = packageOf(latin("<&\"'>]]>--"));
    json.insert(latin("icon"), latin(onePixel));
    QProcess xmllint;
    xmllint.start(latin("xmllint"), {latin("--noout"), latin("--nonet"), latin("-")});
    QVERIFY2(xmllint.waitForStarted(), "xmllint is missing");
    xmllint.write(pageOf({json, QJsonObject(), package({launcher({})})}));
    xmllint.closeWriteChannel();
    QVERIFY(xmllint.waitForFinished());
    QCOMPARE(xmllint.readAllStandardError(), QByteArray());
    QCOMPARE(xmllint.exitCode(), 0);
}

void TestCatalogPage::samePackagesGiveTheSameBytes()
{
    const QVector<QJsonObject> packages{packageOf(latin("a")), package({launcher({{QString(), latin("b")}})})};
    const QByteArray first = pageOf(packages);
    QVERIFY(!first.isEmpty());
    QCOMPARE(pageOf(packages), first);
}

void TestCatalogPage::cardsAreWrittenAsTheyAreAdded()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    CatalogPage page(&buffer, latin("Packages"));
    QVERIFY(buffer.data().contains("<ul id=\"packages\""));
    QVERIFY(!buffer.data().contains("<script>"));
    for (int i = 0; i < 3; ++i) {
        page.add(package());
        QCOMPARE(buffer.data().count("<li class=\"card\""), i + 1);
        QVERIFY(buffer.data().endsWith("</li>\n"));
    }
    QVERIFY(page.finish());
    QVERIFY(buffer.data().endsWith("</html>\n"));
}

void TestCatalogPage::memoryDoesNotGrow()
{
    const auto writePage = [](int count) {
        QFile nowhere(latin("/dev/null"));
        if (!nowhere.open(QIODevice::WriteOnly))
            abort();
        CatalogPage page(&nowhere, latin("Packages"));
        QJsonObject labels;
        for (char letter = 'a'; letter <= 'z'; ++letter)
            labels.insert(QStringLiteral("d%1").arg(QLatin1Char(letter)), QString(100, QLatin1Char(letter)));
        const QJsonObject json = package({launcher(labels), launcher(labels)});
        for (int i = 0; i < count; ++i)
            page.add(json);
        if (!page.finish())
            abort();
    };
    // A page of one card costs the loaded code, most of it Qt's.
    const Cost one = cost([&] { writePage(1); });
    const Cost many = cost([&] { writePage(2000); });
    QVERIFY(one.ended && many.ended);
    // The output is hundreds of times as large.
    const qint64 rise = many.memory - one.memory;
    QVERIFY2(rise < (1 << 14), qPrintable(QString::number(rise)));
}

void TestCatalogPage::deviceThatIsFull_data()
{
    QTest::addColumn<qint64>("room");
    const qint64 size = pageOf({package()}).size();
    QTest::newRow("at once") << qint64(0);
    QTest::newRow("in the head") << qint64(1000);
    QTest::newRow("before the last byte") << size - 1;
}

void TestCatalogPage::deviceThatIsFull()
{
    QFETCH(qint64, room);
    FullDevice device(room);
    CatalogPage page(&device, latin("Packages"));
    page.add(package());
    QVERIFY(!page.finish());
    QCOMPARE(device.refusals(), 1);

    FullDevice large(pageOf({package()}).size());
    CatalogPage whole(&large, latin("Packages"));
    whole.add(package());
    QVERIFY(whole.finish());
}

void TestCatalogPage::fileOnAFullDisk()
{
    QFile full(latin("/dev/full"));
    QVERIFY(full.open(QIODevice::WriteOnly));
    CatalogPage page(&full, latin("Packages"));
    page.add(package());
    QVERIFY(!page.finish());
}

QTEST_GUILESS_MAIN(TestCatalogPage)
#include "tst_catalogpage.moc"
