// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diff/MemberCategory.h"

#include <QByteArray>

#include <algorithm>

namespace SorrelKit {

namespace {

bool hasEnd(const ByteView &name, const char *end)
{
    return name.hasText(name.size() - qint64(qstrlen(end)), end);
}

// "classes.dex", "classes2.dex", and so on, directly in the archive.
bool isCode(const ByteView &name)
{
    constexpr qint64 StemSize = 7;
    constexpr qint64 EndSize = 4;
    if (!name.hasText(0, "classes") || !hasEnd(name, ".dex") || name.size() < StemSize + EndSize)
        return false;
    const ByteView number = name.part(StemSize, name.size() - StemSize - EndSize);
    return std::all_of(number.data(), number.data() + number.size(),
                       [](uchar digit) { return digit >= '0' && digit <= '9'; });
}

// JAR signatures are directly in META-INF.
bool isSignature(const ByteView &name)
{
    constexpr qint64 DirectorySize = 9;
    if (!name.hasText(0, "META-INF/"))
        return false;
    const QByteArray file = name.part(DirectorySize, 256).toByteArray().toUpper();
    return !file.contains('/')
           && (file == "MANIFEST.MF" || file.endsWith(".SF") || file.endsWith(".RSA") || file.endsWith(".DSA")
               || file.endsWith(".EC"));
}

} // namespace

SizeChange::Category MemberCategory::of(const ByteView &name)
{
    if (isCode(name))
        return SizeChange::Category::Code;
    if (name.hasText(0, "res/") || (name.size() == 14 && name.hasText(0, "resources.arsc")))
        return SizeChange::Category::Resources;
    if (name.hasText(0, "lib/"))
        return SizeChange::Category::Libraries;
    if (name.hasText(0, "assets/"))
        return SizeChange::Category::Assets;
    return isSignature(name) ? SizeChange::Category::Signatures : SizeChange::Category::Other;
}

} // namespace SorrelKit
