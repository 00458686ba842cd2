// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "GuardedBytes.h"
#include "archive/ZipArchive.h"

using namespace fixture;

namespace {

constexpr int MaxDepth = 3;

// Reads everything of an archive, and of the archives in it.
void visit(ZipArchive &archive, Budget *budget, int depth)
{
    if (!archive.open(budget))
        return;
    const ZipDirectory &directory = archive.directory();
    if (directory.count() > directory.claimedCount())
        failed("there are more members than the archive claims");
    for (const QString &path : archive.names(1 << 12)) {
        constexpr int MaxBytes = 1 << 20;
        const QByteArray file = archive.file(path, MaxBytes, budget);
        const SharedBytes content = archive.content(path, MaxBytes, budget);
        if (file.size() > MaxBytes || content.size() > MaxBytes)
            failed("a member is longer than its limit");
        if (budget->workLeft() > 0 && content.toByteArray() != file)
            failed("a member has two contents");
        const auto inner = depth < MaxDepth ? archive.archive(path, budget) : nullptr;
        if (inner != nullptr)
            visit(*inner, budget, depth + 1);
    }
    for (int number = 0; number < directory.count() && budget->workLeft() > 0; ++number) {
        if (archive.directory().find(directory.name(number)) < number)
            failed("a member is not found by its name");
        archive.hasRightChecksum(number, budget);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Budget budget(1 << 24, 1 << 24);
    ZipArchive archive(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    visit(archive, &budget, 0);
    // The headers of members, and what only lint asks for.
    const GuardedBytes guarded(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    BytesInMemory source(SharedBytes(guarded.atPageEnd(), guarded.owner()));
    ZipDirectory directory;
    if (!directory.read(source))
        return 0;
    directory.hasOtherDirectory(source);
    for (int number = 0; number < directory.count(); ++number) {
        const ZipDirectory::Member member = directory.member(number);
        ZipDirectory::nameText(member.name);
        ZipDirectory::localHeader(source, member);
    }
    return 0;
}
