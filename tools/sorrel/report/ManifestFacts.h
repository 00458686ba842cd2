// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTFACTS_H
#define MANIFESTFACTS_H

#include <SorrelKit/Package.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QXmlStreamAttributes>

/**
 * Facts of a manifest that no class of the kit has, because only programs ask for them: how the package was built, where
 * it may be installed, the screens that it is for, and the libraries that it uses. Values that refer to a resource are the
 * text of the reference ("@bool/debug").
 */
class ManifestFacts
{
public:
    /// Reads the manifest of @p package once.
    explicit ManifestFacts(const SorrelKit::Package &package);

    QJsonObject toJson() const { return m_json; }

private:
    void addManifest(const QXmlStreamAttributes &attributes);
    void addChild(const QString &element, const QXmlStreamAttributes &attributes);
    void addOfApplication(const QString &element, const QXmlStreamAttributes &attributes);
    void addScreens(int targetSdkVersion);

    QXmlStreamAttributes m_screens; ///< of the element `supports-screens`
    QJsonArray m_libraries;
    QJsonArray m_originalPackages;
    QJsonObject m_json;
};

#endif
