// SPDX-License-Identifier: LGPL-2.1-or-later
#include "MemberSizes.h"

#include "archive/ZipArchive.h"
#include "limits/ByteSum.h"

MemberSizes MemberSizes::of(const FileName &file)
{
    MemberSizes sizes;
    const std::unique_ptr<ZipArchive> archive = ZipArchive::atNativePath(file.path());
    if (!archive->open())
        return sizes;
    sizes.file = archive->sharedSource()->size();
    if (!archive->contains(QStringLiteral("AndroidManifest.xml")))
        return sizes;
    const ZipDirectory &directory = archive->directory();
    for (int number = 0; number < directory.count(); ++number) {
        const ZipDirectory::Member member = directory.member(number);
        const QByteArray name = member.name.toByteArray();
        if (!name.contains('/') && name.startsWith("classes") && name.endsWith(".dex"))
            sizes.code = byteSum(sizes.code, member.size);
        else if (name.startsWith("lib/") && name.endsWith(".so"))
            sizes.libraries = byteSum(sizes.libraries, member.size);
        else if (name == "resources.arsc" || name.startsWith("res/"))
            sizes.resources = byteSum(sizes.resources, member.size);
        else
            sizes.others = byteSum(sizes.others, member.size);
    }
    return sizes;
}
