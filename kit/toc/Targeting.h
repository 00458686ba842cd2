// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TARGETING_H
#define SORRELKIT_TARGETING_H

#include <QString>
#include <QStringList>
#include <QVector>

namespace SorrelKit {

/// The devices that a package, or a variant of a set, is for.
struct Targeting {
    /// One property of a device. The package is for devices with one of the values, unless one of the alternatives fits
    /// the device better: other packages are for these. Without values, it is for devices that no alternative fits.
    template <typename Value>
    struct Dimension {
        bool isAny() const { return values.isEmpty() && alternatives.isEmpty(); }

        QVector<Value> values;
        QVector<Value> alternatives;
    };

    Dimension<int> sdkVersions; ///< the lowest API levels
    Dimension<QString> abis;    ///< "arm64-v8a"
    Dimension<QStringList> abiSets;
    Dimension<QString> languages; ///< "de"
    Dimension<int> densities;     ///< dots per inch, or a value of Configuration::Density
    Dimension<int> textures;      ///< formats of textures, by the numbers of the table
};

} // namespace SorrelKit

#endif
