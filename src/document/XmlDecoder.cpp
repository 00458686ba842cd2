// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/XmlDecoder.h"

#include "document/AndroidNamespace.h"
#include "document/XmlSink.h"
#include "format/AndroidAttributes.h"
#include "format/XmlStartChunk.h"
#include "stream/ChunkWalker.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"

#include <iterator>
#include <limits>

namespace {

constexpr quint32 UnknownResourceId = 0xffffffff;

} // namespace

XmlDecoder::XmlDecoder(XmlSink *sink) : m_sink(sink), m_pool(QString()), m_strings(m_pool) {}

void XmlDecoder::decode(Extractor *reader, const ApkResourcesData &resources)
{
    m_reader = reader;
    m_resources = &resources;
    m_openElements.clear();
    m_androidNames.clear();
    m_nodes = 0;
    m_nameCharacters = 0;
    parseChunk();
    reader->release();
}

void XmlDecoder::parseChunk()
{
    ChunkWalker chunk(m_reader);
    while (chunk.next()) {
        if (chunk.type() >= ChunkType::XmlFirstNode && chunk.type() <= ChunkType::XmlLastNode)
            skipNodeHeader();
        switch (chunk.type()) {
        case ChunkType::StringPool:
            m_pool.load(m_reader, chunk.headerSize());
            m_strings.clear();
            break;
        case ChunkType::Xml:
            m_pool.clear();
            m_strings.clear();
            chunk.enter();
            break;
        case ChunkType::XmlStartNamespace:
        case ChunkType::XmlEndNamespace:
            parseNamespaceChunk(chunk.type() == ChunkType::XmlStartNamespace);
            break;
        case ChunkType::XmlStartElement:
            parseStartElementChunk();
            break;
        case ChunkType::XmlEndElement:
            parseEndElementChunk();
            break;
        case ChunkType::XmlResourceMap:
            parseResourceIdMap(chunk.headerSize());
            break;
        default:
            m_sink->addOddity(m_reader, {Diagnostics::Code::UnexpectedDocumentChunk, unsigned(qint16(chunk.type()))});
        }
    }
}

void XmlDecoder::skipNodeHeader()
{
    m_reader->get32(); // line number
    const int comment = m_reader->get32();
    if (comment >= m_pool.count())
        m_pool.get(comment); // which is a fault
}

void XmlDecoder::parseResourceIdMap(int headerSize)
{
    m_reader->skip(headerSize - ChunkView::HeaderSize);
    const qint64 byteCount = qMin(m_reader->remaining(), qint64(std::numeric_limits<int>::max()));
    m_resourceIds = m_reader->getu32_vector(int(qMax(byteCount, qint64(-1))));
}

void XmlDecoder::parseNamespaceChunk(bool start)
{
    const QString prefix = nameAt(m_reader->get32());
    const QString uri = nameAt(m_reader->get32());
    if (m_reader->failed() || !countNodes(1))
        return;
    m_androidNames.clear();
    if (start)
        m_namespaces.bind(uri, prefix);
    else
        m_namespaces.release(uri, prefix);
}

void XmlDecoder::parseEndElementChunk()
{
    const int namespaceIndex = m_reader->get32();
    const QString name = m_strings.get(m_reader->get32());
    if (m_reader->failed())
        return;
    if (namespaceIndex >= m_pool.count())
        m_pool.get(namespaceIndex); // which is a fault
    if (m_openElements.isEmpty() || name != m_openElements.constLast()) {
        m_reader->setError(QStringLiteral("closing tag does not match opening tag"));
        return;
    }
    m_openElements.removeLast();
    m_sink->endElement();
}

void XmlDecoder::parseStartElementChunk()
{
    const int namespaceIndex = m_reader->get32();
    const QString name = nameAt(m_reader->get32());
    const int attributeStart = m_reader->get16();
    const int attributeSize = m_reader->get16();
    const int attributeCount = m_reader->get16();
    m_reader->skip(attributeStart - XmlStartChunk::FieldsSize);
    if (attributeSize < XmlStartChunk::AttributeSize)
        m_reader->setError(QStringLiteral("bad attr size in XML element"));
    if (m_reader->failed())
        return;
    if (!isWithinCeilings(qMax(0, attributeCount)))
        return;

    const QString tagName = startElement(namespaceIndex, name);
    for (int i = 0; i < attributeCount; ++i) {
        m_reader->pushBoundary(attributeSize);
        parseAttribute();
        m_reader->popBoundary();
    }
    m_sink->endAttributes();
    // An element without a name is no element; the next one is a top-level element again.
    if (tagName.isEmpty())
        m_openElements.clear();
    else
        m_openElements.append(tagName);
}

