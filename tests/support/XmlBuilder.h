// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLBUILDER_H
#define XMLBUILDER_H

#include "PoolBuilder.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace fixture {

/// The namespace of Android's attributes, spelled out here so that the library's own constant is tested against it.
extern const QString androidUri;

/// An attribute of an element. A null @p ns or @p raw is none, index -1.
struct Attribute {
    QString ns;
    QString name;
    QString raw;
    int dataType;
    qint64 data;
    QString value = QString(); ///< of a string, where it is another than raw
};

/// An attribute in Android's namespace, with a text.
Attribute androidText(const QString &name, const QString &text);
/// An attribute in Android's namespace, with a typed value.
Attribute androidValue(const QString &name, int dataType, qint64 data);
/// An attribute in Android's namespace, that refers to a resource.
Attribute androidReference(const QString &name, qint64 resourceId);
/// @p attribute, which is a value, written as the text @p raw; that of a string may be another.
Attribute writtenAs(Attribute attribute, const QString &raw);
/// An attribute without a namespace, with a text.
Attribute plainText(const QString &name, const QString &text);

/**
 * Builds a binary XML document, of the nodes that are added, in their order; the pool holds each string once. Strings
 * with a resource id come first in the pool, so attributeId() is called before anything else.
 */
class XmlBuilder
{
public:
    explicit XmlBuilder(Encoding encoding = Encoding::Utf16) : m_encoding(encoding) {}

    /// A builder with the ids of the Android attributes that manifests use here, and the prefix android bound.
    static XmlBuilder manifest(Encoding encoding = Encoding::Utf16);

    XmlBuilder &attributeId(const QString &name, qint64 resourceId);
    XmlBuilder &startNamespace(const QString &prefix, const QString &uri);
    XmlBuilder &endNamespace(const QString &prefix, const QString &uri);
    XmlBuilder &start(const QString &name, const QVector<Attribute> &attributes = {}, const QString &ns = QString());
    XmlBuilder &end(const QString &name, const QString &ns = QString());
    /// An element's start and end.
    XmlBuilder &empty(const QString &name, const QVector<Attribute> &attributes = {});
    /// An intent filter that makes the activity around it a launcher.
    XmlBuilder &launcherFilter();
    /// Any chunk.
    XmlBuilder &chunk(const QByteArray &chunk);

    /// Index of a string in the pool, which is added when it is not there; -1 for a null string.
    int index(const QString &string);

    QByteArray pool() const;
    QByteArray resourceIdMap() const;
    /// The document: pool, resource-id map when there are ids, nodes.
    QByteArray build() const;

private:
    Encoding m_encoding;
    QStringList m_strings;
    QHash<QString, int> m_indices; ///< of the strings
    QVector<qint64> m_resourceIds;
    QByteArray m_nodes;
};

/// A node chunk: the chunk header, a node header with the comment index @p comment, and @p body.
QByteArray nodeChunk(int type, const QByteArray &body, qint64 comment = -1);

/// The fields of an element's start that are given by number rather than derived.
struct ElementFields {
    int ns = -1;
    int name = 0;
    int attributeStart = 20;
    int attributeSize = 20;
    int attributeCount = 0;
};
/// The body of an element's start: the fields, with @p records right where attributes usually start.
QByteArray elementBody(const ElementFields &fields, const QByteArray &records = QByteArray());
/// One attribute record of 20 bytes.
QByteArray attributeRecord(qint64 ns, qint64 name, qint64 raw, int dataType, qint64 data);

} // namespace fixture

#endif
