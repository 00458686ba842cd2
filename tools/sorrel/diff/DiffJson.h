// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIFFJSON_H
#define DIFFJSON_H

#include "DiffReport.h"

#include <QJsonObject>

#include <functional>

/// Differences for programs, as docs/diff.schema.json describes them.
class DiffJson
{
public:
    /// The report of a package's signatures.
    using SignerJson = std::function<QJsonObject(const SorrelKit::Signatures &)>;

    static QJsonObject toJson(const DiffSide &before, const DiffSide &after, const SorrelKit::PackageDiff &diff,
                              const SignerJson &signerJson);
};

#endif
