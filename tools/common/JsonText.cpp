// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JsonText.h"

#include "PrintableText.h"

#include <QJsonArray>
#include <QLocale>

#include <algorithm>

namespace {

/// The size of most reports.
constexpr int UsualBytes = 4096;

// The escape for the character of @p size units at @p first; empty when it needs none.
QByteArray escapeOf(const QString &text, int first, int size, char32_t character)
{
    switch (character) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\b':
        return "\\b";
    case '\f':
        return "\\f";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    case QChar::ReplacementCharacter:
        return "\xef\xbf\xbd"; // the character may be half of a surrogate pair
    default:
        break;
    }
    QByteArray escape;
    for (int i = 0; steersText(character) && i < size; ++i)
        escape += "\\u" + QByteArray::number(text.at(first + i).unicode(), 16).rightJustified(4, '0');
    return escape;
}

bool needsNoEscape(QChar unit)
{
    return unit >= QLatin1Char(' ') && unit <= QLatin1Char('~') && unit != QLatin1Char('"')
           && unit != QLatin1Char('\\');
}

void appendText(QByteArray &json, const QString &text)
{
    // Most texts are short and plain, so they are written in place.
    if (std::all_of(text.cbegin(), text.cend(), needsNoEscape)) {
        const auto start = json.size();
        json.resize(start + text.size() + 2);
        char *const place = json.data() + start;
        *place = '"';
        *std::transform(text.cbegin(), text.cend(), place + 1, [](QChar unit) { return unit.toLatin1(); }) = '"';
        return;
    }
    int written = 0;
    json += '"';
    forEachCharacter(text, [&](int first, int size, char32_t character) {
        const QByteArray escape = escapeOf(text, first, size, character);
        if (escape.isEmpty())
            return;
        json += text.mid(written, first - written).toUtf8() + escape;
        written = first + size;
    });
    json += text.mid(written).toUtf8() + '"';
}

QByteArray numberText(double number)
{
    constexpr double MaxExact = 9007199254740992.0; // 2^53
    const bool isInteger = number >= -MaxExact && number <= MaxExact && number == double(qint64(number));
    return isInteger ? QByteArray::number(qint64(number))
                     : QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
}

// The recursion ends: every report has only a few levels.
void appendValue(QByteArray &json, const QJsonValue &value)
{
    const char *separator = "";
    switch (value.type()) {
    case QJsonValue::String:
        appendText(json, value.toString());
        break;
    case QJsonValue::Double:
        json += numberText(value.toDouble());
        break;
    case QJsonValue::Bool:
        json += value.toBool() ? "true" : "false";
        break;
    case QJsonValue::Array: {
        json += '[';
        const QJsonArray array = value.toArray();
        for (const QJsonValue &item : array) {
            json += separator;
            appendValue(json, item);
            separator = ",";
        }
        json += ']';
        break;
    }
    case QJsonValue::Object: {
        json += '{';
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member) {
            json += separator;
            appendText(json, member.key());
            json += ':';
            appendValue(json, member.value());
            separator = ",";
        }
        json += '}';
        break;
    }
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        json += "null";
        break;
    }
}

} // namespace

QByteArray jsonText(const QJsonObject &object)
{
    QByteArray json;
    json.reserve(UsualBytes);
    appendValue(json, object);
    return json;
}
