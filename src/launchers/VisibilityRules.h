// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VISIBILITYRULES_H
#define VISIBILITYRULES_H

#include "format/Allowance.h"

#include <QMap>
#include <QString>

class ApkResources;
class QDomElement;

/// Which launcher entries Android shows. What a reference says is remembered while this object lives.
class VisibilityRules
{
public:
    /// Values that references have in all, while this object lives; 16 characters of a reference count as one. From
    /// there on a reference says nothing. Thousands of texts may mean one resource of thousands of configurations.
    static constexpr int MaxValues = 1 << 17;

    /// References are resolved by @p resources, which outlives this object.
    explicit VisibilityRules(const ApkResources &resources) : m_resources(resources), m_values(MaxValues) {}

    /**
     * Whether @p activity, an element of @p application, is shown. Only the activity's "enabled" is resolved; that of
     * the application, and "exported", count as written: kept so on purpose.
     */
    bool isShown(const QDomElement &activity, const QDomElement &application);

private:
    QString resolved(const QString &value);

    const ApkResources &m_resources;
    QMap<QString, QString> m_known;
    Allowance m_values;
};

#endif
