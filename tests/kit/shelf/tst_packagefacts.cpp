// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/PackageFacts.h"
#include "shelf/index/ShelfTexts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace SorrelKit;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

PackageFacts factsOf(const QJsonObject &report, int code = 0)
{
    return PackageFacts::fromReport(QJsonDocument(report).toJson(QJsonDocument::Compact), code);
}

QJsonArray launchers(int count)
{
    QJsonArray array;
    for (int i = 0; i < count; ++i)
        array.append(QJsonObject{{latin("name"), QString::number(i)}});
    return array;
}

QJsonObject labels(int count, int units)
{
    QJsonObject object;
    for (int i = 0; i < count; ++i)
        object.insert(QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0')),
                      QString::number(i).rightJustified(units, QLatin1Char('x')));
    return object;
}

} // namespace

class TestPackageFacts : public QObject
{
    Q_OBJECT

private slots:
    void withoutAReport();
    void aReportThatIsNoObject();
    void iconsOfLaunchers();
    void theSigner();
    void ceilings();
    void textsInAColumn();
};

void TestPackageFacts::withoutAReport()
{
    const PackageFacts facts = PackageFacts::fromReport(QByteArray(), 101);
    QCOMPARE(facts.state, ShelfItem::State::Broken);
    QCOMPARE(facts.errorText, latin("reading took too long"));
    QCOMPARE(facts.items.size(), 1);
    QCOMPARE(facts.items.constFirst().entry, QString());
    QVERIFY(facts.report.isEmpty());
}

void TestPackageFacts::aReportThatIsNoObject()
{
    const PackageFacts facts = PackageFacts::fromReport("{\"package\":[1],\"launchers\":{\"a\":1},\"labels\":7}", 0);
    QCOMPARE(facts.packageName, QString());
    QCOMPARE(facts.items.size(), 1);
}

void TestPackageFacts::iconsOfLaunchers()
{
    QJsonObject report{{latin("launchers"), launchers(2)}};
    const auto icon = [](int launcher, const char *kind) {
        return QJsonObject{{latin("launcher"), launcher}, {latin("kind"), latin(kind)}, {latin("png"), latin("UE5H")}};
    };
    report.insert(latin("launcherIcons"), QJsonArray{icon(1, "96:1:1:0"), icon(2, "96:0:0:0"), icon(-1, "96:0:0:0")});
    const PackageFacts facts = factsOf(report);
    QCOMPARE(facts.items.at(0).icons.size(), 0);
    QCOMPARE(facts.items.at(1).icons.size(), 1);
    QCOMPARE(facts.items.at(1).icons.at(0).kind, qint64(96 + (1 << 16) + (1 << 24)));
    QCOMPARE(facts.items.at(1).icons.at(0).png, QByteArray("PNG"));
    QVERIFY(!facts.report.contains("launcherIcons"));
}

void TestPackageFacts::theSigner()
{
    const QJsonObject signer{{latin("certificate"), QJsonObject{{latin("sha256"), latin("AB:CD")}}}};
    QJsonObject signatures{{latin("verified"), true}, {latin("signers"), QJsonArray{signer}}};
    QCOMPARE(factsOf({{latin("signatures"), signatures}}).signer, latin("AB:CD"));
    QVERIFY(factsOf({{latin("signatures"), signatures}}).words.contains(latin("ab:cd\n")));
    signatures.insert(latin("verified"), false);
    QCOMPARE(factsOf({{latin("signatures"), signatures}}).signer, QString());
}

void TestPackageFacts::ceilings()
{
    QCOMPARE(factsOf({{latin("launchers"), launchers(PackageFacts::MaxItems)}}).items.size(), PackageFacts::MaxItems);
    QCOMPARE(factsOf({{latin("launchers"), launchers(PackageFacts::MaxItems + 1)}}).items.size(),
             PackageFacts::MaxItems);

    const QString longText(PackageFacts::MaxTextUnits + 1, QLatin1Char('x'));
    QCOMPARE(factsOf({{latin("package"), longText}}).packageName.size(), PackageFacts::MaxTextUnits);
    QCOMPARE(factsOf({{latin("package"), longText.mid(1)}}).packageName, longText.mid(1));

    // Each label has 1024 units with its tag.
    constexpr int units = 1024;
    constexpr int count = PackageFacts::MaxListUnits / units;
    for (const int extra : {0, 1}) {
        const PackageFacts facts = factsOf({{latin("labels"), labels(count + extra, units - 4)}});
        QCOMPARE(ShelfTexts::toLabels(facts.items.constFirst().labels).size(), count);
    }

    // Each launcher has labels of its own, of 32 Ki units with the ends of their lines.
    QJsonArray array;
    constexpr int lines = PackageFacts::MaxWordUnits / 4096;
    for (int i = 0; i <= lines; ++i) {
        const QString label = QString::number(i).rightJustified(4095, QLatin1Char('x'));
        array.append(QJsonObject{{latin("labels"), QJsonObject{{QString(), label}}}});
    }
    const PackageFacts facts = factsOf({{latin("launchers"), array}});
    QCOMPARE(facts.words.size(), PackageFacts::MaxWordUnits);

    QJsonObject large{{latin("x"), QString(PackageFacts::MaxReportBytes - 8, QLatin1Char('x'))}};
    QCOMPARE(factsOf(large).report.size(), PackageFacts::MaxReportBytes);
    large.insert(latin("x"), QString(PackageFacts::MaxReportBytes - 7, QLatin1Char('x')));
    QVERIFY(factsOf(large).report.isEmpty());
}

void TestPackageFacts::textsInAColumn()
{
    const QStringList texts{latin("a"), QString(), latin("b\x1f") + latin("c")};
    QCOMPARE(ShelfTexts::toList(ShelfTexts::fromList(texts)), QStringList({latin("a"), QString(), latin("b c")}));
    QCOMPARE(ShelfTexts::toList(QString()), QStringList());
    const QMap<QString, QString> all{{QString(), latin("x")}, {latin("de"), latin("y")}};
    QCOMPARE(ShelfTexts::toLabels(ShelfTexts::fromLabels(all)), all);
}

QTEST_GUILESS_MAIN(TestPackageFacts)
#include "tst_packagefacts.moc"
