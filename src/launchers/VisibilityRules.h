// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VISIBILITYRULES_H
#define VISIBILITYRULES_H

#include "limits/Budget.h"

#include <QMap>
#include <QString>

class ApkResources;
class QDomElement;

/// Decides which launcher entries Android shows. The values of references are remembered while this object lives.
class VisibilityRules
{
public:
    /// The work that each value of a reference costs: the text of its configuration is made and compared with others.
    static constexpr qint64 StateWork = 512;

    /// Resolves references with @p resources. Both outlive this object.
    VisibilityRules(const ApkResources &resources, Budget &budget) : m_resources(resources), m_budget(budget) {}

    /**
     * Whether @p activity, an element of @p application, is shown. Only the activity's "enabled" is resolved; the
     * application's "enabled", and "exported", count as written: kept so on purpose. A reference that does not fit in
     * the budget hides nothing, and neither do all that follow.
     */
    bool isShown(const QDomElement &activity, const QDomElement &application);

private:
    QString resolved(const QString &value);

    const ApkResources &m_resources;
    Budget &m_budget;
    bool m_isOver = false;
    QMap<QString, QString> m_known;
};

#endif
