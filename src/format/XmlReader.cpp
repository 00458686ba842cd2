// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/XmlReader.h"

#include "format/StringPoolView.h"
#include "format/XmlStartChunk.h"

#include <utility>

namespace {

bool isDocumentType(ChunkType type)
{
    return type == ChunkType::Xml || type == ChunkType::Untyped;
}

} // namespace

bool XmlReader::isDocument(const QByteArray &bytes)
{
    const ByteView start(bytes);
    return isDocumentType(ChunkType(start.u16(0))) && start.u16(ChunkView::HeaderSizeAt) == ChunkView::HeaderSize;
}

XmlReader::XmlReader(const QByteArray &bytes, qint64 maxCharacters)
    : m_maxCharacters(qMin(maxCharacters, MaxCharacters))
{
    const ChunkView document = ChunkView::at(ByteView(bytes), 0);
    if (document.isValid() && isDocumentType(document.type()))
        readNodes(document);
    else
        m_fault = FormatFault::NoDocument;
}

void XmlReader::readNodes(const ChunkView &document)
{
    StringPoolView strings;
    ByteView ids;
    QVector<XmlElement> open; // from the root down to the innermost
    ChunkList chunks(document.bytes(), document.headerSize());
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::StringPool) {
            strings = StringPoolView(chunk);
            // No more than the offsets in the chunk have room for.
            m_strings.assign(size_t(strings.count()), QString());
        } else if (chunk.type() == ChunkType::XmlResourceMap) {
            ids = chunk.bytes().from(chunk.headerSize());
        } else if (chunk.type() == ChunkType::XmlStartElement && (m_root.isNull() || !open.isEmpty())) {
            XmlElement element;
            if (open.size() >= MaxDepth)
                m_fault = FormatFault::ElementsTooDeep;
            else if (readStart(XmlStartChunk(chunk), strings, ids, &element))
                open.append(std::move(element));
        } else if (chunk.type() == ChunkType::XmlEndElement && !open.isEmpty()) {
            close(&open);
        }
    }
    if (m_fault == FormatFault::None && (chunks.isDamaged() || !open.isEmpty()))
        m_fault = FormatFault::DamagedDocument;
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

bool XmlReader::readStart(const XmlStartChunk &start, const StringPoolView &strings, const ByteView &ids,
                          XmlElement *element)
{
    if (!start.isValid()) {
        m_fault = FormatFault::DamagedElement;
        return false;
    }
    const int count = start.attributeCount();
    m_nodes += 1 + count;
    if (m_nodes > MaxNodes) {
        m_fault = FormatFault::TooManyNodes;
        return false;
    }
    element->name = string(strings, start.name());
    if (element->name.isEmpty())
        m_fault = FormatFault::UnnamedElement;
    element->attributes.reserve(count);
    for (int i = 0; i < count && m_fault == FormatFault::None; ++i) {
        const XmlStartChunk::Attribute record = start.attribute(i);
        XmlAttribute attribute;
        attribute.value = record.value;
        attribute.id = ids.u32(4 * qint64(record.name));
        // Android's attributes are identified by their ids.
        if (attribute.id == 0)
            attribute.name = string(strings, record.name);
        readText(record.raw, strings, &attribute);
        element->attributes.append(std::move(attribute));
    }
    return m_fault == FormatFault::None;
}

// Android looks up its own attributes by their ids and takes their values. It takes the names of packages and splits,
// which have no id, as they were written.
void XmlReader::readText(quint32 raw, const StringPoolView &strings, XmlAttribute *attribute)
{
    const bool isString = attribute->value.type == ValueType::String;
    const bool isWritten = raw != XmlStartChunk::NoString && (!isString || raw != attribute->value.data);
    if (isWritten)
        attribute->raw = string(strings, raw);
    if (isWritten && (attribute->id == 0 || attribute->value.isNull()))
        attribute->text = attribute->raw;
    else if (isString)
        attribute->text = string(strings, attribute->value.data);
}

QString XmlReader::string(const StringPoolView &strings, quint32 index)
{
    if (index >= m_strings.size())
        return {};
    QString &text = m_strings[index];
    if (text.isNull())
        text = strings.at(index);
    m_characters += text.size();
    if (m_characters > m_maxCharacters)
        m_fault = FormatFault::TextsTooLong;
    return text;
}
