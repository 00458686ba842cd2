// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/XmlReader.h"

#include "format/StringPoolView.h"

#include <utility>

namespace {

constexpr int NodeHeaderSize = 16; // of the chunk, the line and the comment
constexpr int AttributeSize = 20;
constexpr quint32 NoString = 0xffffffff;
constexpr quint16 UnsetType = 0; // of a document's chunk, as some tools leave it

} // namespace

bool XmlReader::isDocument(const QByteArray &bytes)
{
    const ByteView start(bytes);
    const bool hasType = start.u16(0) == quint16(ChunkType::Xml) || start.u16(0) == UnsetType;
    return hasType && start.u16(2) == ChunkView::HeaderSize;
}

XmlReader::XmlReader(const QByteArray &bytes, qint64 maxCharacters)
    : m_maxCharacters(qMin(maxCharacters, MaxCharacters))
{
    const ChunkView document = ChunkView::at(ByteView(bytes), 0);
    if (document.isValid() && (document.type() == ChunkType::Xml || quint16(document.type()) == UnsetType))
        readNodes(document);
    else
        m_fault = QStringLiteral("not a binary XML document");
}

void XmlReader::readNodes(const ChunkView &document)
{
    StringPoolView strings;
    ByteView ids;
    QVector<XmlElement> open; // from the root down to the innermost
    ChunkList chunks(document.bytes(), document.headerSize());
    while (chunks.hasNext() && m_fault.isEmpty()) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::StringPool) {
            strings = StringPoolView(chunk);
            m_strings.clear();
        } else if (chunk.type() == ChunkType::XmlResourceMap) {
            ids = chunk.bytes().from(chunk.headerSize());
        } else if (chunk.type() == ChunkType::XmlStartElement && (m_root.isNull() || !open.isEmpty())) {
            XmlElement element;
            if (open.size() >= MaxDepth)
                m_fault = QStringLiteral("elements nested too deeply");
            else if (readStart(chunk, strings, ids, &element))
                open.append(element);
        } else if (chunk.type() == ChunkType::XmlEndElement && !open.isEmpty()) {
            close(&open);
        }
    }
    if (m_fault.isEmpty() && (chunks.isDamaged() || !open.isEmpty()))
        m_fault = QStringLiteral("damaged XML document");
    while (!open.isEmpty())
        close(&open);
    if (m_fault.isEmpty() && m_root.isNull())
        m_fault = QStringLiteral("XML document without an element");
}

void XmlReader::close(QVector<XmlElement> *open)
{
    XmlElement element = open->takeLast();
    if (open->isEmpty())
        m_root = std::move(element);
    else
        open->last().children.append(std::move(element));
}

// Body: namespace, name, start of the attributes u16 (from here on), size of one u16, their count u16. An attribute:
// namespace, name, text, all of them indices of strings, and a value.
bool XmlReader::readStart(const ChunkView &chunk, const StringPoolView &strings, const ByteView &ids,
                          XmlElement *element)
{
    const ByteView body = chunk.bytes().from(qMax(chunk.headerSize(), NodeHeaderSize));
    const qint64 start = body.u16(8);
    const qint64 size = body.u16(10);
    const int count = body.u16(12);
    if (count > 0 && (size < AttributeSize || !body.has(start, size * count))) {
        m_fault = QStringLiteral("damaged XML element");
        return false;
    }
    m_nodes += 1 + count;
    if (m_nodes > MaxNodes) {
        m_fault = QStringLiteral("too many nodes in XML document");
        return false;
    }
    element->name = string(strings, body.u32(4));
    if (element->name.isEmpty())
        m_fault = QStringLiteral("XML element without a name");
    element->attributes.reserve(count);
    for (int i = 0; i < count && m_fault.isEmpty(); ++i) {
        const ByteView record = body.part(start + i * size, size);
        const quint32 name = record.u32(4);
        XmlAttribute attribute;
        attribute.value = TypedValue::read(record, 12);
        attribute.id = ids.u32(4 * qint64(name));
        // Those of Android's are told apart by their ids.
        if (attribute.id == 0)
            attribute.name = string(strings, name);
        readText(record.u32(8), strings, &attribute);
        element->attributes.append(attribute);
    }
    return m_fault.isEmpty();
}

// Android asks for its own attributes by their ids and gets their values; the names of packages and splits, which have no
// id, it gets as they were written.
void XmlReader::readText(quint32 raw, const StringPoolView &strings, XmlAttribute *attribute)
{
    const bool isString = attribute->value.type == ValueType::String;
    const bool isWritten = raw != NoString && (!isString || raw != attribute->value.data);
    if (isWritten)
        attribute->raw = string(strings, raw);
    if (isWritten && (attribute->id == 0 || attribute->value.isNull()))
        attribute->text = attribute->raw;
    else if (isString)
        attribute->text = string(strings, attribute->value.data);
}

QString XmlReader::string(const StringPoolView &strings, quint32 index)
{
    auto known = m_strings.constFind(index);
    if (known == m_strings.cend())
        known = m_strings.insert(index, strings.at(index));
    QString text = *known;
    m_characters += text.size();
    if (m_characters > m_maxCharacters)
        m_fault = QStringLiteral("too long texts in XML document");
    return text;
}
