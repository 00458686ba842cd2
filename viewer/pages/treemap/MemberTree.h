// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_MEMBERTREE_H
#define VIEWER_MEMBERTREE_H

#include "pages/treemap/MemberKind.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Viewer {

/**
 * The members of a package as folders and files, the largest first. Node 0 is the package itself.
 *
 * The paths are those of strangers. A path with more than MaxDepth folders has a file whose name is the rest of the
 * path, and so has every path when MaxNodes nodes would not suffice. Sizes above MaxSize count as MaxSize, so no sum
 * overflows.
 */
class MemberTree
{
public:
    static constexpr int MaxMembers = 65535;
    static constexpr int MaxDepth = 32;
    static constexpr int MaxNodes = 4 * MaxMembers;
    static constexpr int MaxShownNames = 4;
    static constexpr qint64 MaxSize = qint64(1) << 46;

    struct Node {
        QString name; ///< as the archive has it
        int parent = -1;
        int row = 0; ///< among the children of the parent
        bool isFolder = false;
        MemberKind kind = MemberKind::Other;
        qint64 size = 0;   ///< of the unpacked file, or of all in the folder
        qint64 packed = 0; ///< the same in the archive
        int files = 0;     ///< in the folder and those below it; 1 for a file
        QVector<int> children;
    };

    /// A package without members.
    MemberTree() : MemberTree(QList<QJsonObject>()) {}
    /// The tree of the first MaxMembers of @p items, which have "name", "size" and "packed". Takes time in proportion
    /// to their number, times its logarithm.
    explicit MemberTree(const QList<QJsonObject> &items);

    int count() const { return int(m_nodes.size()); }
    const Node &node(int number) const { return m_nodes.at(number); }
    /// The path of the node, as the archive has it; empty for the package.
    QString path(int number) const;
    /// The last MaxShownNames folders above the node and the node itself, as they are shown; empty for the package. An
    /// ellipsis comes first when there are more.
    QStringList shownPath(int number) const;
    /// The name of the node as it is shown.
    QString shownName(int number) const;
    /// The same for a part of a sentence.
    QString shownPart(int number) const;
    /// The size of the node in proportion to the package, 0 to 1.
    double share(int number) const;
    /// The share in per cent, in the user's language.
    QString shareText(int number) const;
    /// A size in the user's language.
    static QString sizeText(qint64 bytes);
    /// The facts of the node in a sentence without its name.
    QString description(int number) const;

private:
    int add(int parent, const QString &name, bool isFolder, const QString &path);
    void sumUp();
    void sort();

    QVector<Node> m_nodes;
};

} // namespace Viewer

#endif
