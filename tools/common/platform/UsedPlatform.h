// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef USEDPLATFORM_H
#define USEDPLATFORM_H

#include "FileName.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>

/**
 * The platform of a program, which all of its packages share: SorrelKit::Platform::installed(), or the file that the option
 * `--platform` names. The option sets the variable SORREL_PLATFORM, so worker processes use the same file.
 */
namespace UsedPlatform {

/// Uses @p file, the value of `--platform`, for packages that are opened later; "none" for no platform. Returns the text of
/// the error when the file is no platform, else an empty text. Precondition: no package was opened.
QString use(const FileName &file);
/// The package in @p file, with the platform. Opens neither.
SorrelKit::Package package(const FileName &file);

} // namespace UsedPlatform

#endif
