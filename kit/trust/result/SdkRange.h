// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SDKRANGE_H
#define SORRELKIT_SDKRANGE_H

#include <algorithm>
#include <limits>

namespace SorrelKit {

/// API levels from the first to the last; none when the first is above the last.
struct SdkRange {
    // The versions of Android that changed what is verified.
    static constexpr int JellyBeanMr2 = 18; ///< the strongest digest of a member counts
    static constexpr int Nougat = 24;       ///< v2
    static constexpr int Oreo = 26;         ///< target sandboxes
    static constexpr int Pie = 28;          ///< v3
    static constexpr int R = 30;            ///< v4, and v2 at least for packages with this target
    static constexpr int Tiramisu = 33;     ///< v3.1

    int min = 1;
    int max = std::numeric_limits<int>::max();

    bool isEmpty() const { return min > max; }
    /// The API levels of this range from @p first on.
    SdkRange from(int first) const { return {std::max(min, first), max}; }
};

} // namespace SorrelKit

#endif
