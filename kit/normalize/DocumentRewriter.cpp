// SPDX-License-Identifier: LGPL-2.1-or-later
#include "normalize/DocumentRewriter.h"

#include "format/XmlReader.h"
#include "format/XmlStartChunk.h"

#include <QtEndian>

#include <algorithm>

namespace SorrelKit {

namespace {

constexpr int NameSize = 8; ///< of a namespace and a name, which begin the body of a node

template <typename T>
void appendInteger(QByteArray *bytes, T value)
{
    char encoded[sizeof value];
    qToLittleEndian(value, encoded);
    bytes->append(encoded, int(sizeof value));
}

void appendBytes(QByteArray *bytes, const ByteView &view)
{
    bytes->append(reinterpret_cast<const char *>(view.data()), int(view.size()));
}

void appendHeader(QByteArray *bytes, ChunkType type, int headerSize, qint64 size)
{
    appendInteger(bytes, quint16(type));
    appendInteger(bytes, quint16(headerSize));
    appendInteger(bytes, quint32(size));
}

// Whether nothing is odd but @p taken and the namespaces, which libsorrel takes as they are.
bool hasOnly(const OddityList &oddities, Oddity taken)
{
    const auto &items = oddities.items();
    return std::all_of(items.cbegin(), items.cend(), [taken](const OddityList::Item &item) {
        return item.oddity == taken || item.oddity == Oddity::UnbalancedNamespaces;
    });
}

} // namespace

QByteArray DocumentRewriter::rewritten(const QByteArray &document)
{
    const XmlReader reader(document);
    if (reader.fault() != FormatFault::None || hasOnly(reader.oddities(), Oddity::UnbalancedNamespaces))
        return document;
    if (!hasOnly(reader.oddities(), Oddity::DocumentType))
        return DocumentRewriter(document).write();
    QByteArray typed = document;
    qToLittleEndian(quint16(ChunkType::Xml), typed.data());
    return typed;
}

// Precondition: XmlReader reads the document without a fault.
QByteArray DocumentRewriter::write()
{
    appendHeader(&m_output, ChunkType::Xml, ChunkView::HeaderSize, 0);
    const int poolAt = int(m_output.size());
    appendBytes(&m_output, m_nodes.poolBytes());
    if (m_nodes.strings().hasOddStyles())
        qToLittleEndian(quint32(0), m_output.data() + poolAt + StringPoolView::StylesStartAt);
    if (!m_nodes.resourceIds().isEmpty())
        writeChunk(ChunkType::XmlResourceMap, m_nodes.resourceIds());
    QVector<ByteView> elements;
    QVector<ByteView> namespaces;
    bool isPastRoot = false;
    while (!isPastRoot && m_nodes.next()) {
        const ByteView body = m_nodes.body();
        if (m_nodes.type() == ChunkType::XmlStartNamespace) {
            writeNode(ChunkType::XmlStartNamespace, body, NameSize);
            namespaces.append(body);
        } else if (m_nodes.type() == ChunkType::XmlStartElement) {
            writeStart(body);
            elements.append(body);
        } else if (m_nodes.type() == ChunkType::XmlEndElement && !elements.isEmpty()) {
            isPastRoot = elements.size() == 1;
            close(&elements, int(elements.size()) - 1, ChunkType::XmlEndElement);
        }
    }
    close(&elements, 0, ChunkType::XmlEndElement);
    close(&namespaces, 0, ChunkType::XmlEndNamespace);
    qToLittleEndian(quint32(m_output.size()), m_output.data() + ChunkView::SizeAt);
    return m_output;
}

void DocumentRewriter::writeStart(const ByteView &body)
{
    const XmlStartChunk start(body);
    QByteArray fixed = body.part(0, XmlStartChunk::BodySize).toByteArray();
    quint16 count = 0;
    for (int i = 0; i < start.attributeCount(); ++i) {
        const XmlStartChunk::Attribute attribute = start.attribute(i);
        if (attribute.name >= quint64(m_nodes.strings().count()))
            continue;
        ++count;
        appendInteger(&fixed, known(attribute.uri));
        appendInteger(&fixed, attribute.name);
        appendInteger(&fixed, known(attribute.raw));
        appendInteger(&fixed, quint16(TypedValue::Size));
        appendInteger(&fixed, quint8(0));
        appendInteger(&fixed, quint8(attribute.value.type));
        appendInteger(&fixed, attribute.value.data);
    }
    qToLittleEndian(quint16(XmlStartChunk::BodySize), fixed.data() + XmlStartChunk::AttributeStartAt);
    qToLittleEndian(quint16(XmlStartChunk::AttributeSize), fixed.data() + XmlStartChunk::AttributeSizeAt);
    qToLittleEndian(count, fixed.data() + XmlStartChunk::AttributeCountAt);
    writeNode(ChunkType::XmlStartElement, ByteView(fixed), int(fixed.size()));
}

quint32 DocumentRewriter::known(quint32 index) const
{
    return index < quint64(m_nodes.strings().count()) ? index : XmlStartChunk::NoString;
}

void DocumentRewriter::writeNode(ChunkType type, const ByteView &body, int size)
{
    constexpr quint32 Line = 0;
    appendHeader(&m_output, type, XmlStartChunk::NodeHeaderSize, qint64(XmlStartChunk::NodeHeaderSize) + size);
    appendInteger(&m_output, Line);
    appendInteger(&m_output, XmlStartChunk::NoString);
    appendBytes(&m_output, body.part(0, size));
}

void DocumentRewriter::writeChunk(ChunkType type, const ByteView &body)
{
    appendHeader(&m_output, type, ChunkView::HeaderSize, ChunkView::HeaderSize + body.size());
    appendBytes(&m_output, body);
}

void DocumentRewriter::close(QVector<ByteView> *open, int count, ChunkType type)
{
    while (open->size() > count)
        writeNode(type, open->takeLast(), NameSize);
}

} // namespace SorrelKit
