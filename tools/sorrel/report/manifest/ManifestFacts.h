// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTFACTS_H
#define MANIFESTFACTS_H

#include "DeviceFacts.h"
#include "LibraryFacts.h"
#include "ProvidedServices.h"

#include <SorrelKit/Package.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

/**
 * Facts of a manifest that no class of the kit has, because only programs ask for them: how the package was built, where
 * it may be installed, the devices that it is for, the libraries that it uses, and what it offers. References are
 * resolved for a phone without a language.
 */
class ManifestFacts
{
public:
    /// Reads the manifest of @p package once.
    explicit ManifestFacts(const SorrelKit::Package &package);

    QJsonObject toJson() const { return m_json; }

private:
    void addRoot(const ManifestAttributes &attributes);
    /// Adds the element at @p path below the root.
    void add(const QString &path, const ManifestAttributes &attributes);
    void addApplication(const ManifestAttributes &attributes);

    DeviceFacts m_devices;
    LibraryFacts m_libraries;
    ProvidedServices m_provided;
    QJsonArray m_originalPackages;
    QJsonArray m_verifiers;
    QJsonArray m_metaData;
    QJsonObject m_json;
};

#endif
