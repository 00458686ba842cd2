// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTJSON_H
#define REPORTJSON_H

#include <SorrelKit/IconFile.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

/// Values in reports for programs.
namespace ReportJson {

/// Texts by language tag.
QJsonObject labels(const QMap<QString, QString> &byLanguage);
/// The files of an icon or a banner.
QJsonArray icons(const QList<SorrelKit::IconFile> &files);

} // namespace ReportJson

#endif
