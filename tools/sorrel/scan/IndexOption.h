// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INDEXOPTION_H
#define INDEXOPTION_H

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

/// The option `--index` of commands that use an index of packages. CommandList.h has the program for commands with it.
class IndexOption
{
public:
    /// @p text is its help.
    explicit IndexOption(const QString &text) : m_index(QStringLiteral("index"), text, QStringLiteral("FILE")) {}

    void addTo(QCommandLineParser &parser) const { parser.addOption(m_index); }
    bool isSet(const QCommandLineParser &parser) const { return parser.isSet(m_index); }
    /// The file, as an argument.
    QString value(const QCommandLineParser &parser) const { return parser.value(m_index); }

    /// The help of the commands that fill an index.
    static QString fillText()
    {
        return QStringLiteral("Read only the packages that are new or changed since they were stored in this index, an "
                              "SQLite file, and store them.");
    }

private:
    const QCommandLineOption m_index;
};

#endif
