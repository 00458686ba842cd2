// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AttributeTexts.h"

#include "format/AndroidAttributes.h"
#include "format/XmlNodes.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr quint32 FirstNegative = 0x80000000; ///< libsorrel takes indices for signed, and a negative one for no string

// Whether the attribute is a text. In the text of any other, a word may be the name of a number.
bool isText(quint32 id)
{
    constexpr quint32 Ids[] = {Attr::Label, Attr::Name, Attr::TargetActivity, Attr::VersionName};
    return std::find(std::begin(Ids), std::end(Ids), id) != std::end(Ids);
}

} // namespace

AttributeTexts::AttributeTexts(const QByteArray &manifest)
{
    XmlNodes nodes{ByteView(manifest)};
    m_strings = nodes.strings();
    while (nodes.next()) {
        if (nodes.type() != ChunkType::XmlStartElement)
            continue;
        const XmlStartChunk start(nodes.body());
        for (int i = 0; i < start.attributeCount(); ++i)
            compare(start.attribute(i), nodes.resourceId(start.attribute(i).name));
    }
}

void AttributeTexts::compare(const XmlStartChunk::Attribute &attribute, quint32 id)
{
    if (id == 0 || agrees(id, attribute.raw, attribute.value))
        return;
    ++m_differentTexts;
    if (m_names.size() == MaxNames)
        return;
    const QString name = string(attribute.name);
    if (!m_names.contains(name))
        m_names.append(name);
}

bool AttributeTexts::agrees(quint32 id, quint32 raw, const TypedValue &value)
{
    const bool isString = value.type == ValueType::String;
    if (raw >= FirstNegative || value.isNull() || (isString && raw == value.data) || m_compared > MaxCompared)
        return true;
    const QString text = string(raw);
    if (isString)
        return text == string(value.data);
    if (value.isReference())
        return text.startsWith(QLatin1Char('@'));
    if (value.isThemeAttribute())
        return text.startsWith(QLatin1Char('?'));
    if (value.type == ValueType::Boolean)
        return text == value.plainText();
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber, 0);
    const bool isInteger = value.type == ValueType::Decimal || value.type == ValueType::Hexadecimal;
    return isInteger && isNumber ? quint32(number) == value.data : !isText(id);
}

QString AttributeTexts::string(quint32 index)
{
    constexpr int MaxLength = 0x7fff;
    QString text = m_strings.at(index, MaxLength);
    m_compared += int(text.size());
    return text;
}
