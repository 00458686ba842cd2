// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BlockSeeds.h"
#include "Bytes.h"
#include "JarSeeds.h"
#include "KitSeeds.h"
#include "Pictures.h"
#include "RawZip.h"
#include "Regressions.h"
#include "TocSeeds.h"

#include <QDir>
#include <QFile>

#include <cstdio>

using namespace fixture;

namespace {

QByteArray table(Encoding encoding)
{
    PackageBuilder package;
    package.types({QStringLiteral("string"), QStringLiteral("drawable"), QStringLiteral("bool")})
        .keys({QStringLiteral("app_name"), QStringLiteral("icon")})
        .type(TypeBuilder(1).value(0, String, 0).value(1, Reference, 0x7f010000).map(2, 2).value(4, Integer, 7))
        .type(TypeBuilder(1, ConfigBuilder().locale("de", "AT").build()).value(0, String, 1))
        .type(TypeBuilder(2, ConfigBuilder().density(240).sdkVersion(4).build()).value(0, String, 2))
        .type(TypeBuilder(3, ConfigBuilder(28).build()).value(0, Boolean, 0).value(1, Boolean, -1));
    return TableBuilder()
        .strings({QStringLiteral("Notes"), QStringLiteral("Notizbücher"), QStringLiteral("res/icon.png")}, encoding)
        .package(package)
        .build();
}

QByteArray manifest(Encoding encoding)
{
    const QString name = QStringLiteral("name");
    XmlBuilder builder = XmlBuilder::manifest(encoding);
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 21)})
        .start(QStringLiteral("application"), {androidReference(QStringLiteral("icon"), 0x7f020000)})
        .start(QStringLiteral("activity"),
               {androidText(name, QStringLiteral(".Main")), androidReference(QStringLiteral("enabled"), 0x7f030001),
                androidReference(QStringLiteral("label"), 0x7f010001)})
        .launcherFilter()
        .end(QStringLiteral("activity"))
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"))
        .endNamespace(QStringLiteral("android"), androidUri);
    return builder.build();
}

// A table in the given encoding, with gaps, and with values and maps that resources share.
QByteArray otherTable(TableEncoding encoding, bool isCompact)
{
    const auto value = [isCompact](int dataType, qint64 data) {
        return isCompact ? compactEntry(dataType, data) : simpleEntry(dataType, data);
    };
    const TypeBuilder texts = TypeBuilder(1).encoding(encoding).entry(3, value(String, 0)).entry(0, value(String, 1));
    PackageBuilder package;
    package.types({QStringLiteral("string"), QStringLiteral("drawable")})
        .keys({QStringLiteral("app_name")})
        .type(TypeBuilder(texts).offset(5, 0).map(6, 1).offset(7, isCompact ? 16 : 32))
        .type(TypeBuilder(2, ConfigBuilder(28).density(240).build())
                  .encoding(encoding)
                  .unlisted(QByteArray(4, '\0'))
                  .entry(0, value(String, 2))
                  .gap(4));
    return TableBuilder()
        .strings({QStringLiteral("Notes"), QStringLiteral("Notizen"), QStringLiteral("res/icon.png")})
        .package(package)
        .build();
}

void write(const QString &directory, const QString &name, const QByteArray &bytes)
{
    QFile file(directory + QLatin1Char('/') + name);
    if (!QDir().mkpath(directory) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("could not write %s", qPrintable(file.fileName()));
}

void writeNormalizerSeeds(const QString &directory)
{
    const QStringList names{QStringLiteral("dense"), QStringLiteral("short"), QStringLiteral("sparse")};
    for (const bool isCompact : {false, true}) {
        for (const TableEncoding encoding :
             {TableEncoding::Dense, TableEncoding::ShortOffsets, TableEncoding::Sparse}) {
            const QString name = names.at(int(encoding)) + (isCompact ? QStringLiteral("-compact") : QString());
            const QByteArray bytes = otherTable(encoding, isCompact);
            write(directory, name, bytes);
            write(directory, name + QStringLiteral(".apk"), package(bytes, manifest(Encoding::Utf8)));
        }
    }
    write(directory, QStringLiteral("classic"), table(Encoding::Utf8));
    write(directory, QStringLiteral("empty"), emptyTable());
}

void writeArchiveSeeds(const QString &directory)
{
    const QVector<Member> members{{QStringLiteral("a"), "text"}, {QStringLiteral("res/b"), QByteArray(500, 'x')}};
    const QByteArray deflated = zip(members);
    write(directory, QStringLiteral("deflated"), deflated);
    write(directory, QStringLiteral("stored"), zip(members, Compression::Stored));
    write(directory, QStringLiteral("in-stored"), zip({{QStringLiteral("a.apk"), deflated}}, Compression::Stored));
    write(directory, QStringLiteral("in-deflated"), zip({{QStringLiteral("a.apk"), deflated}}));
    write(directory, QStringLiteral("zip64"), rawZip64({{"a", "text"}, {"b", "other"}}));
    write(directory, QStringLiteral("one-name"), rawZip({{"a", "text"}, {"a", "other"}}, "leading"));
    write(directory, QStringLiteral("empty-blocks"),
          zipOfDeflated({{QStringLiteral("a"), deflatedBehindEmptyBlocks(100, "text")}}, 100));
}

void writeAll(const QString &directory, const QVector<Member> &files)
{
    for (const Member &file : files)
        write(directory, file.name, file.content);
}

} // namespace

