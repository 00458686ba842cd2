// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/treemap/MemberModel.h"
#include "pages/treemap/MemberTree.h"

#include <QAbstractItemModelTester>
#include <QJsonObject>
#include <QtTest>

using namespace Viewer;

namespace {

QJsonObject member(const QString &name, double size, double packed)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("size"), size}, {QStringLiteral("packed"), packed}};
}

QJsonObject member(const char *name, double size)
{
    return member(QString::fromUtf8(name), size, size / 2);
}

// The tree as lines of path and size.
QStringList lines(const MemberTree &tree, int node = 0)
{
    QStringList all;
    for (const int child : tree.node(node).children) {
        const MemberTree::Node &one = tree.node(child);
        all.append(
            QStringLiteral("%1%2 %3").arg(tree.path(child), QLatin1String(one.isFolder ? "/" : "")).arg(one.size));
        all += lines(tree, child);
    }
    return all;
}

} // namespace

class TestMemberTree : public QObject
{
    Q_OBJECT

private slots:
    void foldersAndFiles();
    void kinds();
    void texts();
    void entriesOfFolders();
    void oddPaths();
    void sizesHaveACeiling();
    void membersHaveACeiling();
    void depthHasACeiling();
    void nodesHaveACeiling();
    void model();
};

void TestMemberTree::foldersAndFiles()
{
    const MemberTree tree(QList<QJsonObject>{member("res/a.png", 10), member("classes.dex", 100),
                                             member("res/b/c.xml", 200), member("res/b/d.xml", 5)});
    QCOMPARE(lines(tree), (QStringList{QStringLiteral("res/ 215"), QStringLiteral("res/b/ 205"),
                                       QStringLiteral("res/b/c.xml 200"), QStringLiteral("res/b/d.xml 5"),
                                       QStringLiteral("res/a.png 10"), QStringLiteral("classes.dex 100")}));
    QCOMPARE(tree.node(0).size, qint64(315));
    QCOMPARE(tree.node(0).packed, qint64(157));
    QCOMPARE(tree.node(0).files, 4);
    QCOMPARE(tree.node(tree.node(0).children.constFirst()).files, 3);
}

void TestMemberTree::kinds()
{
    const auto kindOf = [](const char *path) { return memberKind(QString::fromUtf8(path)); };
    QCOMPARE(kindOf("classes2.dex"), MemberKind::Code);
    QCOMPARE(kindOf("res/layout/a.xml"), MemberKind::Resources);
    QCOMPARE(kindOf("resources.arsc"), MemberKind::Resources);
    QCOMPARE(kindOf("lib/x86/liba.so"), MemberKind::Libraries);
    QCOMPARE(kindOf("assets/classes.dex"), MemberKind::Assets);
    QCOMPARE(kindOf("META-INF/MANIFEST.MF"), MemberKind::Signatures);
    QCOMPARE(kindOf("kotlin/a.kotlin_builtins"), MemberKind::Other);
    // Packages in a set.
    QCOMPARE(kindOf("base.apk/res/a.xml"), MemberKind::Resources);
    QCOMPARE(kindOf("splits/base-x86.apk/lib/x86/liba.so"), MemberKind::Libraries);
    QCOMPARE(kindOf("assets/other.apk/classes.dex"), MemberKind::Assets);
    const MemberTree tree(QList<QJsonObject>{member("lib/x86/liba.so", 10)});
    QCOMPARE(tree.node(1).kind, MemberKind::Libraries);
}

void TestMemberTree::texts()
{
    QLocale::setDefault(QLocale::c());
    const MemberTree tree(QList<QJsonObject>{member("lib/a.so", 3072), member("b", 1024)});
    QCOMPARE(tree.description(1), QStringLiteral("folder (files: 1), 3.0 KiB, 1.5 KiB packed, 75.0 % of the package"));
    QCOMPARE(tree.description(2), QStringLiteral("native libraries, 3.0 KiB, 1.5 KiB packed, 75.0 % of the package"));
    QCOMPARE(tree.shownName(0), QStringLiteral("the package"));
    QCOMPARE(tree.shownPath(2), (QStringList{QStringLiteral("lib"), QStringLiteral("a.so")}));
    QCOMPARE(MemberTree().description(0),
             QStringLiteral("folder (files: 0), 0 bytes, 0 bytes packed, 0.0 % of the package"));
}

void TestMemberTree::entriesOfFolders()
{
    const MemberTree tree(QList<QJsonObject>{member("a/", 0), member("b/", 7)});
    QCOMPARE(lines(tree), (QStringList{QStringLiteral("b/ 7"), QStringLiteral("b/ 7"), QStringLiteral("a/ 0")}));
    QCOMPARE(tree.shownName(tree.node(tree.node(0).children.constFirst()).children.constFirst()),
             QStringLiteral("(no name)"));
}

