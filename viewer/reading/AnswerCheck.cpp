// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AnswerCheck.h"

#include "Protocol.h"

#include <QByteArray>
#include <QJsonArray>
#include <QVector>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace {

using namespace Viewer;

enum class Kind {
    None,
    Truth,
    Count,   ///< an integer from 0 that a double has exactly
    Digits,  ///< the text of a decimal number
    Text,    ///< at most Protocol::MaxTextLength characters
    Long,    ///< at most Protocol::MaxManifestLength
    Picture, ///< a PNG picture in Base64, or an empty text
    Object,
    Array,
    Texts, ///< an array of texts
    Fault, ///< null, or an object of `code` and `message`
};

struct Member {
    const char *name = nullptr;
    Kind kind = Kind::None;
    bool isOptional = false;
};

constexpr int MaxMembers = 16;

/// A topic: its members, and those of each of its items.
struct Topic {
    const char *name = nullptr;
    Member members[MaxMembers] = {};
    Member items[MaxMembers] = {};
    bool isReport = false; ///< whether a schema describes more members than are listed here
};

constexpr Member HeadMembers[MaxMembers] = {
    {"packageName", Kind::Text}, {"versionName", Kind::Text}, {"versionCode", Kind::Digits}, {"minSdk", Kind::Count},
    {"targetSdk", Kind::Count},  {"label", Kind::Text},       {"isSet", Kind::Truth},        {"fileSize", Kind::Count},
    {"error", Kind::Fault},      {"sandbox", Kind::Texts},
};

constexpr Topic Topics[] = {
    {"hello", {{"protocol", Kind::Count}}, {}},
    {"head", {}, {}},
    {"otherHead", {}, {}},
    {"icon",
     {{"size", Kind::Count},
      {"shape", Kind::Text},
      {"night", Kind::Truth},
      {"monochrome", Kind::Truth},
      {"png", Kind::Picture}},
     {}},
    {"drawable", {{"name", Kind::Text}, {"size", Kind::Count}, {"png", Kind::Picture}}, {}},
    {"signature",
     {{"verified", Kind::Truth},
      {"signers", Kind::Array},
      {"errors", Kind::Array},
      {"warnings", Kind::Array},
      {"packages", Kind::Array, true}},
     {},
     true},
    {"permissions",
     {},
     {{"name", Kind::Text},
      {"label", Kind::Text},
      {"description", Kind::Text},
      {"isDangerous", Kind::Truth},
      {"group", Kind::Text}}},
    {"launchers",
     {},
     {{"className", Kind::Text},
      {"label", Kind::Text},
      {"isShown", Kind::Truth},
      {"kind", Kind::Text},
      {"png", Kind::Picture}}},
    {"contents",
     {},
     {{"name", Kind::Text}, {"size", Kind::Count}, {"packed", Kind::Count}, {"crc", Kind::Count, true}}},
    {"languages", {}, {{"tag", Kind::Text}, {"name", Kind::Text}, {"label", Kind::Text}}},
    {"manifest", {{"text", Kind::Long}}, {}},
    {"resources", {}, {{"name", Kind::Text}, {"type", Kind::Text}, {"value", Kind::Text}, {"isDrawable", Kind::Truth}}},
    {"lint", {}, {{"check", Kind::Text}, {"severity", Kind::Text}, {"message", Kind::Text}, {"subject", Kind::Text}}},
    {"diff",
     {{"before", Kind::Object},
      {"after", Kind::Object},
      {"different", Kind::Truth},
      {"complete", Kind::Truth},
      {"sameApplication", Kind::Truth},
      {"signerMatch", Kind::Text},
      {"signers", Kind::Array},
      {"facts", Kind::Array},
      {"permissions", Kind::Array},
      {"features", Kind::Array},
      {"components", Kind::Array},
      {"launchers", Kind::Array},
      {"labels", Kind::Array},
      {"fileSize", Kind::Object},
      {"sizes", Kind::Array},
      {"files", Kind::Object}},
     {},
     true},
    {"done", {}, {}},
    {"end", {}, {}},
};

bool isCount(const QJsonValue &value)
{
    constexpr double MaxExact = 9007199254740992.0; // 2^53
    const double number = value.toDouble(-1);
    return number >= 0 && number <= MaxExact && number == double(qint64(number));
}

bool isText(const QJsonValue &value, int maxLength)
{
    return value.isString() && value.toString().size() <= maxLength;
}

bool isDigits(const QJsonValue &value)
{
    constexpr int MaxDigits = 20;
    // Android reads a version of 64 bits as a number with a sign.
    QString text = value.toString();
    if (text.startsWith(QLatin1Char('-')))
        text.remove(0, 1);
    return !text.isEmpty() && text.size() <= MaxDigits && std::all_of(text.cbegin(), text.cend(), [](QChar each) {
        return each >= QLatin1Char('0') && each <= QLatin1Char('9');
    });
}

// A picture file begins with its signature and the chunk IHDR, which begins with the width and the height.
bool isPicture(const QJsonValue &value)
{
    constexpr char Start[] = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR";
    constexpr int StartSize = int(sizeof Start) - 1;
    constexpr int MaxBase64 = 16 << 20;
    constexpr int FirstCharacters = 32; // 24 bytes
    if (!isText(value, MaxBase64))
        return false;
    const QString text = value.toString();
    if (text.isEmpty())
        return true;
    const QByteArray first = QByteArray::fromBase64(text.left(FirstCharacters).toLatin1());
    if (first.size() < StartSize + 8 || std::memcmp(first.constData(), Start, size_t(StartSize)) != 0)
        return false;
    const auto isSide = [&first](int at) {
        const quint32 pixels = qFromBigEndian<quint32>(first.constData() + at);
        return pixels >= 1 && pixels <= quint32(Protocol::MaxPixels);
    };
    return isSide(StartSize) && isSide(StartSize + 4);
}

