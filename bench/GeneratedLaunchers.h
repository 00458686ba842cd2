// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GENERATEDLAUNCHERS_H
#define GENERATEDLAUNCHERS_H

#include <QString>

namespace bench {

/// Writes a package of @p count launchers. Each has an icon of its own, a small PNG in a member of its own.
void writeLaunchers(const QString &fileName, int count);

} // namespace bench

#endif
