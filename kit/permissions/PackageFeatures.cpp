// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Package.h>

#include "format/AndroidAttributes.h"
#include "package/PackageData.h"
#include "permissions/FeatureData.h"
#include "permissions/ImpliedFeatures.h"

#include <algorithm>

namespace SorrelKit {

QList<Feature> Package::features() const
{
    QList<Feature> features;
    for (const XmlElement &child : d->manifest().root().children) {
        const QString name = Manifest::text(child, Attr::Name);
        if (child.name != QLatin1String("uses-feature") || name.isEmpty())
            continue;
        Feature feature;
        feature.d->name = name;
        feature.d->isRequired = d->isTrue(child.attribute(Attr::Required), true);
        feature.d->version = d->resolved(child.attribute(Attr::Version)).value.integer().value_or(0);
        features.append(feature);
    }
    return features;
}

QList<Feature> Package::impliedFeatures() const
{
    QList<Feature> features;
    if (!isValid())
        return features;
    // A manifest with groups of features has all of them.
    const QVector<XmlElement> &children = d->manifest().root().children;
    if (std::any_of(children.cbegin(), children.cend(),
                    [](const XmlElement &child) { return child.name == QLatin1String("feature-group"); }))
        return features;
    QSet<QString> declared;
    QSet<QString> required;
    for (const Feature &feature : this->features()) {
        declared.insert(feature.name());
        if (feature.isRequired())
            required.insert(feature.name());
    }
    ImpliedFeatures implied(targetSdkVersion(), declared, required);
    for (const Permission &permission : permissions())
        implied.addPermission(permission.name());
    if (const XmlElement *const application = d->manifest().application()) {
        for (const XmlElement &child : application->children) {
            if (child.name != QLatin1String("activity"))
                continue;
            if (const auto orientation = d->resolved(child.attribute(Attr::ScreenOrientation)).value.integer())
                implied.addOrientation(*orientation);
        }
    }
    const QMap<QString, QString> reasons = implied.reasons();
    for (auto reason = reasons.cbegin(); reason != reasons.cend(); ++reason) {
        Feature feature;
        feature.d->name = reason.key();
        feature.d->impliedReason = reason.value();
        features.append(feature);
    }
    return features;
}

} // namespace SorrelKit
