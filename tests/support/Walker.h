// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WALKER_H
#define WALKER_H

#include <QtGlobal>

class ApkFile;
class ApkResources;
class QDomDocument;

/// Visits everything that a caller can reach, and returns how many texts there were.
namespace fixture {

/**
 * Every resource of the application and the framework package that has a value, by each lookup. Entries have gaps;
 * a run of @p longestGap entries without a value is taken for the end of their type.
 */
qint64 visit(const ApkResources &resources, int longestGap = 1000);
/// Every element and attribute, with lookups of the values that are references.
qint64 visit(const QDomDocument &document, const ApkResources &resources);
/// Every query, and what is in their answers.
qint64 visit(ApkFile &apk, int longestGap = 1000);

} // namespace fixture

#endif
