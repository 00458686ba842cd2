// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FilesCommand.h"

#include "Console.h"
#include "FileName.h"
#include "PrintableText.h"
#include "archive/ZipArchive.h"

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

bool isEncrypted(const ZipDirectory::Member &member)
{
    return (member.flags & ZipDirectory::EncryptedFlag) != 0;
}

QString memberLine(const ZipDirectory::Member &member, const TextStyle &style)
{
    constexpr int sizeWidth = 10;
    constexpr int methodWidth = 9;
    return QStringLiteral("%1 %2 %3 %4%5\n")
        .arg(QString::number(member.size).rightJustified(sizeWidth),
             style.faint(QString::number(member.packedSize).rightJustified(sizeWidth)),
             style.faint(methodName(member.method).leftJustified(methodWidth)),
             printableText(ZipDirectory::nameText(member.name)),
             isEncrypted(member) ? style.warning(QStringLiteral(" (encrypted)")) : QString());
}

// Adds @p member to @p json. JSON numbers have 53 bits, which is more than the size of any package.
QJsonObject memberJson(QJsonObject json, const ZipDirectory::Member &member)
{
    json.insert(QStringLiteral("path"), ZipDirectory::nameText(member.name));
    json.insert(QStringLiteral("size"), member.size);
    json.insert(QStringLiteral("compressedSize"), member.packedSize);
    json.insert(QStringLiteral("method"), methodName(member.method));
    json.insert(QStringLiteral("crc"), qint64(member.crc));
    json.insert(QStringLiteral("encrypted"), isEncrypted(member));
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
    const std::unique_ptr<ZipArchive> archive = ZipArchive::atNativePath(file.path());
    if (!archive->open()) {
        Console::complain(file.text(), QStringLiteral("could not open APK file"));
        return CannotRead;
    }
    const ZipDirectory &directory = archive->directory();
    const QJsonObject fileJson = file.toJson();
    for (int number = 0; number < directory.count(); ++number) {
        const ZipDirectory::Member member = directory.member(number);
        if (parser.isSet(m_json))
            console.writeLine(memberJson(fileJson, member));
        else
            console.write(memberLine(member, console.style()));
    }
    if (directory.count() == directory.claimedCount())
        return Success;
    Console::complain(file.text(), QStringLiteral("the archive's directory is damaged after %1 of %2 files")
                                       .arg(directory.count())
                                       .arg(directory.claimedCount()));
    return CannotRead;
}
