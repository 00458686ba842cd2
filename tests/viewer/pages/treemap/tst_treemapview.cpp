// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/TreemapView.h"
#include "reading/SafeText.h"

#include <QAccessible>
#include <QClipboard>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>

using namespace Viewer;

namespace {

QJsonObject member(const QString &name, double size)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("size"), size}, {QStringLiteral("packed"), size}};
}

QJsonObject member(const char *name, double size)
{
    return member(QString::fromUtf8(name), size);
}

// A large folder at the left, above a file; a file at the right, above two smaller ones.
QList<QJsonObject> usualMembers()
{
    return {member("res/a", 35), member("res/b", 25), member("res/sub/c", 0), member("classes.dex", 20),
            member("m", 12),     member("n", 8),      member("empty", 0)};
}

class ShownTreemap : public TreemapView
{
public:
    explicit ShownTreemap(const QList<QJsonObject> &items)
    {
        resize(400, 300);
        setTree(std::make_shared<MemberTree>(items));
        show();
        setFocus();
    }

    QString currentPath() const { return tree().path(current()); }
    QPoint middleOf(const char *path)
    {
        for (const Cell &cell : cells()) {
            if (tree().path(cell.node) == QString::fromUtf8(path))
                return cell.place.center().toPoint();
        }
        return {};
    }
};

} // namespace

class TestTreemapView : public QObject
{
    Q_OBJECT

private slots:
    void arrowsMove();
    void arrowsReachEveryCell();
    void entersAndLeavesFolders();
    void currentCellIsAccessible();
    void pointer();
    void clicks();
    void copiesThePath();
    void nothingToShow();
    void mostMembers();
    void cellsLieInTheirFolders();
    void hostileNames();
};

void TestTreemapView::arrowsMove()
{
    ShownTreemap view(usualMembers());
    QCOMPARE(view.currentPath(), QStringLiteral("res"));
    QTest::keyClick(&view, Qt::Key_Left);
    QCOMPARE(view.currentPath(), QStringLiteral("res"));
    QTest::keyClick(&view, Qt::Key_Right);
    const QString right = view.currentPath();
    QVERIFY(right != QStringLiteral("res"));
    QTest::keyClick(&view, Qt::Key_Left);
    QCOMPARE(view.currentPath(), QStringLiteral("res"));
}

void TestTreemapView::arrowsReachEveryCell()
{
    QList<QJsonObject> items;
    for (int i = 1; i <= 40; ++i)
        items.append(member(QString::number(i), i * i));
    ShownTreemap view(items);
    QSet<int> reached{view.current()};
    QList<int> next{view.current()};
    while (!next.isEmpty()) {
        const int from = next.takeFirst();
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
            view.setCurrent(from);
            QTest::keyClick(&view, key);
            if (!reached.contains(view.current()))
                next.append(view.current());
            reached.insert(view.current());
        }
    }
    QCOMPARE(reached.size(), 40);
}

void TestTreemapView::entersAndLeavesFolders()
{
    ShownTreemap view(usualMembers());
    QSignalSpy folders(&view, &TreemapView::folderChanged);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(view.tree().path(view.folder()), QStringLiteral("res"));
    QCOMPARE(view.currentPath(), QStringLiteral("res/a"));
    QTest::keyClick(&view, Qt::Key_Return); // a file
    QCOMPARE(view.currentPath(), QStringLiteral("res/a"));
    QTest::keyClick(&view, Qt::Key_Backspace);
    QCOMPARE(view.folder(), 0);
    QCOMPARE(view.currentPath(), QStringLiteral("res"));
    QTest::keyClick(&view, Qt::Key_Backspace);
    QCOMPARE(view.folder(), 0);
    QCOMPARE(folders.size(), 2);
}

void TestTreemapView::currentCellIsAccessible()
{
    QLocale::setDefault(QLocale::c());
    ShownTreemap view(usualMembers());
    QCOMPARE(view.accessibleName(), QStringLiteral("res"));
    QCOMPARE(view.accessibleDescription(),
             QStringLiteral("folder (files: 3), 60 bytes, 60 bytes packed, 60.0 % of the package"));
    const QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(&view);
    QCOMPARE(accessible->text(QAccessible::Name), view.accessibleName());
    QCOMPARE(accessible->text(QAccessible::Description), view.accessibleDescription());
    view.setTree(std::make_shared<MemberTree>());
    QCOMPARE(view.accessibleName(), QStringLiteral("Contents by size"));
    QCOMPARE(view.accessibleDescription(), QString());
}

