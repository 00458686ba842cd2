// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_MEMBERKIND_H
#define VIEWER_MEMBERKIND_H

#include <QString>

namespace Viewer {

/// Parts of a package, by the paths of its members: the categories of `sorrel diff`.
enum class MemberKind {
    Code,
    Resources,
    Libraries,
    Assets,
    Signatures,
    Other,
};

constexpr MemberKind allMemberKinds[] = {MemberKind::Code,   MemberKind::Resources,  MemberKind::Libraries,
                                         MemberKind::Assets, MemberKind::Signatures, MemberKind::Other};

/// The kind of the member with the path @p path, or of the folder with that path and a slash at its end. In a set, the
/// path begins with that of a package.
MemberKind memberKind(const QString &path);
/// Its name in the user's language.
QString memberKindName(MemberKind kind);

} // namespace Viewer

#endif
