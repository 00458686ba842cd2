// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GeneratedTable.h"

#include "Bytes.h"
#include "TableBuilder.h"
#include "format/TypeChunk.h"

#include <QtEndian>

#include <cstring>

namespace bench {

namespace {

constexpr int LargestType = 1 << 16;
constexpr int GapStep = 4;
constexpr int EntrySize = 16;
constexpr qint64 ApplicationStrings = 0x7f010000;

/// The entries of a type chunk: every @p step th of @p count, from @p first on.
struct Present {
    int count;
    int first;
    int step;

    int entries() const { return first < count ? (count - first + step - 1) / step : 0; }
};

char *put32(char *out, quint32 value)
{
    qToLittleEndian(value, out);
    return out + sizeof value;
}

int poolSize(const TableShape &shape)
{
    return shape.values / 100;
}

// Header of the entry, key, header of the value, value.
char *putEntry(char *out, int index, int texts)
{
    constexpr quint32 SizeOfHeader = 8;
    constexpr quint32 SizeOfValue = 8;
    auto type = ValueType::Decimal;
    quint32 data = quint32(index);
    if (index % 4 == 0) {
        type = ValueType::String;
        data = quint32(index % texts);
    } else if (index % 16 == 1) {
        type = ValueType::Reference;
        data = quint32(ApplicationStrings + index % 64);
    }
    out = put32(out, SizeOfHeader);
    out = put32(out, quint32(index % texts));
    out = put32(out, SizeOfValue | (quint32(type) << 24));
    return put32(out, data);
}

QByteArray offsetsAndEntries(const Present &present, int texts)
{
    QByteArray body(4 * present.count + EntrySize * present.entries(), Qt::Uninitialized);
    char *offset = body.data();
    char *entry = offset + 4 * present.count;
    const char *entries = entry;
    int next = present.first;
    for (int index = 0; index < present.count; ++index) {
        if (index != next) {
            offset = put32(offset, TypeChunk::NoDenseOffset);
            continue;
        }
        offset = put32(offset, quint32(entry - entries));
        entry = putEntry(entry, index, texts);
        next += present.step;
    }
    return body;
}

QByteArray typeChunk(int typeId, const QByteArray &config, const Present &present, int texts)
{
    const int headerSize = fixture::TypeBuilder::ConfigAt + config.size();
    fixture::Bytes header;
    header.u8(typeId).zeros(3).u32(present.count).u32(headerSize + 4 * present.count).raw(config);
    return fixture::chunk(ChunkType::Type, header.data(), offsetsAndEntries(present, texts));
}

QByteArray configuration(int index)
{
    fixture::ConfigBuilder config;
    const char language[] = {char('a' + index / 10), char('a' + index % 10), '\0'};
    return index == 0 ? config.build() : config.locale(language).build();
}

QStringList numbered(const QString &text, int count)
{
    QStringList texts;
    texts.reserve(count);
    for (int i = 0; i < count; ++i)
        texts.append(text.arg(i));
    return texts;
}

} // namespace

QByteArray generatedTable(const TableShape &shape)
{
    const int step = shape.mostlyEmpty ? GapStep : 1;
    const int chunks = qMax(step, shape.configurations); // of a type
    const int resources = int(qint64(shape.values) * step / chunks);
    const int types = (resources + LargestType - 1) / LargestType;
    const int typeSize = (resources + types - 1) / types;
    const int texts = poolSize(shape);

    QByteArray typeChunks;
    typeChunks.reserve(shape.values * (EntrySize + 4 * step) + types * chunks * 84);
    for (int type = 0; type < types; ++type) {
        const int count = qMin(typeSize, resources - type * typeSize);
        typeChunks += fixture::typeSpec(type + 1, count);
        for (int chunk = 0; chunk < chunks; ++chunk) {
            const QByteArray config = configuration(chunk % shape.configurations);
            typeChunks += typeChunk(type + 1, config, {count, chunk % step, step}, texts);
        }
    }
    QStringList typeNames = numbered(QStringLiteral("type%1"), types);
    typeNames[0] = QStringLiteral("string");
    fixture::PackageBuilder package;
    package.types(typeNames).keys(numbered(QStringLiteral("name_%1"), texts)).chunk(typeChunks);
    return fixture::TableBuilder()
        .strings(numbered(QStringLiteral("Text number %1 of the application"), texts))
        .package(package)
        .build();
}

} // namespace bench
