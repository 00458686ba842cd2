// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEERROR_H
#define PACKAGEERROR_H

#include <QString>

/// The error codes of ApkFile::getError(), and RefusedByAndroid of SorrelKit alone.
namespace PackageError {

enum Code : int {
    NoError = 0,
    CannotOpen = 1,
    NoResources = 2,
    BadResources = 3,
    NoManifest = 4,
    BadManifest = 5,
    RefusedByAndroid = 6,
};

/// The text of @p code, in English; "unknown error" for an unknown number.
QString text(int code);

} // namespace PackageError

#endif
