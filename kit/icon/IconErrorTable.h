// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONERRORTABLE_H
#define SORRELKIT_ICONERRORTABLE_H

#include "drawable/source/DrawableError.h"

#include <SorrelKit/IconError.h>

namespace SorrelKit {

/// The table of the code and the English text of each DrawableFault.
namespace IconErrorTable {

/// The public error for @p error; no error for DrawableFault::None.
IconError iconError(const DrawableError &error);

} // namespace IconErrorTable

} // namespace SorrelKit

#endif