void TestMemberTree::oddPaths()
{
    for (const char *path : {"/a", "a//b", "../../x", "//", "a/b/", "."}) {
        const MemberTree tree(QList<QJsonObject>{member(path, 9)});
        QCOMPARE(tree.path(tree.count() - 1), QString::fromUtf8(path));
    }
    QCOMPARE(MemberTree(QList<QJsonObject>{member("", 9), QJsonObject()}).count(), 1);
    // A file and a folder of one name, and two files of one name.
    const MemberTree tree(QList<QJsonObject>{member("a", 3), member("a/b", 2), member("a", 1)});
    QCOMPARE(lines(tree), (QStringList{QStringLiteral("a 3"), QStringLiteral("a/ 2"), QStringLiteral("a/b 2"),
                                       QStringLiteral("a 1")}));
}

void TestMemberTree::sizesHaveACeiling()
{
    QList<QJsonObject> items;
    for (int i = 0; i < MemberTree::MaxMembers; ++i)
        items.append(member(QString::number(i), 1e300, 1e300));
    items[0] = member(QStringLiteral("negative"), -5, -1e300);
    const MemberTree tree(items);
    QCOMPARE(tree.node(0).size, (MemberTree::MaxMembers - 1) * MemberTree::MaxSize);
    QCOMPARE(tree.node(0).packed, (MemberTree::MaxMembers - 1) * MemberTree::MaxSize);
    QCOMPARE(tree.node(1).size, qint64(0));
}

void TestMemberTree::membersHaveACeiling()
{
    QList<QJsonObject> items;
    for (int i = 0; i < MemberTree::MaxMembers; ++i)
        items.append(member(QString::number(i), 1, 1));
    QCOMPARE(MemberTree(items).node(0).files, MemberTree::MaxMembers);
    items.append(member(QStringLiteral("more"), 1, 1));
    QCOMPARE(MemberTree(items).node(0).files, MemberTree::MaxMembers);
}

void TestMemberTree::depthHasACeiling()
{
    const auto deepest = [](int folders) {
        const QString path = QStringLiteral("a/").repeated(folders) + QStringLiteral("file");
        const MemberTree tree(QList<QJsonObject>{member(path, 1, 1)});
        const int last = tree.count() - 1;
        return tree.path(last) == path ? tree.node(last).name : QStringLiteral("another path");
    };
    QCOMPARE(deepest(MemberTree::MaxDepth), QStringLiteral("file"));
    QCOMPARE(deepest(MemberTree::MaxDepth + 1), QStringLiteral("a/file"));
    QCOMPARE(deepest(30000).size(), (30000 - MemberTree::MaxDepth) * 2 + 4);
    const MemberTree tree(QList<QJsonObject>{member("a/b/c/d/e", 1)});
    QCOMPARE(tree.shownPath(5).size(), MemberTree::MaxShownNames + 1);
}

void TestMemberTree::nodesHaveACeiling()
{
    QList<QJsonObject> items;
    for (int i = 0; i < MemberTree::MaxMembers; ++i)
        items.append(member(QString::number(i) + QStringLiteral("/x/y/z/f"), 1, 1));
    const MemberTree tree(items);
    QVERIFY(tree.count() <= MemberTree::MaxNodes);
    QVERIFY(tree.count() > MemberTree::MaxNodes - MemberTree::MaxMembers);
    QCOMPARE(tree.node(0).files, MemberTree::MaxMembers);
    QCOMPARE(tree.path(tree.count() - 1), QStringLiteral("65534/x/y/z/f"));
}

void TestMemberTree::model()
{
    QLocale::setDefault(QLocale::c());
    MemberModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setTree(std::make_shared<MemberTree>(QList<QJsonObject>{member("lib/a.so", 3072), member("b", 1024)}));
    const QModelIndex lib = model.index(0, 0);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.rowCount(lib), 1);
    QCOMPARE(model.parent(model.index(0, 2, lib)), lib);
    QCOMPARE(model.nodeOf(model.indexOf(2)), 2);
    QStringList row;
    for (int column = 0; column < MemberModel::ColumnCount; ++column)
        row.append(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() + QLatin1Char('=')
                   + model.index(1, column).data().toString());
    QCOMPARE(row, (QStringList{QStringLiteral("Name=b"), QStringLiteral("Size=1.0 KiB"),
                               QStringLiteral("Packed=512 bytes"), QStringLiteral("Share=25.0 %")}));
}

QTEST_MAIN(TestMemberTree)
#include "tst_membertree.moc"
