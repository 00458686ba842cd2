// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SIGNATURECHECK_H
#define SIGNATURECHECK_H

#include <SorrelKit/Package.h>

#include <functional>

class FindingList;

/// A check of a package's signatures that PackageLint runs besides its own, for a program that has libsorreltrust.
using SignatureCheck = std::function<void(const SorrelKit::Package &, FindingList *)>;

#endif
