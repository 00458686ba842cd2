// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MEMBERCATEGORY_H
#define SORRELKIT_MEMBERCATEGORY_H

#include "format/ByteView.h"

#include <SorrelKit/SizeChange.h>

namespace SorrelKit {

/// The categories of members, by their names.
class MemberCategory
{
public:
    /// The category of the member @p name.
    static SizeChange::Category of(const ByteView &name);
};

} // namespace SorrelKit

#endif
