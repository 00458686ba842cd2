// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "Apk.h"
#include "ApkFile.h"
#include "ApkResources.h"
#include "Bytes.h"
#include "Devices.h"
#include "LogCapture.h"
#include "format/TypeChunk.h"
#include "normalize/TableRewriter.h"

#include <SorrelKit/PackageNormalizer.h>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr int PackageHeaderSize = 284; ///< the offsets of pools in it may change

bool isSame(const ByteView &one, const ByteView &other)
{
    return one.toByteArray() == other.toByteArray();
}

bool isSame(const EntryView &before, const EntryView &after)
{
    constexpr int OtherForms = 0xff00 | EntryView::CompactFlag | EntryView::MapFlag;
    if (!before.isValid() || !after.isValid() || before.isMap())
        return before.isValid() == after.isValid() && isSame(before.bytes(), after.bytes());
    const int flags = before.isCompact() ? before.flags() & ~OtherForms : before.flags();
    return !after.isCompact() && !after.isMap() && flags == after.flags() && before.key() == after.key()
           && before.value().type == after.value().type && before.value().data == after.value().data;
}

// Whether every resource that has a slot in @p asked has the same entries in both chunks.
bool haveSameEntries(const TypeChunk &asked, const TypeChunk &before, const TypeChunk &after)
{
    for (int number = 0; number < asked.slotCount(); ++number) {
        const int index = asked.slot(number).index;
        if (!isSame(before.entryAt(before.offset(index)), after.entryAt(after.offset(index))))
            return false;
    }
    return true;
}

bool isSameType(const ChunkView &one, const ChunkView &other)
{
    const TypeChunk before(one);
    const TypeChunk after(other);
    return before.isValid() && after.isValid() && before.typeId() == after.typeId()
           && isSame(one.bytes().part(TypeChunk::ConfigurationAt, one.headerSize() - TypeChunk::ConfigurationAt),
                     other.bytes().part(TypeChunk::ConfigurationAt, other.headerSize() - TypeChunk::ConfigurationAt))
           && haveSameEntries(before, before, after) && haveSameEntries(after, before, after);
}

bool isSamePackage(const ChunkView &before, const ChunkView &after);

// Whether @p before and @p after, two tables or two packages, hold the same chunks.
bool isSameContent(const ChunkView &before, const ChunkView &after)
{
    const bool isTable = before.type() == ChunkType::Table;
    ChunkList others(after.bytes(), after.headerSize());
    for (ChunkList chunks(before.bytes(), before.headerSize()); chunks.hasNext();) {
        const ChunkView chunk = chunks.next();
        if (!others.hasNext())
            return false;
        const ChunkView other = others.next();
        if (chunk.type() != other.type() || chunk.headerSize() != other.headerSize())
            return false;
        bool isThis = false;
        if (isTable && chunk.type() == ChunkType::Package)
            isThis = isSamePackage(chunk, other);
        else if (!isTable && chunk.type() == ChunkType::Type)
            isThis = isSameType(chunk, other);
        else
            isThis = isSame(chunk.bytes(), other.bytes());
        if (!isThis)
            return false;
    }
    return !others.hasNext();
}

bool isSamePackage(const ChunkView &before, const ChunkView &after)
{
    const qint64 more = before.headerSize() - PackageHeaderSize;
    return isSame(before.bytes().part(PackageHeaderSize, more), after.bytes().part(PackageHeaderSize, more))
           && isSameContent(before, after);
}

// Returns @p table with its types marked as chunks of an unknown type, which libsorrel skips.
QByteArray withoutTypes(QByteArray table)
{
    constexpr int UnknownType = 0x0777;
    const QByteArray original = table;
    const ByteView whole(original);
    const ChunkView outer = ChunkView::at(whole, 0);
    for (ChunkList chunks(outer.bytes(), outer.headerSize()); chunks.hasNext();) {
        const ChunkView package = chunks.next();
        if (package.type() != ChunkType::Package)
            continue;
        for (ChunkList inner(package.bytes(), package.headerSize()); inner.hasNext();) {
            const ChunkView chunk = inner.next();
            if (chunk.type() == ChunkType::Type)
                poke16(table, int(chunk.bytes().data() - whole.data()), UnknownType);
        }
    }
    return table;
}

/// The fault that libsorrel finds in @p table, or an empty string.
QString faultOf(const QByteArray &table)
{
    const QString start = QStringLiteral("Error extracting resources: ");
    const LogCapture log;
    SequentialDevice device(table, QIODevice::ReadOnly);
    ApkResources resources;
    if (resources.load(&device))
        return {};
    const QStringList lines = log.texts().filter(start);
    return lines.isEmpty() ? QStringLiteral("?") : lines.last().mid(start.size());
}

void checkTable(const QByteArray &table)
{
    FormatFault fault = FormatFault::None;
    const QByteArray result = TableRewriter::rewritten(table, &fault);
    if (result.isEmpty() == (fault == FormatFault::None))
        failed("neither a table nor a fault, or both");
    if (result.isEmpty()) {
        if (TableRewriter::isClassic(table))
            failed("a faulty table is classic");
        return;
    }
    if (result.size() > TableRewriter::MaxTableBytes)
        failed("the table is too large");
    if (!TableRewriter::isClassic(result) || TableRewriter::rewritten(result) != result)
        failed("the table is not classic");
    if (TableRewriter::isClassic(table) && result != table)
        failed("a classic table has changed");
    if (!isSameContent(ChunkView::at(ByteView(table), 0), ChunkView::at(ByteView(result), 0)))
        failed("the table holds something else");
    // libsorrel alone checks that types have names, and limits the number of values.
    const QString reason = faultOf(result);
    if (!reason.isEmpty() && !reason.startsWith(QLatin1String("Typechunk id out of range"))
        && !reason.startsWith(QLatin1String("too many values")) && faultOf(withoutTypes(result)).isEmpty())
        failed(qPrintable(QStringLiteral("libsorrel refuses the table: ") + reason));
}

void checkPackage(const QByteArray &bytes)
{
    const LogCapture log;
    PackageDevice device(bytes);
    const PackageNormalizer normalizer(&device);
    const bool isNeeded = normalizer.isNeeded();
    const bool isGood = normalizer.error().code() == SorrelKit::Error::Code::None;
    const QByteArray archive = normalizer.normalized();
    if (device.isOpen() || archive.isNull() == isGood || (isNeeded && !isGood))
        failed("the normalizer contradicts itself");
    if (!isGood)
        return;
    PackageDevice normalDevice(archive);
    const PackageNormalizer again(&normalDevice);
    if (again.isNeeded() || again.normalized() != archive)
        failed("the archive is not normalized");
}

} // namespace

// An archive is used as a package. Any other input is a table, which is packed with a manifest.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    if (input.startsWith("PK")) {
        checkPackage(input);
        return 0;
    }
    checkTable(input);
    const QString icon = QStringLiteral("res/icon.png");
    const QByteArray manifest =
        XmlBuilder::manifest()
            .empty(QStringLiteral("application"), {androidReference(QStringLiteral("icon"), 0x7f020000)})
            .build();
    checkPackage(package(input, manifest, {{icon, picture(2, 2, 0x808080)}}));
    return 0;
}
