// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SPLITCHOICEDATA_H
#define SORRELKIT_SPLITCHOICEDATA_H

#include <SorrelKit/ExpansionFile.h>
#include <SorrelKit/SetPackage.h>

#include <QList>
#include <QSharedData>
#include <QString>

namespace SorrelKit {

/// The numbers of SplitChoice::Code.
enum class ChoiceCode {
    Fits,
    CannotRead,
    BadDevice,
    BadContents,
    SdkTooLow,
    NoNativeCode,
    NoScreen,
    MissingPackage,
};

class SplitChoiceData : public QSharedData
{
public:
    ChoiceCode code = ChoiceCode::CannotRead;
    QString message = QStringLiteral("could not open the set");
    QList<SetPackage> packages;
    QList<ExpansionFile> expansions;
    qint64 libraryBytes = 0; ///< of native code that Android unpacks
};

} // namespace SorrelKit

#endif
