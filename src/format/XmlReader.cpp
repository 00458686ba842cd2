// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/XmlReader.h"

#include "format/XmlNodes.h"
#include "format/XmlStartChunk.h"

#include <utility>

bool XmlReader::isDocument(const QByteArray &bytes)
{
    const ByteView start(bytes);
    const auto type = ChunkType(start.u16(0));
    const bool isUsual = (type == ChunkType::Xml || type == ChunkType::Untyped)
                         && start.u16(ChunkView::HeaderSizeAt) == ChunkView::HeaderSize;
    // A picture has no string pool and no node.
    return isUsual || XmlNodes(start).fault() == FormatFault::None;
}

XmlReader::XmlReader(const QByteArray &bytes, qint64 maxCharacters)
    : m_maxCharacters(qMin(maxCharacters, MaxCharacters))
{
    XmlNodes nodes{ByteView(bytes)};
    m_fault = nodes.fault();
    if (m_fault == FormatFault::None)
        readNodes(&nodes);
    m_oddities = std::move(nodes.oddities());
}

void XmlReader::readNodes(XmlNodes *nodes)
{
    // No more than the offsets in the pool have room for.
    m_strings.assign(size_t(nodes->strings().count()), QString());
    QVector<XmlElement> open; // from the root down to the innermost
    bool isPastRoot = false;
    while (m_fault == FormatFault::None && nodes->next()) {
        if (nodes->type() == ChunkType::XmlStartElement && !isPastRoot) {
            XmlElement element;
            if (open.size() >= MaxDepth)
                m_fault = FormatFault::ElementsTooDeep;
            else if (readStart(XmlStartChunk(nodes->body()), nodes, &element))
                open.append(std::move(element));
        } else if (nodes->type() == ChunkType::XmlEndElement && !open.isEmpty()) {
            isPastRoot = open.size() == 1;
            close(&open);
        }
    }
    if (nodes->fault() != FormatFault::None && isPastRoot)
        nodes->oddities().add(Oddity::DocumentBytesBehind);
    else if (m_fault == FormatFault::None)
        m_fault = nodes->fault();
    if (m_fault == FormatFault::None && !open.isEmpty())
        nodes->oddities().add(Oddity::NoEndElement, open.last().name);
    while (!open.isEmpty())
        close(&open);
    if (m_fault == FormatFault::None && m_root.isNull())
        m_fault = FormatFault::NoElement;
}

void XmlReader::close(QVector<XmlElement> *open)
{
    XmlElement element = open->takeLast();
    if (open->isEmpty())
        m_root = std::move(element);
    else
        open->last().children.append(std::move(element));
}

bool XmlReader::readStart(const XmlStartChunk &start, XmlNodes *nodes, XmlElement *element)
{
    const int count = start.attributeCount();
    m_nodes += 1 + count;
    if (m_nodes > MaxNodes) {
        m_fault = FormatFault::TooManyNodes;
        return false;
    }
    element->name = string(*nodes, start.name());
    if (element->name.isNull())
        m_fault = FormatFault::UnnamedElement;
    element->attributes.reserve(count);
    for (int i = 0; i < count && m_fault == FormatFault::None; ++i) {
        const XmlStartChunk::Attribute record = start.attribute(i);
        XmlAttribute attribute;
        attribute.value = record.value;
        attribute.id = nodes->resourceId(record.name);
        // Android's attributes are identified by their ids.
        if (attribute.id == 0)
            attribute.name = string(*nodes, record.name);
        if (record.name >= m_strings.size())
            nodes->oddities().add(Oddity::AttributeNameIndex, record.name);
        readText(record.raw, *nodes, &attribute);
        element->attributes.append(std::move(attribute));
    }
    return m_fault == FormatFault::None;
}

// Android looks up its own attributes by their ids and takes their values. It takes the names of packages and splits,
// which have no id, as they were written.
void XmlReader::readText(quint32 raw, const XmlNodes &nodes, XmlAttribute *attribute)
{
    const bool isString = attribute->value.type == ValueType::String;
    const bool isWritten = raw <= XmlStartChunk::LastRawString && (!isString || raw != attribute->value.data);
    if (isWritten)
        attribute->raw = string(nodes, raw);
    if (isWritten && (attribute->id == 0 || attribute->value.isNull()))
        attribute->text = attribute->raw;
    else if (isString)
        attribute->text = string(nodes, attribute->value.data);
}

QString XmlReader::string(const XmlNodes &nodes, quint32 index)
{
    if (index >= m_strings.size())
        return {};
    QString &text = m_strings[index];
    if (text.isNull())
        text = nodes.strings().at(index);
    m_characters += text.size();
    if (m_characters > m_maxCharacters)
        m_fault = FormatFault::TextsTooLong;
    return text;
}
