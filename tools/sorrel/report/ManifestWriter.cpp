// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestWriter.h"

#include "PrintableText.h"

#include <QDomAttr>
#include <QDomNamedNodeMap>
#include <QMap>
#include <QPair>

namespace {

const QLatin1String androidNamespace("http://schemas.android.com/apk/res/android");
const QLatin1String xmlNamespace("http://www.w3.org/XML/1998/namespace");
const QLatin1String xmlnsNamespace("http://www.w3.org/2000/xmlns/");

bool isXmlCharacter(QChar character)
{
    return character >= QLatin1Char(' ')
               ? character < QChar(0xfffe)
               : character == QLatin1Char('\t') || character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

QString xmlText(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else if (text.at(i).isSurrogate() || !isXmlCharacter(text.at(i)))
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

// ASCII letters and digits, and those name characters of XML that are letters or digits of Unicode's first plane.
QString xmlName(QString name)
{
    for (QChar &character : name) {
        if (!character.isLetter() && !character.isDigit() && character != QLatin1Char('-')
            && character != QLatin1Char('.'))
            character = QLatin1Char('_');
    }
    if (name.isEmpty() || (!name.at(0).isLetter() && name.at(0) != QLatin1Char('_')))
        name.prepend(QLatin1Char('_'));
    return name;
}

// XML reads a reference as the same character, and it is harmless on a terminal. The XML writer has escaped the
// characters below DEL, except its own line ends.
QByteArray withReferences(const QByteArray &xml)
{
    constexpr char32_t Delete = 0x7f;
    const QString text = QString::fromUtf8(xml);
    QString safe;
    safe.reserve(text.size());
    forEachCharacter(text, [&](int first, int size, char32_t character) {
        if (character >= Delete && steersText(character))
            safe += QStringLiteral("&#x%1;").arg(uint(character), 0, 16);
        else
            safe.append(text.constData() + first, size);
    });
    return safe.toUtf8();
}

// A DOM has no order of attributes. Sorting them by name prints equal manifests equally.
QList<QDomAttr> sortedAttributes(const QDomElement &element)
{
    QMap<QPair<QString, QString>, QDomAttr> attributes;
    const QDomNamedNodeMap nodes = element.attributes();
    for (int i = 0; i < nodes.length(); ++i) {
        const QDomAttr attribute = nodes.item(i).toAttr();
        attributes.insert({attribute.name(), attribute.namespaceURI()}, attribute);
    }
    return attributes.values();
}

bool isNamespace(const QString &uri)
{
    return !uri.isEmpty() && uri != xmlnsNamespace;
}

} // namespace

QByteArray ManifestWriter::toXml(const QDomElement &root)
{
    QByteArray output;
    ManifestWriter writer(&output);
    writer.bind(androidNamespace, QStringLiteral("android"));
    writer.collectNamespaces(root);
    writer.m_xml.writeStartDocument();
    for (auto it = writer.m_prefixes.cbegin(); it != writer.m_prefixes.cend(); ++it) {
        if (it.key() != xmlNamespace)
            writer.m_xml.writeNamespace(xmlText(it.key()), it.value());
    }
    writer.writeElement(root);
    writer.m_xml.writeEndDocument();
    return withReferences(output);
}

ManifestWriter::ManifestWriter(QByteArray *output) : m_xml(output), m_usedPrefixes({QString(), QStringLiteral("xmlns")})
{
    bind(xmlNamespace, QStringLiteral("xml"));
    m_xml.setAutoFormatting(true);
}

void ManifestWriter::bind(const QString &uri, const QString &wantedPrefix)
{
    if (!isNamespace(uri) || m_prefixes.contains(uri))
        return;
    QString prefix = wantedPrefix.isEmpty() ? QString() : xmlName(wantedPrefix);
    for (int number = 1; m_usedPrefixes.contains(prefix); ++number)
        prefix = QStringLiteral("ns%1").arg(number);
    m_prefixes.insert(uri, prefix);
    m_usedPrefixes.insert(prefix);
}

void ManifestWriter::collectNamespaces(const QDomElement &element)
{
    bind(element.namespaceURI(), element.prefix());
    for (const QDomAttr &attribute : sortedAttributes(element))
        bind(attribute.namespaceURI(), attribute.prefix());
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        collectNamespaces(child);
}

void ManifestWriter::writeElement(const QDomElement &element)
{
    const QString name = xmlName(element.tagName());
    if (isNamespace(element.namespaceURI()))
        m_xml.writeStartElement(xmlText(element.namespaceURI()), name);
    else
        m_xml.writeStartElement(name);
    writeAttributes(element);
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        writeElement(child);
    m_xml.writeEndElement();
}

void ManifestWriter::writeAttributes(const QDomElement &element)
{
    QSet<QPair<QString, QString>> written;
    for (const QDomAttr &attribute : sortedAttributes(element)) {
        QString name = xmlName(attribute.localName().isNull() ? attribute.name() : attribute.localName());
        const QString uri = isNamespace(attribute.namespaceURI()) ? attribute.namespaceURI() : QString();
        while (written.contains({uri, name}))
            name += QLatin1Char('_');
        written.insert({uri, name});
        if (!uri.isEmpty())
            m_xml.writeAttribute(xmlText(uri), name, xmlText(attribute.value()));
        else
            m_xml.writeAttribute(name, xmlText(attribute.value()));
    }
}
