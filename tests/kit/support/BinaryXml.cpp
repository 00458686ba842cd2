// SPDX-License-Identifier: LGPL-2.1-or-later
#include "BinaryXml.h"

#include "XmlBuilder.h"

#include <QSet>


namespace fixture {

namespace {

// Attributes with an id are told apart by it, and may have any name.
QString nameOf(quint32 id)
{
    return QStringLiteral("id%1").arg(id, 8, 16, QLatin1Char('0'));
}

void collectIds(const XmlElement &element, QSet<quint32> *known, XmlBuilder *builder)
{
    for (const XmlAttribute &attribute : element.attributes) {
        if (attribute.id == 0 || known->contains(attribute.id))
            continue;
        known->insert(attribute.id);
        builder->attributeId(nameOf(attribute.id), attribute.id);
    }
    for (const XmlElement &child : element.children)
        collectIds(child, known, builder);
}

void write(const XmlElement &element, XmlBuilder *builder)
{
    QVector<Attribute> attributes;
    for (const XmlAttribute &attribute : element.attributes) {
        const bool isText = attribute.value.type == ValueType::String;
        const qint64 data = isText ? builder->index(attribute.text) : qint64(attribute.value.data);
        attributes.append({attribute.id != 0 ? androidUri : QString(),
                           attribute.id != 0 ? nameOf(attribute.id) : attribute.name,
                           attribute.text.isEmpty() ? QString() : attribute.text, int(attribute.value.type), data});
    }
    builder->start(element.name, attributes);
    for (const XmlElement &child : element.children)
        write(child, builder);
    builder->end(element.name);
}

} // namespace

QByteArray binaryXml(const XmlElement &root)
{
    XmlBuilder builder;
    QSet<quint32> ids;
    collectIds(root, &ids, &builder);
    write(root, &builder);
    return builder.build();
}

} // namespace fixture
