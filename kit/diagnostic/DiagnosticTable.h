// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DIAGNOSTICTABLE_H
#define SORRELKIT_DIAGNOSTICTABLE_H

#include "oddity/Oddity.h"

namespace SorrelKit {

/// The table of the text, and of what Android does, for each Oddity.
namespace DiagnosticTable {

enum class Effect {
    Taken,
    Refused,
    /// Android refuses a package whose manifest is so. A table that is so does not exist for Android.
    ManifestRefused,
};

struct Row {
    Oddity oddity;
    Effect effect;
    int firstSdkVersion; ///< see Diagnostic::firstSdkVersion()
    int lastSdkVersion;  ///< see Diagnostic::lastSdkVersion()
    const char *text;    ///< see Diagnostic::text()
};

/// The row of @p oddity; null for Oddity::Count.
const Row *row(Oddity oddity);

} // namespace DiagnosticTable

} // namespace SorrelKit

#endif
