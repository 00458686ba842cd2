// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_FEATUREWORDS_H
#define SORRELKIT_FEATUREWORDS_H

#include <QString>

namespace SorrelKit {

/// Plain English words for the feature @p name: "Bluetooth Low Energy" for "android.hardware.bluetooth_le". A feature of
/// the platform without words of its own has the words of its name; another feature has its name.
QString featureWords(const QString &name);

} // namespace SorrelKit

#endif