// write_seeds DIRECTORY: writes valid inputs and the regressions of each harness into a directory named after it.
int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_seeds DIRECTORY\n");
        return 2;
    }
    const QString directory = QFile::decodeName(argv[1]);
    const QString tables = directory + QStringLiteral("/table");
    const QString documents = directory + QStringLiteral("/document");
    const QString packages = directory + QStringLiteral("/package");
    const QString pictures = directory + QStringLiteral("/picture");
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const QString name = encoding == Encoding::Utf8 ? QStringLiteral("utf8") : QStringLiteral("utf16");
        write(tables, name, table(encoding));
        write(documents, name, manifest(encoding));
        write(packages, name, table(encoding) + manifest(encoding));
        write(packages, name + QStringLiteral(".apk"), package(table(encoding), manifest(encoding)));
    }
    write(tables, QStringLiteral("empty"), emptyTable());
    write(documents, QStringLiteral("small"), smallManifest());
    for (const char *format : {"PNG", "JPG", "WEBP", "BMP"})
        write(pictures, QString::fromLatin1(format), picture(16, 16, 0x808080, format));
    write(pictures, QStringLiteral("GIF"), gif(QSize(16, 16), QSize(16, 16)));
    write(pictures, QStringLiteral("progressive"), progressiveJpeg(16, 16));
    write(pictures, QStringLiteral("codes"), webpOfManyCodes(16, 16));
    write(pictures, QStringLiteral("deep"), blackPng(16, 16, 16, true));
    write(pictures, QStringLiteral("long-codes"), gifOfLongCodes(100));
    write(pictures, QStringLiteral("cmyk"), plainJpeg("abcd", "abcd"));
    write(pictures, QStringLiteral("film"), animatedWebp(QSize(16, 16), picture(16, 16, 0, "WEBP"), QSize(16, 16)));
    write(pictures, QStringLiteral("overfull"), overfullPng(1000));
    write(pictures, QStringLiteral("ICO"), windowsIcon({bitmapOfIcon(QSize(16, 16), 8)}, QSize(16, 16)));
    write(pictures, QStringLiteral("ICO-of-PNG"), windowsIcon({blackPng(16, 16)}, QSize(16, 16)));
    const QString drawables = directory + QStringLiteral("/drawable");
    const QString kitPackages = directory + QStringLiteral("/kit_package");
    writeAll(directory + QStringLiteral("/path"), pathSeeds());
    writeAll(drawables, drawableSeeds(QStringLiteral(SORREL_SAMPLES_DIR)));
    writeAll(kitPackages, kitPackageSeeds());
    writeAll(directory + QStringLiteral("/signing_block"), blockSeeds());
    writeAll(directory + QStringLiteral("/signature_block"), signatureBlockSeeds());
    writeAll(directory + QStringLiteral("/jar_manifest"), jarManifestSeeds());
    writeAll(directory + QStringLiteral("/toc"), tocSeeds());
    const QString regressions = QStringLiteral("/regressions");
    writeAll(tables + regressions, tableRegressions());
    writeAll(documents + regressions, documentRegressions());
    writeAll(packages + regressions, packageRegressions());
    writeAll(pictures + regressions, pictureRegressions());
    writeArchiveSeeds(directory + QStringLiteral("/archive"));
    writeNormalizerSeeds(directory + QStringLiteral("/normalizer"));
    writeAll(drawables + regressions, drawableRegressions());
    writeAll(kitPackages + regressions, kitPackageRegressions());
    return 0;
}
