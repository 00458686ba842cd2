// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/XmlNodes.h"

#include "format/XmlStartChunk.h"

namespace {

constexpr qint64 ResourceIdSize = 4;

bool isNodeType(ChunkType type)
{
    return type >= ChunkType::XmlFirstNode && type <= ChunkType::XmlLastNode;
}

// Bytes that the body of a node has at least; -1 for an unknown node.
int smallestBody(ChunkType type)
{
    switch (type) {
    case ChunkType::XmlStartElement:
        return XmlStartChunk::BodySize;
    case ChunkType::XmlText:
        return 12;
    case ChunkType::XmlStartNamespace:
    case ChunkType::XmlEndNamespace:
    case ChunkType::XmlEndElement:
        return 8;
    default:
        return -1;
    }
}

} // namespace

XmlNodes::XmlNodes(const ByteView &bytes)
{
    const qint64 headerSize = bytes.u16(ChunkView::HeaderSizeAt);
    const qint64 size = bytes.u32(ChunkView::SizeAt);
    if (!bytes.has(0, ChunkView::HeaderSize) || headerSize > size || size > bytes.size()) {
        m_fault = FormatFault::NoDocument;
        return;
    }
    m_document = bytes.part(0, size);
    if (ChunkType(bytes.u16(0)) != ChunkType::Xml)
        m_oddities.add(Oddity::DocumentType, bytes.u16(0));
    if (headerSize != ChunkView::HeaderSize)
        m_oddities.add(Oddity::DocumentHeaderSize, headerSize);
    if (size < bytes.size())
        m_oddities.add(Oddity::DocumentBytesBehind, bytes.size() - size);
    m_next = headerSize;
    findFirst();
}

void XmlNodes::findFirst()
{
    bool hasPool = false;
    bool hasNode = false;
    while (!hasNode && m_fault == FormatFault::None) {
        const qint64 size = m_document.u32(m_next + ChunkView::SizeAt);
        const qint64 left = m_document.size() - m_next;
        if (left <= ChunkView::HeaderSize || left <= size)
            break;
        const auto type = ChunkType(m_document.u16(m_next));
        if (!ChunkView::at(m_document, m_next).isValid()) {
            m_fault = FormatFault::DamagedDocument;
        } else if (type == ChunkType::StringPool) {
            m_pool = m_document.part(m_next, size);
            m_strings = StringPoolView(ChunkView::at(m_document, m_next));
            hasPool = true;
        } else if (type == ChunkType::XmlResourceMap) {
            readResourceMap(m_next, size);
        } else if (isNodeType(type)) {
            hasNode = true;
        } else {
            m_oddities.add(Oddity::UnknownNode, m_document.u16(m_next));
        }
        if (!hasNode)
            m_next += size;
    }
    if (m_fault != FormatFault::None)
        return;
    if (!hasNode)
        m_fault = FormatFault::NoElement;
    else if (!hasPool || !m_strings.isSound())
        m_fault = FormatFault::DamagedPool;
    else if (m_strings.hasOddStyles())
        m_oddities.add(Oddity::DocumentPoolStyles);
}

void XmlNodes::readResourceMap(qint64 at, qint64 size)
{
    const qint64 headerSize = m_document.u16(at + ChunkView::HeaderSizeAt);
    const qint64 count = (size - ChunkView::HeaderSize) / ResourceIdSize;
    if (!m_ids.isEmpty() || headerSize != ChunkView::HeaderSize)
        m_oddities.add(Oddity::DocumentResourceMap, size);
    m_ids = m_document.part(at + headerSize, count * ResourceIdSize);
}

void XmlNodes::countNamespace()
{
    if (m_type == ChunkType::XmlStartNamespace)
        ++m_openNamespaces;
    else if (m_openNamespaces == 0)
        m_oddities.add(Oddity::UnbalancedNamespaces);
    else
        --m_openNamespaces;
}

bool XmlNodes::next()
{
    while (m_fault == FormatFault::None && m_next < m_document.size()) {
        const ChunkView chunk = ChunkView::at(m_document, m_next);
        const qint64 headerSize = chunk.headerSize();
        if (!chunk.isValid() || headerSize < XmlStartChunk::NodeHeaderSize) {
            m_fault = FormatFault::DamagedDocument;
            break;
        }
        const qint64 bodyAt = m_next + headerSize;
        m_next += chunk.size();
        m_type = chunk.type();
        const int smallest = smallestBody(m_type);
        if (smallest < 0) {
            m_oddities.add(Oddity::UnknownNode, qint64(m_type));
            continue;
        }
        m_body = m_document.from(bodyAt);
        const qint64 bodySize = chunk.size() - headerSize;
        if (bodySize < smallest) {
            m_fault = m_type == ChunkType::XmlStartElement ? FormatFault::DamagedElement : FormatFault::DamagedDocument;
            break;
        }
        if (m_type == ChunkType::XmlStartElement) {
            const XmlStartChunk start(m_body);
            if (!start.fits(bodySize)) {
                m_fault = FormatFault::DamagedElement;
                break;
            }
            if (start.hasOddSize())
                m_oddities.add(Oddity::AttributeSize, start.attributeSize());
            return true;
        }
        if (m_type == ChunkType::XmlStartNamespace || m_type == ChunkType::XmlEndNamespace)
            countNamespace();
        return true;
    }
    if (m_fault == FormatFault::None && m_openNamespaces > 0) {
        m_oddities.add(Oddity::UnbalancedNamespaces);
        m_openNamespaces = 0;
    }
    return false;
}
