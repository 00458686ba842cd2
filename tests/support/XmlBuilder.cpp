// SPDX-License-Identifier: LGPL-2.1-or-later
#include "XmlBuilder.h"

#include "Bytes.h"

namespace fixture {

namespace {

enum ChunkType : int {
    DocumentType = 0x0003,
    StartNamespaceType = 0x0100,
    EndNamespaceType = 0x0101,
    StartElementType = 0x0102,
    EndElementType = 0x0103,
    ResourceIdMapType = 0x0180,
};

enum ValueType : int {
    ReferenceType = 0x01,
    StringType = 0x03,
};

} // namespace

const QString androidUri = QStringLiteral("http://schemas.android.com/apk/res/android");

Attribute androidText(const QString &name, const QString &text)
{
    return {androidUri, name, text, StringType, 0};
}

Attribute androidValue(const QString &name, int dataType, qint64 data)
{
    return {androidUri, name, QString(), dataType, data};
}

Attribute androidReference(const QString &name, qint64 resourceId)
{
    return androidValue(name, ReferenceType, resourceId);
}

Attribute writtenAs(Attribute attribute, const QString &raw)
{
    if (attribute.dataType == StringType)
        attribute.value = attribute.raw;
    attribute.raw = raw;
    return attribute;
}

Attribute plainText(const QString &name, const QString &text)
{
    return {QString(), name, text, StringType, 0};
}

XmlBuilder XmlBuilder::manifest(Encoding encoding)
{
    XmlBuilder builder(encoding);
    builder.attributeId(QStringLiteral("label"), 0x01010001)
        .attributeId(QStringLiteral("icon"), 0x01010002)
        .attributeId(QStringLiteral("name"), 0x01010003)
        .attributeId(QStringLiteral("enabled"), 0x0101000e)
        .attributeId(QStringLiteral("exported"), 0x01010010)
        .attributeId(QStringLiteral("targetActivity"), 0x01010202)
        .attributeId(QStringLiteral("minSdkVersion"), 0x0101020c)
        .startNamespace(QStringLiteral("android"), androidUri);
    return builder;
}

XmlBuilder &XmlBuilder::attributeId(const QString &name, qint64 resourceId)
{
    Q_ASSERT(m_strings.size() == m_resourceIds.size());
    index(name);
    m_resourceIds.append(resourceId);
    return *this;
}

XmlBuilder &XmlBuilder::startNamespace(const QString &prefix, const QString &uri)
{
    return chunk(nodeChunk(StartNamespaceType, Bytes().u32(index(prefix)).u32(index(uri)).data()));
}

XmlBuilder &XmlBuilder::endNamespace(const QString &prefix, const QString &uri)
{
    return chunk(nodeChunk(EndNamespaceType, Bytes().u32(index(prefix)).u32(index(uri)).data()));
}

XmlBuilder &XmlBuilder::start(const QString &name, const QVector<Attribute> &attributes, const QString &ns)
{
    ElementFields fields;
    fields.ns = index(ns);
    fields.name = index(name);
    fields.attributeCount = int(attributes.size());
    Bytes records;
    for (const Attribute &attribute : attributes) {
        const int raw = index(attribute.raw);
        const bool isText = attribute.dataType == StringType && !attribute.raw.isNull();
        const qint64 text = attribute.value.isNull() ? raw : index(attribute.value);
        const qint64 data = isText ? text : attribute.data;
        records.raw(attributeRecord(index(attribute.ns), index(attribute.name), raw, attribute.dataType, data));
    }
    return chunk(nodeChunk(StartElementType, elementBody(fields, records.data())));
}

XmlBuilder &XmlBuilder::end(const QString &name, const QString &ns)
{
    return chunk(nodeChunk(EndElementType, Bytes().u32(index(ns)).u32(index(name)).data()));
}

XmlBuilder &XmlBuilder::empty(const QString &name, const QVector<Attribute> &attributes)
{
    return start(name, attributes).end(name);
}

XmlBuilder &XmlBuilder::launcherFilter()
{
    const QString filter = QStringLiteral("intent-filter");
    const QString name = QStringLiteral("name");
    return start(filter)
        .empty(QStringLiteral("action"), {androidText(name, QStringLiteral("android.intent.action.MAIN"))})
        .empty(QStringLiteral("category"), {androidText(name, QStringLiteral("android.intent.category.LAUNCHER"))})
        .end(filter);
}

XmlBuilder &XmlBuilder::chunk(const QByteArray &chunk)
{
    m_nodes.append(chunk);
    return *this;
}

int XmlBuilder::index(const QString &string)
{
    if (string.isNull())
        return -1;
    const auto known = m_indices.constFind(string);
    if (known != m_indices.cend())
        return *known;
    m_strings.append(string);
    m_indices.insert(string, int(m_strings.size()) - 1);
    return int(m_strings.size()) - 1;
}

QByteArray XmlBuilder::pool() const
{
    return PoolBuilder(m_encoding).strings(m_strings).build();
}

QByteArray XmlBuilder::resourceIdMap() const
{
    Bytes ids;
    for (const qint64 id : m_resourceIds)
        ids.u32(id);
    return fixture::chunk(ResourceIdMapType, QByteArray(), ids.data());
}

QByteArray XmlBuilder::build() const
{
    const QByteArray map = m_resourceIds.isEmpty() ? QByteArray() : resourceIdMap();
    return fixture::chunk(DocumentType, QByteArray(), pool() + map + m_nodes);
}

QByteArray nodeChunk(int type, const QByteArray &body, qint64 comment)
{
    return chunk(type, Bytes().u32(1).u32(comment).data(), body);
}

QByteArray elementBody(const ElementFields &fields, const QByteArray &records)
{
    Bytes body;
    body.u32(fields.ns).u32(fields.name).u16(fields.attributeStart).u16(fields.attributeSize);
    return body.u16(fields.attributeCount).zeros(6).raw(records).data();
}

QByteArray attributeRecord(qint64 ns, qint64 name, qint64 raw, int dataType, qint64 data)
{
    constexpr int ValueSize = 8;
    return Bytes().u32(ns).u32(name).u32(raw).u16(ValueSize).u8(0).u8(dataType).u32(data).data();
}

} // namespace fixture
