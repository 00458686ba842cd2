// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DETAILSJSON_H
#define DETAILSJSON_H

#include "FileName.h"

#include <SorrelKit/Package.h>

#include <QJsonObject>
#include <QLocale>

/// The details of a package for programs, which `info --json --all` adds to the report. Reading them costs more than the
/// rest of the report: they need the platform, the whole resource table and the whole manifest.
namespace DetailsJson {

/// The details of @p package in the file @p file. Labels are those for @p locale.
QJsonObject of(const FileName &file, const SorrelKit::Package &package, const QLocale &locale);

} // namespace DetailsJson

#endif
