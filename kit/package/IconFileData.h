// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONFILEDATA_H
#define SORRELKIT_ICONFILEDATA_H

#include <QSharedData>
#include <QSize>
#include <QString>

namespace SorrelKit {

class IconFileData : public QSharedData
{
public:
    QString path;
    QString kind;
    QSize size;
    int density = 0;
    bool isOfPlatform = false;
};

} // namespace SorrelKit

#endif
