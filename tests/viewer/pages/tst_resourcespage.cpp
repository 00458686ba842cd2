// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/ResourcesPage.h"
#include "pages/gallery/DrawableStore.h"
#include "pages/gallery/ResourceFilter.h"

#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

using namespace Viewer;

namespace {

const QString topic = QStringLiteral("resources");

QJsonObject resource(const QString &name, const QString &value, bool isDrawable)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("type"), isDrawable ? QStringLiteral("drawable") : QStringLiteral("string")},
            {QStringLiteral("value"), value},
            {QStringLiteral("isDrawable"), isDrawable}};
}

QJsonObject usualFacts()
{
    return PageFacts::listOf({resource(QStringLiteral("a:drawable/icon"), QStringLiteral("res/icon.png"), true),
                              resource(QStringLiteral("a:drawable/Line"), QStringLiteral("res/line.xml"), true),
                              resource(QStringLiteral("a:string/title"), QStringLiteral("Icons <b>"), false)});
}

// The page with its gallery in front.
class ShownGallery : public ResourcesPage
{
public:
    explicit ShownGallery(const QJsonObject &content) : wanted(this, &ResourcesPage::wants)
    {
        resize(500, 400);
        findChild<QTabWidget *>()->setCurrentIndex(1);
        take(topic, content);
        show();
    }

    QListView *gallery() const { return findChild<QListView *>(); }
    QStringList namesWanted() const
    {
        QStringList names;
        for (const QList<QVariant> &one : wanted)
            names.append(one.constFirst().toJsonObject().value(QLatin1String("name")).toString());
        return names;
    }
    void answer(const QString &name, const QString &png, const QString &error = QString())
    {
        take(QStringLiteral("drawable"),
             {{QStringLiteral("name"), name}, {QStringLiteral("png"), png}, {QStringLiteral("error"), error}});
    }

    QSignalSpy wanted;
};

QJsonObject manyDrawables(int count)
{
    QList<QJsonObject> items;
    for (int i = 0; i < count; ++i)
        items.append(resource(QStringLiteral("a:drawable/d%1").arg(i, 5, 10, QLatin1Char('0')), QString(), true));
    return PageFacts::listOf(items);
}

} // namespace

class TestResourcesPage : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void filters();
    void listAsksForNothing();
    void galleryAsksForWhatIsSeen();
    void answersAreSeen();
    void errorsAreSeen();
    void hostile();
    void wrongTypes();
    void mostResources();
};

void TestResourcesPage::states()
{
    ResourcesPage page;
    PageFacts::checkStates(&page, topic, usualFacts());
    page.take(topic, PageFacts::listOf({}));
    QCOMPARE(page.message(), QStringLiteral("This package has no resources."));
}

