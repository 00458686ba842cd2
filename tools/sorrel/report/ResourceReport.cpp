// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourceReport.h"

#include "PrintableText.h"

#include <QJsonArray>

#include <algorithm>
#include <cwchar>

using SorrelKit::ResourceItem;
using SorrelKit::ResourceValue;

namespace {

QString idText(quint32 id)
{
    return QStringLiteral("0x%1").arg(id, 8, 16, QLatin1Char('0'));
}

// The columns of a character on a terminal; 1 when the locale does not know the character.
int columnsOf(char32_t character)
{
    const int columns = wcwidth(wchar_t(character));
    return columns < 0 ? 1 : columns;
}

// The number of UTF-16 units at the start of @p text that fit into @p columns. Sets @p used to their columns.
int fitting(const QString &text, int columns, int &used)
{
    used = 0;
    int at = 0;
    while (at < text.size()) {
        const bool isPair = text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
        const char32_t character =
            isPair ? QChar::surrogateToUcs4(text.at(at), text.at(at + 1)) : char32_t(text.at(at).unicode());
        const int wanted = columnsOf(character);
        if (wanted > columns - used)
            break;
        used += wanted;
        at += isPair ? 2 : 1;
    }
    return at;
}

int widthOf(const QString &text)
{
    int used = 0;
    fitting(text, 2 * int(text.size()), used);
    return used;
}

QString cut(const QString &text, int columns)
{
    int used = 0;
    if (fitting(text, columns, used) == text.size())
        return text;
    return columns > 0 ? text.left(fitting(text, columns - 1, used)) + QChar(0x2026) : QString();
}

QString padded(const QString &text, int columns)
{
    return text + QString(qMax(0, columns - widthOf(text)), QLatin1Char(' '));
}

QString itemCount(const ResourceValue &value)
{
    return value.items().size() == 1 ? QStringLiteral("1 item") : QStringLiteral("%1 items").arg(value.items().size());
}

bool isMap(const ResourceValue &value)
{
    return value.type() == ResourceValue::Type::Map;
}

// A value on one line. For a map, this is its parent, if any, and the number of its items.
QString valueText(const ResourceValue &value)
{
    if (!isMap(value))
        return printableText(value.text());
    return (value.text().isEmpty() ? QString() : printableText(value.text()) + QStringLiteral(", ")) + itemCount(value);
}

QString configurationText(const ResourceValue &value)
{
    return value.configuration().isEmpty() ? QStringLiteral("(default)") : printableText(value.configuration());
}

QString itemLines(const ResourceValue &value, const TextStyle &style)
{
    constexpr int Indent = 4;
    int width = 0;
    for (const ResourceItem &item : value.items())
        width = qMax(width, widthOf(printableText(item.name())));
    QString lines;
    for (const ResourceItem &item : value.items())
        lines += QString(Indent, QLatin1Char(' ')) + style.key(padded(printableText(item.name()), width))
                 + QStringLiteral("  ") + printableText(item.text()) + QLatin1Char('\n');
    return lines;
}

QJsonArray itemsToJson(const ResourceValue &value)
{
    QJsonArray items;
    for (const ResourceItem &item : value.items())
        items.append(QJsonObject{{QStringLiteral("name"), item.name()},
                                 {QStringLiteral("type"), item.typeName()},
                                 {QStringLiteral("text"), item.text()}});
    return items;
}

QJsonObject valueToJson(const ResourceValue &value)
{
    QJsonObject json{{QStringLiteral("configuration"), value.configuration()},
                     {QStringLiteral("type"), value.typeName()},
                     {QStringLiteral("text"), value.text()}};
    if (isMap(value))
        json.insert(QStringLiteral("items"), itemsToJson(value));
    return json;
}

} // namespace

int ResourceReport::nameWidth() const
{
    int width = 0;
    for (const quint32 id : m_resources.ids()) {
        width = qMax(width, widthOf(printableText(m_resources.name(id))));
        if (width >= MaxNameWidth)
            return MaxNameWidth;
    }
    return width;
}

QString ResourceReport::toLine(quint32 id, int nameWidth, int columns, const TextStyle &style) const
{
    const ResourceValue value = m_resources.defaultValue(id);
    QString name = padded(printableText(m_resources.name(id)), nameWidth);
    QString text = valueText(value);
    QString configuration =
        value.configuration().isEmpty() ? QString() : QStringLiteral(" (%1)").arg(configurationText(value));
    if (columns > 0) {
        const auto take = [&columns](QString &part) {
            part = cut(part, qMax(0, columns));
            columns -= widthOf(part);
        };
        columns -= int(idText(id).size()) + 2;
        take(name);
        columns -= 2;
        take(text);
        take(configuration);
    }
    return style.faint(idText(id)) + QStringLiteral("  ") + name + QStringLiteral("  ") + text
           + style.faint(configuration) + QLatin1Char('\n');
}

QString ResourceReport::toText(quint32 id, const TextStyle &style) const
{
    const QList<ResourceValue> values = m_resources.values(id);
    int configurationWidth = 0;
    int typeWidth = 0;
    for (const ResourceValue &value : values) {
        configurationWidth = qMax(configurationWidth, widthOf(configurationText(value)));
        typeWidth = qMax(typeWidth, int(value.typeName().size()));
    }
    QString text = style.faint(idText(id)) + QStringLiteral("  ") + style.title(printableText(m_resources.name(id)))
                   + QLatin1Char('\n');
    for (const ResourceValue &value : values) {
        text += QStringLiteral("  %1  %2  %3\n")
                    .arg(style.key(padded(configurationText(value), configurationWidth)),
                         style.faint(padded(value.typeName(), typeWidth)), valueText(value));
        text += itemLines(value, style);
    }
    return text;
}

QJsonObject ResourceReport::toJson(quint32 id) const
{
    QJsonArray values;
    for (const ResourceValue &value : m_resources.values(id))
        values.append(valueToJson(value));
    QJsonObject json = m_file.toJson();
    json.insert(QStringLiteral("id"), idText(id));
    json.insert(QStringLiteral("name"), m_resources.name(id));
    json.insert(QStringLiteral("values"), values);
    return json;
}
