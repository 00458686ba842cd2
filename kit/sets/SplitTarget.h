// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SPLITTARGET_H
#define SORRELKIT_SPLITTARGET_H

#include <QString>
#include <QStringList>
#include <QVector>

namespace SorrelKit {

/**
 * The devices that a split is for, by its name or by that of its file. Tools name them alike:
 *
 * | name of the split       | name of the file                                   | target                     |
 * |-------------------------|----------------------------------------------------|----------------------------|
 * | `config.de`             | `config.de.apk`, `split_config.de.apk`             | language                   |
 * | `config.xxhdpi`         | `base-xxhdpi.apk`                                  | screen density             |
 * | `camera.config.x86_64`  | `camera-x86_64_2.apk`: of the variant 2            | processor, of a module     |
 * | none                    | `base-master.apk`, `base.apk`                      | none: the base             |
 * | none                    | `standalone-arm64_v8a_xxhdpi.apk`, `universal.apk` | of the whole application   |
 *
 * A name that fits no form has no target.
 */
struct SplitTarget {
    /// The target of the package with the name @p splitName, which may be empty, in the file @p path of a set.
    static SplitTarget of(const QString &splitName, const QString &path);

    QString module;               ///< "base" or that of a feature; empty when the names have none
    bool isConfiguration = false; ///< whether the names are those of a split for some devices
    bool isStandalone = false;
    bool isFallback = false; ///< for languages that have no split
    QStringList abis;
    QStringList languages;
    QVector<int> densities;
    int variant = 1; ///< the number in the name of the file

private:
    void readQualifiers(QString text);
};

} // namespace SorrelKit

#endif
