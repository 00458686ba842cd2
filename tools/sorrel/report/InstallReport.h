// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INSTALLREPORT_H
#define INSTALLREPORT_H

#include "ReportRows.h"

#include <SorrelKit/Device.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/SplitChoice.h>

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// The part of a report that `info --device` adds: the packages of a set that an installer installs on a device, and
/// what they weigh. The constructor reads the set.
class InstallReport
{
public:
    InstallReport(const SorrelKit::Package &package, const SorrelKit::Device &device);

    bool fits() const { return m_choice.fits(); }
    /// The reason why nothing fits, in English; empty when fits() is true.
    QString errorText() const { return m_choice.message(); }
    /// The part for people.
    ReportRows rows() const;
    /// The part for programs.
    QJsonObject toJson() const;

private:
    SorrelKit::SplitChoice m_choice;
    QStringList m_mismatches;
};

#endif
