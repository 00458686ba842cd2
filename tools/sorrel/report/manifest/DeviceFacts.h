// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICEFACTS_H
#define DEVICEFACTS_H

#include "ManifestAttributes.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <vector>

/// The devices that a manifest names: screens, keyboards and touch screens, formats of textures, and groups of features.
/// Features outside of groups are those of SorrelKit::Package.
class DeviceFacts
{
public:
    /// Adds the element at @p path below the root ("compatible-screens/screen"), in the order of the manifest.
    void add(const QString &path, const ManifestAttributes &attributes);
    /// Adds the keys to @p json. Android takes packages for an old @p targetSdkVersion to be unaware of some screens.
    void addTo(QJsonObject *json, int targetSdkVersion) const;

private:
    struct Group {
        QString label;
        QString openGlEs;
        QJsonArray features;
    };

    static void addFeature(const ManifestAttributes &feature, Group *group);
    QJsonObject screens(int targetSdkVersion) const;

    ManifestAttributes m_screens; ///< of the element `supports-screens`
    QJsonArray m_compatibleScreens;
    QJsonArray m_configurations;
    QJsonArray m_textures;
    QJsonArray m_inputs;
    std::vector<Group> m_groups;
};

#endif
