// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WALKER_H
#define WALKER_H

#include <QtGlobal>

class ApkFile;
class ApkResources;
class QDomDocument;

/// Visits everything that a caller can reach, and returns the number of texts.
namespace fixture {

/**
 * Every resource with a value in the packages of the application and of the framework, by each lookup. After @p
 * longestGap entries without a value, the type counts as finished.
 */
qint64 visit(const ApkResources &resources, int longestGap = 1000);
/// Every element and attribute, with lookups of references.
qint64 visit(const QDomDocument &document, const ApkResources &resources);
/// Every query and its results.
qint64 visit(ApkFile &apk, int longestGap = 1000);

} // namespace fixture

#endif
