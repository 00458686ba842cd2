// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETPACKAGEDATA_H
#define SORRELKIT_SETPACKAGEDATA_H

#include <QList>
#include <QSharedData>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/// The numbers of SetPackage::Kind.
enum class SetPackageKind {
    Unknown,
    Base,
    Feature,
    Configuration,
    Standalone,
};

/// The numbers of SetPackage::Reason.
enum class ChoiceReason {
    None,
    Always,
    Condition,
    Dependency,
    Abi,
    Language,
    ScreenDensity,
    Standalone,
    Texture,
    Fallback,
};

class SetPackageData : public QSharedData
{
public:
    QString path;
    QString splitName;
    SetPackageKind kind = SetPackageKind::Unknown;
    QString module;
    QStringList abis;
    QStringList languages;
    QList<int> screenDensities;
    int minSdkVersion = 1;
    qint64 packedBytes = 0;
    qint64 bytes = 0;
    ChoiceReason reason = ChoiceReason::None;
    QString reasonText;
};

} // namespace SorrelKit

#endif
