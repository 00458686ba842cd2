// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_EXPANSIONFILEDATA_H
#define SORRELKIT_EXPANSIONFILEDATA_H

#include <QSharedData>
#include <QString>

namespace SorrelKit {

class ExpansionFileData : public QSharedData
{
public:
    QString path;
    QString installPath;
    qint64 packedBytes = 0;
    qint64 bytes = 0;
};

} // namespace SorrelKit

#endif
