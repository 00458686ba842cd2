// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCEREPORT_H
#define RESOURCEREPORT_H

#include "FileName.h"
#include "TextStyle.h"

#include <SorrelKit/Resources.h>

#include <QJsonObject>
#include <QString>

/// The report of `sorrel resources` about one package. The texts for people are safe for a terminal.
class ResourceReport
{
public:
    /// Reports the resources of @p package in the file @p file.
    ResourceReport(const FileName &file, const SorrelKit::Package &package) : m_file(file), m_resources(package) {}

    const SorrelKit::Resources &resources() const { return m_resources; }

    /// The width of the longest name, at most MaxNameWidth.
    int nameWidth() const;
    /// The resource @p id on one line: its id, its name in @p nameWidth columns, and its default value. The line is cut
    /// to @p columns, unless that is 0.
    QString toLine(quint32 id, int nameWidth, int columns, const TextStyle &style) const;
    /// The resource @p id with all its values, each with its configuration and its items on lines of their own.
    QString toText(quint32 id, const TextStyle &style) const;
    /// The same for programs.
    QJsonObject toJson(quint32 id) const;

private:
    static constexpr int MaxNameWidth = 40;

    FileName m_file;
    SorrelKit::Resources m_resources;
};

#endif
