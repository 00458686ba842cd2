// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIFFNAMES_H
#define DIFFNAMES_H

#include <SorrelKit/Component.h>
#include <SorrelKit/Signatures.h>
#include <SorrelKit/SizeChange.h>
#include <SorrelKit/TextChange.h>

#include <QString>

/// Names in the reports about differences. They stay the same from version to version.
namespace DiffNames {

/// "added", "removed" or "changed".
QString kind(SorrelKit::TextChange::Kind kind);
/// The name of the element in the manifest: "activity-alias".
QString componentKind(SorrelKit::Component::Kind kind);
/// "code", "resources", "libraries", "assets", "signatures" or "other".
QString category(SorrelKit::SizeChange::Category category);
/// "unverified", "different", "same", "rotated" or "rollback".
QString match(SorrelKit::Signer::Match match);

/// @p bytes with a unit: "812 B", "1.5 KiB", "23.4 MiB".
QString size(qint64 bytes);
/// The same with a sign: "+1.5 KiB", "-812 B", "0 B".
QString growth(qint64 bytes);

} // namespace DiffNames

#endif
