// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETMEMBER_H
#define SORRELKIT_SETMEMBER_H

#include "package/Manifest.h"
#include "sets/SetPackageData.h"
#include "sets/SplitTarget.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace SorrelKit {

/// A package of a set: the facts for callers, and those that the choice depends on.
struct SetMember {
    /// Types of splits, modules, and features that are read from a manifest, of each kind.
    static constexpr int MaxSplitNames = 1024;

    SetPackageData facts;
    SplitTarget target; ///< by its names
    /// Whether the manifest was read. Otherwise its facts are the defaults.
    bool hasManifest = false;
    QString application;                ///< the name of the package
    std::optional<qint64> versionCode;  ///< none when it is a reference
    QString describedSplit;             ///< the name of the split in the description of the set; may be empty
    QMap<QString, qint64> libraryBytes; ///< of native code, by processor
    /// Whether Android unpacks native code. A reference counts as true, which is Android's default.
    bool extractsLibraries = true;
    bool isSplitRequired = false;
    QStringList requiredSplitTypes; ///< types of splits without which Android refuses the application
    QStringList splitTypes;         ///< the types that the package is
    QStringList usedSplits;         ///< modules that the package needs
    bool isInstallTime = true;      ///< false for modules that are installed later
    bool hasConditions = false;     ///< of a module: those that follow
    int conditionSdk = 0;
    QStringList conditionFeatures;

    /// Sets the facts that @p manifest has.
    void readManifest(const Manifest &manifest);
    /// Sets the kind, the module and the target by the manifest and by the names. Comes last.
    void classify();

private:
    void readDelivery(const XmlElement &module);
};

} // namespace SorrelKit

#endif
