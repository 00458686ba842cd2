// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_FEATURE_H
#define SORRELKIT_FEATURE_H

#include <QString>

namespace SorrelKit {

/// A feature of the device that a package uses (`uses-feature`). A plain value, which Package::features() makes.
/// @since 0.5.1
struct Feature {
    QString name;           ///< as the platform calls it ("android.hardware.camera")
    bool isRequired = true; ///< whether the package is for devices that have it alone
};

} // namespace SorrelKit

#endif