void TestTreemapView::pointer()
{
    ShownTreemap view(usualMembers());
    QSignalSpy pointed(&view, &TreemapView::pointedAt);
    QTest::mouseMove(&view, view.middleOf("classes.dex"));
    QTRY_COMPARE(pointed.size(), 1);
    QCOMPARE(view.tree().path(pointed.takeFirst().constFirst().toInt()), QStringLiteral("classes.dex"));
    // The innermost cell.
    QCOMPARE(view.tree().path(view.nodeAt(view.middleOf("res/a"))), QStringLiteral("res/a"));
    QCOMPARE(view.nodeAt(QPointF(-1, 5)), -1);
}

void TestTreemapView::clicks()
{
    ShownTreemap view(usualMembers());
    QTest::mouseClick(&view, Qt::LeftButton, {}, view.middleOf("classes.dex"));
    QCOMPARE(view.currentPath(), QStringLiteral("classes.dex"));
    QTest::mouseClick(&view, Qt::LeftButton, {}, view.middleOf("res/b"));
    QCOMPARE(view.currentPath(), QStringLiteral("res"));
    QTest::mouseDClick(&view, Qt::LeftButton, {}, view.middleOf("res/b"));
    QCOMPARE(view.tree().path(view.folder()), QStringLiteral("res"));
}

void TestTreemapView::copiesThePath()
{
    const QString path = QStringLiteral("a\u202e\n/<b>b");
    ShownTreemap view({member(path, 5)});
    QVERIFY(QTest::qWaitForWindowActive(&view));
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), path);
}

void TestTreemapView::nothingToShow()
{
    for (const QList<QJsonObject> &items :
         {QList<QJsonObject>(), QList<QJsonObject>{member("a", 0), member("b/c", 0)}}) {
        ShownTreemap view(items);
        QVERIFY(view.cells().isEmpty());
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Down, Qt::Key_Return, Qt::Key_Backspace})
            QTest::keyClick(&view, key);
        QTest::mouseDClick(&view, Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(!view.grab().isNull());
    }
    // A member without a cell can be current, because the list below has it.
    ShownTreemap view(usualMembers());
    view.setCurrent(view.tree().node(0).children.constLast());
    QCOMPARE(view.currentPath(), QStringLiteral("empty"));
    QTest::keyClick(&view, Qt::Key_Right);
    QCOMPARE(view.currentPath(), QStringLiteral("res"));
}

void TestTreemapView::mostMembers()
{
    QList<QJsonObject> flat;
    QList<QJsonObject> nested;
    for (int i = 0; i < MemberTree::MaxMembers; ++i) {
        flat.append(member(QString::number(i), 1 + i % 100));
        nested.append(member(QStringLiteral("%1/%2/%3").arg(i % 7).arg(i % 77).arg(i), 1 + i % 100));
    }
    for (const QList<QJsonObject> &items : {flat, nested}) {
        ShownTreemap view(items);
        QVERIFY(view.cells().size() > 0);
        QVERIFY(view.cells().size() < view.tree().count());
        QVERIFY(!view.grab().isNull());
        QTest::keyClick(&view, Qt::Key_Right);
        QVERIFY(view.current() > 0);
    }
}

void TestTreemapView::cellsLieInTheirFolders()
{
    ShownTreemap view(usualMembers());
    QHash<int, QRectF> places;
    for (const TreemapView::Cell &cell : view.cells()) {
        const int parent = view.tree().node(cell.node).parent;
        QVERIFY(parent == 0 || places.contains(parent));
        const QRectF around = parent == 0 ? QRectF(view.rect()) : places.value(parent);
        QVERIFY(around.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(cell.place));
        places.insert(cell.node, cell.place);
    }
}

void TestTreemapView::hostileNames()
{
    ShownTreemap view({member(QString(1 << 20, QLatin1Char('w')), 5), member(QStringLiteral("<b>\u202ex</b>\n"), 5),
                       member(QString(1 << 16, QChar(0x0301)), 5)});
    QVERIFY(!view.grab().isNull());
    for (const TreemapView::Cell &cell : view.cells()) {
        view.setCurrent(cell.node);
        QVERIFY(view.accessibleName().size() <= MaxSafeText + 1);
        QVERIFY(!view.accessibleName().contains(QLatin1Char('\n')) && !view.accessibleName().contains(QChar(0x202e)));
    }
}

QTEST_MAIN(TestTreemapView)
#include "tst_treemapview.moc"
