// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FilesCommand.h"

#include "Console.h"
#include "FileName.h"
#include "PrintableText.h"
#include "archive/BufferedFile.h"

#include <quazip.h>
#include <quazipfileinfo.h>

namespace {

// The numbers of methods are those of the ZIP format (APPNOTE 4.4.5). Android reads the first two.
QString methodName(quint16 method)
{
    switch (method) {
    case 0:
        return QStringLiteral("stored");
    case 8:
        return QStringLiteral("deflated");
    case 9:
        return QStringLiteral("deflate64");
    case 12:
        return QStringLiteral("bzip2");
    case 14:
        return QStringLiteral("lzma");
    case 93:
        return QStringLiteral("zstd");
    case 95:
        return QStringLiteral("xz");
    default:
        return QStringLiteral("method-%1").arg(method);
    }
}

QString memberLine(const QuaZipFileInfo64 &member, const TextStyle &style)
{
    constexpr int sizeWidth = 10;
    constexpr int methodWidth = 9;
    return QStringLiteral("%1 %2 %3 %4%5\n")
        .arg(QString::number(member.uncompressedSize).rightJustified(sizeWidth),
             style.faint(QString::number(member.compressedSize).rightJustified(sizeWidth)),
             style.faint(methodName(member.method).leftJustified(methodWidth)), printableText(member.name),
             member.isEncrypted() ? style.warning(QStringLiteral(" (encrypted)")) : QString());
}

// Adds @p member to @p json. JSON numbers have 53 bits, which is more than the size of any package.
QJsonObject memberJson(QJsonObject json, const QuaZipFileInfo64 &member)
{
    json.insert(QStringLiteral("path"), member.name);
    json.insert(QStringLiteral("size"), qint64(member.uncompressedSize));
    json.insert(QStringLiteral("compressedSize"), qint64(member.compressedSize));
    json.insert(QStringLiteral("method"), methodName(member.method));
    json.insert(QStringLiteral("crc"), qint64(member.crc));
    json.insert(QStringLiteral("encrypted"), member.isEncrypted());
    return json;
}

} // namespace

QString FilesCommand::details() const
{
    return QStringLiteral(
        "Each line has the size of a file in bytes, its compressed size, the compression method and the path.");
}

void FilesCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOption(m_json);
}

int FilesCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const FileName file(parser.positionalArguments().constFirst());
    const std::unique_ptr<BufferedFile> device = BufferedFile::atNativePath(file.path());
    QuaZip archive(device.get());
    if (!archive.open(QuaZip::mdUnzip)) {
        Console::complain(file.text(), QStringLiteral("could not open APK file"));
        return CannotRead;
    }
    int status = Success;
    int count = 0;
    const QJsonObject fileJson = file.toJson();
    for (bool more = archive.goToFirstFile(); more; more = archive.goToNextFile(), ++count) {
        QuaZipFileInfo64 member;
        if (!archive.getCurrentFileInfo(&member))
            break;
        if (parser.isSet(m_json))
            console.writeLine(memberJson(fileJson, member));
        else
            console.write(memberLine(member, console.style()));
    }
    if (count < archive.getEntriesCount()) {
        Console::complain(file.text(), QStringLiteral("the archive's directory is damaged after %1 of %2 files")
                                           .arg(count)
                                           .arg(archive.getEntriesCount()));
        status = CannotRead;
    }
    return status;
}
