// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INDEXOPTION_H
#define INDEXOPTION_H

#include "FileName.h"

#include "shelf/index/IndexFile.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

/// The option `--index` of commands that use an index of packages.
class IndexOption
{
public:
    void addTo(QCommandLineParser &parser) const { parser.addOption(m_index); }
    bool isSet(const QCommandLineParser &parser) const { return parser.isSet(m_index); }

    /// Opens the index of the option, or that of the user. Prints an error, also when another file is used instead.
    /// Returns whether an index is open.
    bool open(const QCommandLineParser &parser, bool isReadOnly, SorrelKit::IndexFile *file) const;

private:
    const QCommandLineOption m_index{
        QStringLiteral("index"),
        QStringLiteral("The index of packages, an SQLite file; by default that of the user, in the folder for caches."),
        QStringLiteral("FILE")};
};

#endif
