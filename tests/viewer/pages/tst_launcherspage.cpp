// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/LaunchersPage.h"
#include "pages/parts/CardModel.h"

#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("launchers");

QJsonObject launcher(const QString &label, const QString &className, const char *kind, bool isShown)
{
    return {{QStringLiteral("className"), className},
            {QStringLiteral("label"), label},
            {QStringLiteral("isShown"), isShown},
            {QStringLiteral("kind"), QString::fromLatin1(kind)},
            {QStringLiteral("png"), PageFacts::png(64)}};
}

QJsonObject usualFacts()
{
    return PageFacts::listOf({launcher(QStringLiteral("Tile"), QStringLiteral("a.Tile"), "tile", true),
                              launcher(QStringLiteral("Notes"), QStringLiteral("a.Main"), "launcher", true),
                              launcher(QString(), QStringLiteral("a.Debug"), "launcher", false)});
}

QList<QStringList> rows(const CardModel &model)
{
    QList<QStringList> all;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex index = model.index(row, 0);
        all.append({index.data().toString(), index.data(CardModel::BadgeRole).toString(),
                    index.data(CardModel::NameRole).toString()});
    }
    return all;
}

} // namespace

class TestLaunchersPage : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void entries();
    void icons();
    void unknownKinds();
    void hostile();
    void wrongTypes();
};

void TestLaunchersPage::states()
{
    LaunchersPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
    page.take(topic, PageFacts::listOf({}));
    QCOMPARE(page.message(), QStringLiteral("This package has no launchers."));
}

void TestLaunchersPage::entries()
{
    LaunchersPage page;
    page.take(topic, usualFacts());
    const QString none;
    QCOMPARE(rows(page.model()), (QList<QStringList>{{QStringLiteral("Home screen"), none, none},
                                                     {QStringLiteral("Notes"), none, QStringLiteral("a.Main")},
                                                     {QStringLiteral("a.Debug"), QStringLiteral("Not shown"), none},
                                                     {QStringLiteral("Tiles of the quick settings"), none, none},
                                                     {QStringLiteral("Tile"), none, QStringLiteral("a.Tile")}}));
    QCOMPARE(page.model().index(2, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Not shown: a.Debug"));
}

void TestLaunchersPage::icons()
{
    LaunchersPage page;
    QJsonObject large = launcher(QStringLiteral("Large"), QStringLiteral("a.B"), "launcher", true);
    large.insert(QStringLiteral("png"), PageFacts::png(257));
    page.take(topic,
              PageFacts::listOf({launcher(QStringLiteral("Usual"), QStringLiteral("a.A"), "launcher", true), large}));
    const auto hasIcon = [&page](int row) {
        return !qvariant_cast<QIcon>(page.model().index(row, 0).data(Qt::DecorationRole)).isNull();
    };
    QVERIFY(hasIcon(1));
    QVERIFY(!hasIcon(2));
    QList<QJsonObject> items;
    for (int i = 0; i < 300; ++i)
        items.append(launcher(QString::number(i), QStringLiteral("a.A"), "launcher", true));
    page.take(topic, PageFacts::listOf(items));
    QVERIFY(hasIcon(256));
    QVERIFY(!hasIcon(257));
}

void TestLaunchersPage::unknownKinds()
{
    LaunchersPage page;
    page.take(topic,
              PageFacts::listOf({launcher(QStringLiteral("a"), QStringLiteral("a.B"), "from a later version", true)}));
    QCOMPARE(rows(page.model()).constFirst().constFirst(), QStringLiteral("Other entries"));
    QCOMPARE(rows(page.model()).constLast().constFirst(), QStringLiteral("a"));
}

void TestLaunchersPage::hostile()
{
    LaunchersPage page;
    page.resize(300, 300);
    page.show();
    for (const QString &text : PageFacts::hostileTexts()) {
        page.take(topic, PageFacts::listOf({launcher(text, text, "launcher", false)}));
        for (const QString &shown : PageFacts::shownTexts(page.model()))
            QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
        for (const QString &toolTip : PageFacts::toolTips(page.model()))
            QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        QVERIFY(!page.grab().isNull());
    }
}

void TestLaunchersPage::wrongTypes()
{
    LaunchersPage page;
    const int ways = PageFacts::forEachWrongType(usualFacts(), [&page](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(page.model().rowCount() <= 6);
    });
    QVERIFY(ways > 100);
}

QTEST_MAIN(TestLaunchersPage)
#include "tst_launcherspage.moc"