bool XmlDecoder::isWithinCeilings(int attributeCount)
{
    QString fault;
    if (m_openElements.size() >= MaxElementDepth)
        fault = QStringLiteral("elements nested too deeply");
    else if (attributeCount > MaxAttributes)
        fault = QStringLiteral("too many attributes in XML element");
    if (!fault.isNull())
        m_reader->setError(fault);
    return fault.isNull() && countNodes(1 + attributeCount);
}

bool XmlDecoder::countNodes(int count)
{
    m_nodes += count;
    if (m_nodes > MaxNodes)
        m_reader->setError(QStringLiteral("too many nodes in XML document"));
    return m_nodes <= MaxNodes;
}

// A string of the pool that is a name, a prefix or a URI.
QString XmlDecoder::nameAt(int index)
{
    QString name = m_strings.get(index);
    if (name.size() <= MaxNameLength)
        return name;
    m_reader->setError(QStringLiteral("too long name in XML document"));
    return {};
}

void XmlDecoder::countCharacters(int count)
{
    m_nameCharacters = int(qMin(qint64(m_nameCharacters) + count, qint64(MaxNameCharacters) + 1));
    if (m_nameCharacters > MaxNameCharacters)
        m_reader->setError(QStringLiteral("too long names in XML document"));
}

QString XmlDecoder::startElement(int namespaceIndex, const QString &name)
{
    if (namespaceIndex < 0)
        return m_sink->startElement(name);
    const QString uri = nameAt(namespaceIndex);
    if (!m_namespaces.isBound(uri))
        m_sink->addOddity(m_reader, {Diagnostics::Code::UnknownElementNamespace, 0, uri, name});
    return m_sink->startElement(uri, qualifiedName(uri, name));
}

void XmlDecoder::parseAttribute()
{
    const int namespaceIndex = m_reader->get32();
    const int nameIndex = m_reader->get32();
    const int rawValue = m_reader->get32();
    m_reader->skip(3); // size of the value, reserved
    const int dataType = m_reader->get8();
    const int data = m_reader->get32();

    QString value;
    if (rawValue >= 0)
        value = m_strings.get(rawValue);
    else if (dataType == int(ValueType::Reference) || dataType == int(ValueType::Attribute))
        value = referenceText(data);
    else
        value = m_strings.valueToString(dataType, data);

    const int attribute = indexOfAndroidAttribute(resourceIdOf(nameIndex));
    if (attribute >= 0) {
        m_sink->addAttribute(androidNamespace, qualifiedAndroidName(attribute), value);
        return;
    }
    const QString name = nameAt(nameIndex);
    if (namespaceIndex < 0) {
        m_sink->addAttribute(name, value);
        return;
    }
    const QString uri = nameAt(namespaceIndex);
    if (!m_namespaces.isBound(uri))
        m_sink->addOddity(m_reader, {Diagnostics::Code::UnknownAttributeNamespace, 0, uri});
    m_sink->addAttribute(uri, qualifiedName(uri, name), value);
}

quint32 XmlDecoder::resourceIdOf(int nameIndex) const
{
    if (nameIndex < 0 || nameIndex >= m_resourceIds.size())
        return UnknownResourceId;
    return m_resourceIds.at(nameIndex);
}

// Nearly all names of a manifest are these, so each qualified name is made once.
QString XmlDecoder::qualifiedAndroidName(int attribute)
{
    m_androidNames.resize(int(std::size(AndroidAttributes)));
    QString &known = m_androidNames[attribute];
    if (!known.isNull() && m_nameCharacters + known.size() <= MaxNameCharacters) {
        countCharacters(int(known.size()));
        return known;
    }
    QString qualified = qualifiedName(androidNamespace, QLatin1String(AndroidAttributes[attribute].name));
    if (m_namespaces.isBound(androidNamespace))
        known = qualified;
    else
        m_sink->addOddity(m_reader, {Diagnostics::Code::NoAndroidNamespace});
    return qualified;
}

// A URI that is not bound gives a colon without a prefix, which is kept on purpose.
QString XmlDecoder::qualifiedName(const QString &uri, const QString &name)
{
    const QString qualified = m_namespaces.prefix(uri) + QLatin1Char(':') + name;
    countCharacters(int(qualified.size()));
    return m_nameCharacters > MaxNameCharacters ? QString(QLatin1Char(':')) : qualified;
}

QString XmlDecoder::referenceText(int id)
{
    const QString text = m_resources->refToString(id);
    countCharacters(int(text.size()));
    return m_nameCharacters > MaxNameCharacters ? QString() : text;
}

const char *XmlDecoder::androidAttributeName(int id)
{
    const int attribute = indexOfAndroidAttribute(quint32(id));
    return attribute >= 0 ? AndroidAttributes[attribute].name : nullptr;
}
