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
};

} // namespace SorrelKit

#endif
