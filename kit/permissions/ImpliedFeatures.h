// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_IMPLIEDFEATURES_H
#define SORRELKIT_IMPLIEDFEATURES_H

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/**
 * The features that a package needs without naming them, as stores and aapt2 derive them:
 *
 * | cause                                              | feature                                                   |
 * |----------------------------------------------------|-----------------------------------------------------------|
 * | every package without a touch screen in its list   | `faketouch`                                               |
 * | a permission                                       | what it is for: `camera` for CAMERA                       |
 * | an activity that is upright, or on its side        | `screen.portrait`, `screen.landscape`                     |
 * | a required feature that is part of another         | the other one: `camera` for `camera.flash`                |
 *
 * A feature that the manifest names is not added, whether it is required or not.
 */
class ImpliedFeatures
{
public:
    /// Features of a package for @p targetSdkVersion, whose manifest names the features @p declared and requires
    /// @p required of them.
    ImpliedFeatures(int targetSdkVersion, const QSet<QString> &declared, const QSet<QString> &required);

    /// Adds the features of the permission @p name ("android.permission.CAMERA").
    void addPermission(const QString &name);
    /// Adds the feature of an activity whose `screenOrientation` is @p orientation.
    void addOrientation(int orientation);

    /// The reason for each feature, by its name.
    QMap<QString, QString> reasons() const;

private:
    void add(const QString &feature, const QString &reason);

    const int m_targetSdkVersion;
    const QSet<QString> m_declared;
    QMap<QString, QStringList> m_reasons;
};

} // namespace SorrelKit

#endif
