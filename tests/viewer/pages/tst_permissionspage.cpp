// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/Pages.h"
#include "pages/PermissionsPage.h"
#include "pages/parts/CardModel.h"
#include "pages/parts/CardView.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("permissions");

QJsonObject permission(const QString &name, const QString &label, bool isDangerous)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("label"), label},
            {QStringLiteral("description"), QStringLiteral("about ") + label},
            {QStringLiteral("isDangerous"), isDangerous},
            {QStringLiteral("group"), QString()}};
}

QJsonObject usualFacts()
{
    return PageFacts::listOf(
        {permission(QStringLiteral("android.permission.INTERNET"), QStringLiteral("use the network"), false),
         permission(QStringLiteral("android.permission.CAMERA"), QStringLiteral("take pictures"), true),
         permission(QStringLiteral("com.example.OWN"), QString(), false)});
}

QStringList titles(const PermissionsPage &page)
{
    QStringList texts;
    for (int row = 0; row < page.model().rowCount(); ++row)
        texts.append(page.model().index(row, 0).data().toString());
    return texts;
}

} // namespace

class TestPermissionsPage : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void dangerousFirst();
    void wordsBesideTheIcon();
    void noPermissions();
    void hostile();
    void wrongTypes();
    void manyPermissions();
    void keyboardBeginsAtTheFirstPermission();
    void copiesTheName();
    void belongsToThePages();
};

void TestPermissionsPage::states()
{
    PermissionsPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
}

void TestPermissionsPage::dangerousFirst()
{
    PermissionsPage page;
    page.take(topic, usualFacts());
    QCOMPARE(titles(page), (QStringList{QStringLiteral("May ask for"), QStringLiteral("take pictures"),
                                        QStringLiteral("Gets without asking"), QStringLiteral("use the network"),
                                        QStringLiteral("com.example.OWN")}));
    page.take(topic, PageFacts::listOf({permission(QStringLiteral("a.B"), QStringLiteral("other"), false)}));
    QCOMPARE(titles(page), (QStringList{QStringLiteral("Gets without asking"), QStringLiteral("other")}));
}

void TestPermissionsPage::wordsBesideTheIcon()
{
    PermissionsPage page;
    page.take(topic, usualFacts());
    const QModelIndex camera = page.model().index(1, 0);
    QCOMPARE(camera.data(CardModel::BadgeRole).toString(), QStringLiteral("Dangerous"));
    QVERIFY(!qvariant_cast<QIcon>(camera.data(Qt::DecorationRole)).isNull());
    QCOMPARE(camera.data(Qt::AccessibleTextRole).toString(), QStringLiteral("Dangerous: take pictures"));
    QCOMPARE(camera.data(Qt::AccessibleDescriptionRole).toString(),
             QStringLiteral("about take pictures; android.permission.CAMERA"));
    const QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(page.findChild<CardView *>());
    QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Permissions"));
    QCOMPARE(list->child(1)->text(QAccessible::Name), QStringLiteral("Dangerous: take pictures"));
    const QModelIndex network = page.model().index(3, 0);
    QCOMPARE(network.data(CardModel::BadgeRole).toString(), QString());
    QVERIFY(qvariant_cast<QIcon>(network.data(Qt::DecorationRole)).isNull());
}

void TestPermissionsPage::noPermissions()
{
    PermissionsPage page;
    page.take(topic, PageFacts::listOf({}));
    QCOMPARE(page.message(), QStringLiteral("This package asks for no permissions."));
    page.take(topic, usualFacts());
    QCOMPARE(page.message(), QString());
}

void TestPermissionsPage::hostile()
{
    PermissionsPage page;
    page.resize(300, 300);
    page.show();
    for (const QString &text : PageFacts::hostileTexts()) {
        page.take(topic, PageFacts::listOf({permission(text, text, true), permission(text, QString(), false)}));
        for (const QString &shown : PageFacts::shownTexts(page.model()))
            QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
        for (const QString &toolTip : PageFacts::toolTips(page.model()))
            QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        QCOMPARE(page.grab().isNull(), false);
    }
}

void TestPermissionsPage::wrongTypes()
{
    PermissionsPage page;
    const int ways = PageFacts::forEachWrongType(usualFacts(), [&page](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(page.model().rowCount() <= 5);
    });
    QVERIFY(ways > 100);
    page.take(topic, usualFacts());
    QCOMPARE(page.model().rowCount(), 5);
}

void TestPermissionsPage::manyPermissions()
{
    QList<QJsonObject> items;
    for (int i = 0; i < CardModel::MaxCards + 10; ++i)
        items.append(permission(QStringLiteral("p%1").arg(i), QStringLiteral("l"), false));
    QJsonObject content = PageFacts::listOf(items);
    content.insert(QStringLiteral("more"), 5);
    PermissionsPage page;
    page.take(topic, content);
    QCOMPARE(page.model().rowCount(), CardModel::MaxCards + 1);
    // 15 items, and one that the heading displaced.
    QCOMPARE(titles(page).constLast(), QStringLiteral("and 16 more"));
}

void TestPermissionsPage::keyboardBeginsAtTheFirstPermission()
{
    PermissionsPage page;
    page.take(topic, usualFacts());
    page.show();
    auto *const cards = page.findChild<CardView *>();
    cards->setFocus();
    QCOMPARE(cards->currentIndex().row(), 1);
    QVERIFY(cards->selectionModel()->selectedIndexes().isEmpty());
    QTest::keyClick(cards, Qt::Key_End);
    QCOMPARE(cards->currentIndex().data().toString(), QStringLiteral("com.example.OWN"));
    page.clear();
    QVERIFY(!cards->currentIndex().isValid());
}

void TestPermissionsPage::copiesTheName()
{
    PermissionsPage page;
    const QString name = QStringLiteral("a\u202eb<i>\n");
    page.take(topic, PageFacts::listOf({permission(name, QStringLiteral("label"), false)}));
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    auto *const cards = page.findChild<CardView *>();
    cards->setFocus();
    cards->setCurrentIndex(page.model().index(1, 0));
    QTest::keyClick(cards, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), name);
}

void TestPermissionsPage::belongsToThePages()
{
    QWidget parent;
    const QList<Page *> pages = makePages(&parent);
    QVERIFY(qobject_cast<PermissionsPage *>(pages.constFirst()) != nullptr);
    for (const Page *const page : pages)
        QCOMPARE(page->parentWidget(), &parent);
}

QTEST_MAIN(TestPermissionsPage)
#include "tst_permissionspage.moc"