void TestResourcesPage::filters()
{
    QLocale::setDefault(QLocale::c());
    ResourcesPage page;
    page.take(topic, usualFacts());
    QCOMPARE(page.list().rowCount(), 3);
    QCOMPARE(page.drawables().rowCount(), 2);
    auto *const tabs = page.findChild<QTabWidget *>();
    QCOMPARE(tabs->tabText(0), QStringLiteral("List (3)"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("Gallery (2)"));
    auto *const field = page.findChild<QLineEdit *>();
    // The text is looked for in names and values; for drawables, in names alone.
    QTest::keyClicks(field, QStringLiteral("ICON"));
    QCOMPARE(page.list().rowCount(), 2);
    QCOMPARE(page.drawables().rowCount(), 1);
    QCOMPARE(tabs->tabText(0), QStringLiteral("List (2)"));
    field->setText(QStringLiteral("line.xml"));
    QCOMPARE(page.list().rowCount(), 1);
    QCOMPARE(page.drawables().rowCount(), 0);
    page.clear();
    QCOMPARE(field->text(), QString());
}

void TestResourcesPage::listAsksForNothing()
{
    ResourcesPage page;
    QSignalSpy wanted(&page, &ResourcesPage::wants);
    page.resize(500, 400);
    page.take(topic, usualFacts());
    page.show();
    QVERIFY(!page.grab().isNull());
    QCOMPARE(wanted.size(), 0);
}

void TestResourcesPage::galleryAsksForWhatIsSeen()
{
    constexpr int Count = 5000;
    ShownGallery page(manyDrawables(Count));
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    // Answers come until no cell that is seen waits.
    int answered = 0;
    for (int round = 0; round < 100; ++round) {
        QVERIFY(!page.grab().isNull());
        const QStringList names = page.namesWanted();
        if (answered == names.size())
            break;
        for (; answered < names.size(); ++answered)
            page.answer(names.at(answered), PageFacts::png(8));
    }
    const auto seen = [&page] {
        QStringList names;
        for (int row = 0; row < Count; ++row) {
            const QModelIndex index = page.drawables().index(row, 0);
            if (page.gallery()->visualRect(index).intersects(page.gallery()->viewport()->rect()))
                names.append(index.data().toString());
        }
        return names;
    };
    const QStringList first = seen();
    QVERIFY(first.size() > 5 && first.size() < 200);
    QStringList asked = page.namesWanted();
    asked.sort();
    QCOMPARE(asked, first);
    // Drawables in between are never asked for.
    page.wanted.clear();
    page.gallery()->scrollToBottom();
    QVERIFY(!page.grab().isNull());
    QVERIFY(page.namesWanted().size() > 0);
    const QStringList last = seen();
    for (const QString &name : page.namesWanted())
        QVERIFY(last.contains(name));
}

void TestResourcesPage::answersAreSeen()
{
    ShownGallery page(usualFacts());
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    const auto pictureIsSeen = [&page] {
        const QImage picture = page.gallery()->viewport()->grab().toImage();
        const QRect cell = page.gallery()->visualRect(page.drawables().index(0, 0));
        const qreal ratio = picture.devicePixelRatio();
        for (int y = cell.top(); y < cell.bottom(); ++y) {
            if (picture.pixelColor(QPointF(cell.center().x() * ratio, y * ratio).toPoint()) == QColor(Qt::magenta))
                return true;
        }
        return false;
    };
    QVERIFY(!pictureIsSeen());
    page.answer(QStringLiteral("a:drawable/icon"), PageFacts::png(64, Qt::magenta));
    QVERIFY(pictureIsSeen());
    page.clear();
    page.take(topic, usualFacts());
    QVERIFY(!pictureIsSeen());
}

void TestResourcesPage::errorsAreSeen()
{
    ShownGallery page(usualFacts());
    QVERIFY(!page.grab().isNull());
    page.answer(QStringLiteral("a:drawable/icon"), QString(), QStringLiteral("it is <b>no</b> picture"));
    const QModelIndex index = page.drawables().index(0, 0);
    QCOMPARE(index.data(Qt::AccessibleDescriptionRole).toString(), QStringLiteral("it is <b>no</b> picture"));
    QVERIFY(index.data(Qt::ToolTipRole).toString().contains(QLatin1String("it is &lt;b&gt;no")));
    QVERIFY(!page.grab().isNull());
}

void TestResourcesPage::hostile()
{
    for (const QString &text : PageFacts::hostileTexts()) {
        ShownGallery page(PageFacts::listOf({resource(text, text, true), resource(text, text, false)}));
        QVERIFY(!page.grab().isNull());
        page.answer(text, QString(), text);
        QVERIFY(!page.grab().isNull());
        page.findChild<QTabWidget *>()->setCurrentIndex(0);
        QVERIFY(!page.grab().isNull());
        for (const ResourceFilter *const model : {&page.list(), &page.drawables()}) {
            for (const QString &shown : PageFacts::shownTexts(*model))
                QVERIFY2(PageFacts::isSafe(shown), qPrintable(shown.left(100)));
            for (const QString &toolTip : PageFacts::toolTips(*model))
                QVERIFY(!toolTip.contains(QLatin1String("<b>")) && !toolTip.contains(QLatin1String("<img")));
        }
    }
}

void TestResourcesPage::wrongTypes()
{
    ShownGallery page(usualFacts());
    int ways = PageFacts::forEachWrongType(usualFacts(), [&page](const QJsonObject &content) {
        page.take(topic, content);
        QVERIFY(page.list().rowCount() <= 3);
    });
    page.take(topic, usualFacts());
    QVERIFY(!page.grab().isNull());
    ways += PageFacts::forEachWrongType(
        {{QStringLiteral("name"), QStringLiteral("a:drawable/icon")},
         {QStringLiteral("png"), PageFacts::png(8)},
         {QStringLiteral("error"), QString()}},
        [&page](const QJsonObject &content) { page.take(QStringLiteral("drawable"), content); });
    QVERIFY(ways > 120);
    QVERIFY(!page.grab().isNull());
}

void TestResourcesPage::mostResources()
{
    QLocale::setDefault(QLocale::c());
    ShownGallery page(manyDrawables(ResourcesPage::MaxResources + 2));
    QCOMPARE(page.drawables().rowCount(), ResourcesPage::MaxResources);
    QCOMPARE(page.notice(), QStringLiteral("Resources that are not shown: 2"));
    page.resize(1000, 1000);
    QVERIFY(!page.grab().isNull());
    QCOMPARE(page.namesWanted().size(), DrawableStore::MaxPending);
}

QTEST_MAIN(TestResourcesPage)
#include "tst_resourcespage.moc"
