// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETACCESS_H
#define SORRELKIT_SETACCESS_H

#include "sets/SetPackageData.h"
#include "sets/SplitChoiceData.h"

#include <SorrelKit/SetPackage.h>
#include <SorrelKit/SplitChoice.h>

namespace SorrelKit {

/// Makes public values of their data.
class SetAccess
{
public:
    static SetPackage package(const SetPackageData &data)
    {
        SetPackage package;
        package.d = QSharedDataPointer<SetPackageData>(new SetPackageData(data));
        return package;
    }
    static SplitChoice choice(ChoiceCode code, const QString &message, const QList<SetPackage> &packages = {})
    {
        SplitChoice choice;
        choice.d->code = code;
        choice.d->message = message;
        choice.d->packages = packages;
        return choice;
    }
};

} // namespace SorrelKit

#endif
