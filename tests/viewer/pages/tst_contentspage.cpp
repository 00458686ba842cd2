// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/ContentsPage.h"
#include "pages/parts/ElidedLabel.h"
#include "pages/treemap/MemberModel.h"
#include "pages/treemap/TreemapView.h"

#include <QToolButton>
#include <QTreeView>
#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("contents");

QJsonObject member(const QString &name, double size)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("size"), size}, {QStringLiteral("packed"), size / 2}};
}

QJsonObject usualFacts()
{
    return PageFacts::listOf({member(QStringLiteral("res/a.png"), 3000), member(QStringLiteral("classes.dex"), 2000),
                              member(QStringLiteral("res/b.png"), 1000)});
}

struct Parts {
    explicit Parts(const ContentsPage &page)
        : treemap(page.findChild<TreemapView *>()),
          tree(page.findChild<QTreeView *>()),
          model(page.findChild<MemberModel *>()),
          up(page.findChild<QToolButton *>()),
          labels(page.findChildren<ElidedLabel *>())
    {
    }

    TreemapView *treemap;
    QTreeView *tree;
    MemberModel *model;
    QToolButton *up;
    QList<ElidedLabel *> labels;
};

} // namespace

class TestContentsPage : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void treeFollowsTheTreemap();
    void treemapFollowsTheTree();
    void shortensLists();
    void hostile();
    void wrongTypes();
    void mostMembers();
};

void TestContentsPage::states()
{
    ContentsPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
    page.take(topic, PageFacts::listOf({}));
    QCOMPARE(page.message(), QStringLiteral("This package has no members."));
}

void TestContentsPage::treeFollowsTheTreemap()
{
    QLocale::setDefault(QLocale::c());
    ContentsPage page;
    page.resize(500, 600);
    page.take(topic, usualFacts());
    page.show();
    const Parts parts(page);
    QVERIFY(!parts.up->isEnabled());
    QTest::keyClick(parts.treemap, Qt::Key_Return);
    QCOMPARE(parts.tree->currentIndex().data().toString(), QStringLiteral("a.png"));
    QVERIFY(parts.tree->isExpanded(parts.tree->currentIndex().parent()));
    QStringList texts;
    for (const ElidedLabel *const label : parts.labels)
        texts.append(label->text());
    QVERIFY(texts.contains(QStringLiteral("res")));
    QVERIFY(
        texts.contains(QStringLiteral("\u2068a.png\u2069: resources, 2.9 KiB, 1.5 KiB packed, 50.0 % of the package")));
    QTest::mouseClick(parts.up, Qt::LeftButton);
    QCOMPARE(parts.treemap->folder(), 0);
    QCOMPARE(parts.tree->currentIndex().data().toString(), QStringLiteral("res"));
}

void TestContentsPage::treemapFollowsTheTree()
{
    ContentsPage page;
    page.take(topic, usualFacts());
    const Parts parts(page);
    parts.tree->setCurrentIndex(parts.model->index(1, 0));
    QCOMPARE(parts.treemap->tree().path(parts.treemap->current()), QStringLiteral("classes.dex"));
    parts.tree->setCurrentIndex(parts.model->index(1, 2, parts.model->index(0, 0)));
    QCOMPARE(parts.treemap->tree().path(parts.treemap->current()), QStringLiteral("res/b.png"));
    QCOMPARE(parts.treemap->tree().path(parts.treemap->folder()), QStringLiteral("res"));
}

void TestContentsPage::shortensLists()
{
    QJsonObject content = usualFacts();
    content.insert(QStringLiteral("more"), 70000);
    ContentsPage page;
    page.take(topic, content);
    QCOMPARE(page.notice(), QStringLiteral("Members that are not shown: 70000"));
    page.take(topic, usualFacts());
    QCOMPARE(page.notice(), QString());
    content.insert(QStringLiteral("error"), QStringLiteral("the directory is damaged"));
    page.take(topic, content);
    QCOMPARE(page.message(), QString());
    QCOMPARE(page.notice(), QStringLiteral("the directory is damaged"));
}

void TestContentsPage::hostile()
{
    ContentsPage page;
    page.resize(400, 400);
    page.show();
    const Parts parts(page);
    for (const QString &text : PageFacts::hostileTexts()) {
        page.take(topic, PageFacts::listOf({member(text, 10), member(text + QLatin1Char('/') + text, 5),
                                            member(QStringLiteral("usual"), 1)}));
        for (const QString &shown : PageFacts::shownTexts(*parts.model))
            QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
        for (const QString &toolTip : PageFacts::toolTips(*parts.model))
            QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        QTest::keyClick(parts.treemap, Qt::Key_Return);
        for (const ElidedLabel *const label : parts.labels) {
            QVERIFY(PageFacts::isSafe(label->text()));
            QVERIFY(!label->toolTip().contains(QLatin1String("<b>")));
        }
        QVERIFY(!page.grab().isNull());
    }
}

void TestContentsPage::wrongTypes()
{
    ContentsPage page;
    page.resize(400, 400);
    page.show();
    const Parts parts(page);
    const int ways = PageFacts::forEachWrongType(usualFacts(), [&](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(parts.treemap->tree().count() <= 5);
        parts.treemap->cells();
    });
    QVERIFY(ways > 70);
}

void TestContentsPage::mostMembers()
{
    QList<QJsonObject> items;
    for (int i = 0; i < MemberTree::MaxMembers + 3; ++i)
        items.append(member(QString::number(i), i));
    ContentsPage page;
    page.resize(600, 600);
    page.show();
    page.take(topic, PageFacts::listOf(items));
    const Parts parts(page);
    QCOMPARE(parts.model->rowCount(), MemberTree::MaxMembers);
    QCOMPARE(page.notice(), QStringLiteral("Members that are not shown: 3"));
    QVERIFY(!page.grab().isNull());
}

QTEST_MAIN(TestContentsPage)
#include "tst_contentspage.moc"
