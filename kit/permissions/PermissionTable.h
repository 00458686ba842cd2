// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSIONTABLE_H
#define SORRELKIT_PERMISSIONTABLE_H

#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * Facts of the platform's permissions that are known without a platform: the protection level, and the group by which a
 * user agrees. The table has permissions that a package may get without being part of the system, and those of the
 * system that the documentation for developers lists. Most rows are those of Android 10; permissions that later versions
 * brought have the level of the version that did.
 */
namespace PermissionTable {

struct Facts {
    quint32 protection = 0;      ///< the protection level: base and flags, as the attribute `protectionLevel` has it
    const char *group = nullptr; ///< without "android.permission-group."; null when there is none
};

/// The facts of the permission @p name ("android.permission.CAMERA"). Takes a binary search.
std::optional<Facts> find(const QString &name);
/// The words of the constant of the permission @p name: "access fine location".
QString words(const QString &name);
/// Plain English words for the platform's group @p name ("android.permission-group.LOCATION"); empty for another group.
QString groupWords(const QString &name);
/// The full name of the platform's group @p constant ("LOCATION").
QString groupName(const char *constant);

} // namespace PermissionTable

} // namespace SorrelKit

#endif
