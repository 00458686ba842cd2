// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/MemberTree.h"

#include "reading/SafeText.h"

#include <QCoreApplication>
#include <QHash>
#include <QLocale>
#include <QPair>

#include <algorithm>

namespace Viewer {

namespace {

qint64 sizeIn(const QJsonObject &item, const char *key)
{
    return qint64(qBound(0.0, item.value(QLatin1String(key)).toDouble(), double(MemberTree::MaxSize)));
}

QString treeText(const char *source)
{
    return QCoreApplication::translate("Viewer::MemberTree", source);
}

} // namespace

MemberTree::MemberTree(const QList<QJsonObject> &items)
{
    m_nodes.append(Node());
    m_nodes.first().isFolder = true;
    QHash<QPair<int, QString>, int> folders;
    const int count = qMin(int(items.size()), MaxMembers);
    for (int i = 0; i < count; ++i) {
        const QJsonObject &item = items.at(i);
        const QString path = item.value(QLatin1String("name")).toString();
        if (path.isEmpty())
            continue;
        int parent = 0;
        int start = 0;
        for (int depth = 0; depth < MaxDepth; ++depth) {
            const int end = int(path.indexOf(QLatin1Char('/'), start));
            if (end < 0)
                break;
            const QString name = path.mid(start, end - start);
            const auto found = folders.constFind(qMakePair(parent, name));
            // Each member that is left has place for its file.
            if (found == folders.constEnd() && m_nodes.size() >= MaxNodes - (count - i))
                break;
            const int folder =
                found == folders.constEnd() ? add(parent, name, true, path.left(end + 1)) : found.value();
            folders.insert(qMakePair(parent, name), folder);
            parent = folder;
            start = end + 1;
        }
        const qint64 size = sizeIn(item, "size");
        const qint64 packed = sizeIn(item, "packed");
        // The entry of a folder.
        if (start == path.size() && size == 0 && packed == 0)
            continue;
        Node &file = m_nodes[add(parent, path.mid(start), false, path)];
        file.size = size;
        file.packed = packed;
        file.files = 1;
    }
    sumUp();
    sort();
}

int MemberTree::add(int parent, const QString &name, bool isFolder, const QString &path)
{
    Node node;
    node.name = name;
    node.parent = parent;
    node.isFolder = isFolder;
    node.kind = memberKind(path);
    const int number = int(m_nodes.size());
    m_nodes.append(node);
    m_nodes[parent].children.append(number);
    return number;
}

void MemberTree::sumUp()
{
    // A folder comes before everything in it.
    for (int number = int(m_nodes.size()) - 1; number > 0; --number) {
        const Node &node = m_nodes.at(number);
        Node &parent = m_nodes[node.parent];
        parent.size += node.size;
        parent.packed += node.packed;
        parent.files += node.files;
    }
}

void MemberTree::sort()
{
    for (Node &node : m_nodes) {
        std::sort(node.children.begin(), node.children.end(), [this](int one, int other) {
            const Node &first = m_nodes.at(one);
            const Node &second = m_nodes.at(other);
            return first.size != second.size ? first.size > second.size : one < other;
        });
        for (int row = 0; row < int(node.children.size()); ++row)
            m_nodes[node.children.at(row)].row = row;
    }
}

QString MemberTree::path(int number) const
{
    QStringList names;
    for (int at = number; at > 0; at = m_nodes.at(at).parent)
        names.prepend(m_nodes.at(at).name);
    return names.join(QLatin1Char('/'));
}

QStringList MemberTree::shownPath(int number) const
{
    QStringList names;
    int at = number;
    for (; at > 0 && names.size() < MaxShownNames; at = m_nodes.at(at).parent)
        names.prepend(shownName(at));
    if (at > 0)
        names.prepend(QString(QChar(0x2026)));
    return names;
}

QString MemberTree::shownName(int number) const
{
    if (number == 0)
        return treeText(QT_TRANSLATE_NOOP("Viewer::MemberTree", "the package"));
    const QString name = safeText(m_nodes.at(number).name);
    return name.isEmpty() ? treeText(QT_TRANSLATE_NOOP("Viewer::MemberTree", "(no name)")) : name;
}

QString MemberTree::shownPart(int number) const
{
    const QString part = safePart(m_nodes.at(number).name);
    return part.isEmpty() ? shownName(number) : part;
}

double MemberTree::share(int number) const
{
    const qint64 all = m_nodes.first().size;
    return all == 0 ? 0 : double(m_nodes.at(number).size) / double(all);
}

QString MemberTree::shareText(int number) const
{
    return treeText(QT_TRANSLATE_NOOP("Viewer::MemberTree", "%1 %"))
        .arg(QLocale().toString(100 * share(number), 'f', 1));
}

QString MemberTree::sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1);
}

QString MemberTree::description(int number) const
{
    const Node &node = m_nodes.at(number);
    const QString sizes = treeText(QT_TRANSLATE_NOOP("Viewer::MemberTree", "%1, %2 packed, %3 of the package"))
                              .arg(sizeText(node.size), sizeText(node.packed), shareText(number));
    const QString what = node.isFolder
                             ? treeText(QT_TRANSLATE_NOOP("Viewer::MemberTree", "folder (files: %1)")).arg(node.files)
                             : memberKindName(node.kind);
    return treeText(QT_TRANSLATE_NOOP("Viewer::MemberTree", "%1, %2")).arg(what, sizes);
}

} // namespace Viewer
