// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTROWS_H
#define REPORTROWS_H

#include "TextStyle.h"

#include <QString>
#include <QVector>

/// Lines of a report for people, each with a key and a value. The values are in one column.
class ReportRows
{
public:
    enum class Emphasis {
        None,
        Strong,
        Error,
    };

    /// Adds a line. Spaces at the start of @p key indent it. A key or a value from right to left is isolated.
    void add(const QString &key, const QString &value, Emphasis emphasis = Emphasis::None);
    /// Adds a line whose value is safe for a terminal already, such as one of isolatedText().
    void addSafe(const QString &key, const QString &value, Emphasis emphasis = Emphasis::None);
    /// Adds the lines of @p other.
    void add(const ReportRows &other) { m_rows += other.m_rows; }

    /// The lines. Characters that control a terminal become U+FFFD.
    QString toText(const TextStyle &style) const;

private:
    struct Row {
        QString key;
        QString value;
        Emphasis emphasis = Emphasis::None;
    };
    QVector<Row> m_rows;
};

#endif
