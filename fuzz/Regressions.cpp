// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Regressions.h"

#include "Apk.h"
#include "Bytes.h"
#include "Pictures.h"

#include <limits>

using namespace fixture;

namespace {

constexpr int SizeAt = 4;
constexpr int Largest = std::numeric_limits<int>::max();
constexpr qint64 Smallest = std::numeric_limits<int>::min();

QByteArray poked(QByteArray bytes, int at, qint64 value)
{
    poke32(bytes, at, value);
    return bytes;
}

QByteArray tableOf(const QByteArray &chunk)
{
    return TableBuilder().chunk(chunk).build();
}

QByteArray documentOf(const QByteArray &nodes)
{
    return chunk(ChunkType::Xml, QByteArray(), nodes);
}

QByteArray smallPool()
{
    return PoolBuilder(Encoding::Utf16).string(QStringLiteral("text")).build();
}

PackageBuilder strings()
{
    return PackageBuilder().types({QStringLiteral("string")});
}

// A table with one map entry that claims @p count items.
QByteArray map(qint64 count)
{
    constexpr int CountAt = 12;
    return TableBuilder().package(strings().type(TypeBuilder(1).entry(0, poked(mapEntry(0), CountAt, count)))).build();
}

// Launchers with @p attribute. The attribute of launcher n refers to entry n.
QByteArray launchers(int count, const QString &attribute)
{
    const QString activity = QStringLiteral("activity");
    const QString application = QStringLiteral("application");
    const QString manifest = QStringLiteral("manifest");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(manifest).start(application);
    for (int i = 0; i < count; ++i)
        builder.start(activity, {androidReference(attribute, 0x7f010000 + i)}).launcherFilter().end(activity);
    return builder.end(application).end(manifest).build();
}

QByteArray launcherWithIcon(const QString &path)
{
    XmlBuilder builder = XmlBuilder::manifest();
    return builder.start(QStringLiteral("manifest"))
        .start(QStringLiteral("application"))
        .start(QStringLiteral("activity"), {androidText(QStringLiteral("icon"), path)})
        .launcherFilter()
        .end(QStringLiteral("activity"))
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"))
        .build();
}

// Entries that each refer to the next; the last refers to the first.
QByteArray ring(int length)
{
    TypeBuilder type(1);
    for (int i = 0; i < length; ++i)
        type.value(i, Reference, 0x7f010000 + (i + 1) % length);
    return TableBuilder().package(strings().type(type)).build();
}

} // namespace

QVector<Member> tableRegressions()
{
    QByteArray beyond32Bits = poked(smallPool(), PoolBuilder::StringsStartAt, Smallest);
    poke32(beyond32Bits, PoolBuilder::StylesStartAt, Largest);
    return {
        {QStringLiteral("chunk-that-moves-nothing"), tableOf(poked(chunk(0x7777), SizeAt, 0).repeated(300))},
        {QStringLiteral("region-of-negative-length"), tableOf(poked(smallPool(), SizeAt, 7))},
        {QStringLiteral("map-whose-size-wraps"), map(0x15555556)},
        {QStringLiteral("map-of-negative-size"), map(Smallest)},
        {QStringLiteral("pool-of-2-gib"), poked(smallPool(), SizeAt, Largest)},
        {QStringLiteral("pool-of-many-strings"), tableOf(poked(smallPool(), PoolBuilder::CountAt, Largest))},
        {QStringLiteral("pool-whose-size-is-beyond-32-bits"), tableOf(beyond32Bits)},
        {QStringLiteral("references-in-a-ring"), ring(20)},
    };
}

QVector<Member> documentRegressions()
{
    return {
        {QStringLiteral("chunk-that-moves-nothing"), documentOf(poked(chunk(0x7777), SizeAt, 0).repeated(300))},
        {QStringLiteral("resource-id-map-of-2-gib"), poked(chunk(ChunkType::XmlResourceMap), SizeAt, 0x7ffffffc)},
        {QStringLiteral("documents-in-documents"), documentOf(documentOf(documentOf(documentOf(smallPool()))))},
    };
}

QVector<Member> packageRegressions()
{
    QVector<Member> archives;
    for (const char *attribute : {"icon", "label", "enabled"}) {
        archives.append({QStringLiteral("launchers-in-a-ring-of-references-") + QString::fromLatin1(attribute),
                         package(ring(20), launchers(20, QString::fromLatin1(attribute)))});
    }
    const QString icon = QStringLiteral("icon0");
    const QByteArray manifest = launcherWithIcon(icon);
    archives.append({QStringLiteral("members-of-one-name"), zip({{QStringLiteral("resources.arsc"), "no table"},
                                                                 {icon, blackPng(2, 2)},
                                                                 {QStringLiteral("AndroidManifest.xml"), manifest},
                                                                 {QStringLiteral("resources.arsc"), emptyTable()},
                                                                 {icon, blackPng(3, 3)}})});
    archives.append({QStringLiteral("deflated-data-that-delivers-nothing"),
                     zipOfDeflated({{QStringLiteral("AndroidManifest.xml"), deflatedBehindEmptyBlocks(1000, manifest)},
                                    {QStringLiteral("resources.arsc"), deflatedBehindEmptyBlocks(1000, emptyTable())},
                                    {icon, deflatedBehindEmptyBlocks(1000)}},
                                   1 << 20)});
    return archives;
}

QVector<Member> pictureRegressions()
{
    const QByteArray text = "k" + QByteArray(2, '\0') + deflated(QByteArray(1 << 20, '\0'));
    return {
        {QStringLiteral("png-of-45000-by-45000"), blackPng(45000, 45000, 8, false, false)},
        {QStringLiteral("png-of-a-text-that-claims-a-gigabyte"),
         blackPng(2, 2).left(33) + QByteArray("\x49\x46\x46\x12tEXt") + "k"},
        {QStringLiteral("png-whose-texts-unpack"), withPngChunks(blackPng(2, 2), pngChunk("zTXt", text).repeated(20))},
        {QStringLiteral("jpeg-of-many-scans"), withScans(progressiveJpeg(64, 64), 100)},
        {QStringLiteral("webp-of-many-codes"), webpOfManyCodes(128, 1024)},
        {QStringLiteral("gif-larger-than-its-screen"), gif(QSize(1, 1), QSize(5000, 1))},
        {QStringLiteral("gif-of-long-codes"), gifOfLongCodes(10000)},
        {QStringLiteral("jpeg-of-comments"),
         withJpegSegments(progressiveJpeg(8, 8), jpegSegment(0xfe, "x").repeated(2000))},
        {QStringLiteral("png-that-unpacks-to-more"), endlessPng(4)},
        {QStringLiteral("webp-of-a-frame-without-a-canvas"), webp(webpChunk("ANMF", QByteArray(1000, '\0')))},
    };
}
