// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETACCESS_H
#define SORRELKIT_SETACCESS_H

#include "setinfo/ExpansionFileData.h"
#include "sets/SetPackageData.h"
#include "sets/SplitChoiceData.h"

#include <SorrelKit/ExpansionFile.h>
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
    static ExpansionFile expansion(const ExpansionFileData &data)
    {
        ExpansionFile file;
        file.d = QSharedDataPointer<ExpansionFileData>(new ExpansionFileData(data));
        return file;
    }
    static SplitChoice choice(ChoiceCode code, const QString &message)
    {
        SplitChoice choice;
        choice.d->code = code;
        choice.d->message = message;
        return choice;
    }
    /// A choice that fits.
    static SplitChoice choice(const QList<SetPackage> &packages, qint64 libraryBytes)
    {
        SplitChoice choice = SetAccess::choice(ChoiceCode::Fits, QString());
        choice.d->packages = packages;
        choice.d->libraryBytes = libraryBytes;
        return choice;
    }
    static void setExpansions(SplitChoice *choice, const QList<ExpansionFile> &expansions)
    {
        choice->d->expansions = expansions;
    }
};

} // namespace SorrelKit

#endif
