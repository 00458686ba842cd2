// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_FEATUREDATA_H
#define SORRELKIT_FEATUREDATA_H

#include <QSharedData>
#include <QString>

namespace SorrelKit {

class FeatureData : public QSharedData
{
public:
    QString name;
    bool isRequired = true;
    int version = 0;       ///< 0 for any
    QString impliedReason; ///< empty for a feature of the manifest
};

} // namespace SorrelKit

#endif