bool isTexts(const QJsonValue &value)
{
    const QJsonArray array = value.toArray();
    return value.isArray() && array.size() <= MaxMembers
           && std::all_of(array.begin(), array.end(),
                          [](const QJsonValue &each) { return isText(each, Protocol::MaxTextLength); });
}

bool isFault(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    return value.isNull()
           || (value.isObject() && isCount(object.value(QLatin1String("code")))
               && isText(object.value(QLatin1String("message")), Protocol::MaxTextLength));
}

bool isOfKind(const QJsonValue &value, Kind kind)
{
    switch (kind) {
    case Kind::Truth:
        return value.isBool();
    case Kind::Count:
        return isCount(value);
    case Kind::Digits:
        return isDigits(value);
    case Kind::Text:
        return isText(value, Protocol::MaxTextLength);
    case Kind::Long:
        return isText(value, Protocol::MaxManifestLength);
    case Kind::Picture:
        return isPicture(value);
    case Kind::Object:
        return value.isObject();
    case Kind::Array:
        return value.isArray() && value.toArray().size() <= Protocol::MaxItems;
    case Kind::Texts:
        return isTexts(value);
    case Kind::Fault:
        return isFault(value);
    case Kind::None:
        break;
    }
    return false;
}

// Checks the members of @p object. Returns the name of one that is missing or wrong. Counts those that are there.
QString wrongMember(const QJsonObject &object, const Member (&members)[MaxMembers], int *count)
{
    for (const Member &member : members) {
        if (member.kind == Kind::None)
            break;
        const auto found = object.constFind(QLatin1String(member.name));
        if (found == object.constEnd() ? !member.isOptional : !isOfKind(found.value(), member.kind))
            return QString::fromLatin1(member.name);
        *count += found == object.constEnd() ? 0 : 1;
    }
    return {};
}

// The listed members of @p object.
QJsonObject listed(const QJsonObject &object, const Member (&members)[MaxMembers])
{
    QJsonObject result;
    for (const Member &member : members) {
        if (member.kind != Kind::None && object.contains(QLatin1String(member.name)))
            result.insert(QLatin1String(member.name), object.value(QLatin1String(member.name)));
    }
    return result;
}

// Checks @p items, and removes other members from them.
QString wrongItem(QJsonArray *items, const Member (&members)[MaxMembers])
{
    if (items->size() > Protocol::MaxItems)
        return QStringLiteral("items");
    // Changing a list costs many times as much as reading it, and a reader that works sends nothing to remove.
    QVector<int> surplus;
    for (int i = 0; i < int(items->size()); ++i) {
        const QJsonValue value = items->at(i);
        const QJsonObject item = value.toObject();
        int count = 0;
        QString wrong = value.isObject() ? wrongMember(item, members, &count) : QStringLiteral("item");
        if (!wrong.isEmpty())
            return wrong;
        if (count != item.size())
            surplus.append(i);
    }
    for (const int i : surplus)
        items->replace(i, listed(items->at(i).toObject(), members));
    return {};
}

} // namespace

Viewer::AnswerCheck::AnswerCheck(const QString &topic, QJsonObject content)
{
    content.remove(QStringLiteral("topic"));
    const auto known = std::find_if(std::begin(Topics), std::end(Topics),
                                    [&](const Topic &each) { return topic == QLatin1String(each.name); });
    if (known == std::end(Topics)) {
        m_fault = QStringLiteral("an unknown topic");
        return;
    }
    const bool isHead = topic == QLatin1String("head") || topic == QLatin1String("otherHead");
    const QJsonValue error = content.value(QLatin1String("error"));
    const bool hasError = !isHead && !error.isUndefined();
    if (hasError && !isText(error, Protocol::MaxTextLength)) {
        m_fault = QStringLiteral("%1: error").arg(topic);
        return;
    }
    int count = 0;
    const Member(&members)[MaxMembers] = isHead ? HeadMembers : known->members;
    m_content = known->isReport ? content : listed(content, members);
    QString wrong = wrongMember(content, members, &count);
    if (wrong.isEmpty() && known->items[0].kind != Kind::None) {
        const QJsonValue value = content.value(QLatin1String("items"));
        QJsonArray items = value.toArray();
        wrong = value.isArray() ? wrongItem(&items, known->items) : QStringLiteral("items");
        m_content.insert(QStringLiteral("items"), items);
    }
    const QJsonValue more = content.value(QLatin1String("more"));
    if (wrong.isEmpty() && !more.isUndefined()) {
        wrong = isCount(more) ? QString() : QStringLiteral("more");
        m_content.insert(QStringLiteral("more"), more);
    }
    // A topic that failed needs no other members; wrong ones are not passed on.
    if (hasError && !wrong.isEmpty() && !error.toString().isEmpty()) {
        m_content = {};
        wrong.clear();
    }
    if (hasError)
        m_content.insert(QStringLiteral("error"), error);
    if (!wrong.isEmpty()) {
        m_fault = QStringLiteral("%1: %2").arg(topic, wrong);
        m_content = {};
    }
}
