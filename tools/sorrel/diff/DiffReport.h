// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIFFREPORT_H
#define DIFFREPORT_H

#include "FileName.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/PackageDiff.h>
#include <SorrelKit/Signatures.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// One of the two packages of `sorrel diff`, with its signatures.
struct DiffSide {
    explicit DiffSide(const FileName &name)
        : file(name), package(SorrelKit::Package::fromNativePath(name.path())), signatures(package)
    {
    }

    FileName file;
    SorrelKit::Package package;
    SorrelKit::Signatures signatures;
};

/// A line of a report about differences.
struct DiffLine {
    enum class Mark {
        None, ///< a fact that did not change
        Added,
        Removed,
        Changed,
    };

    Mark mark = Mark::None;
    QString size; ///< a number in a column of its own; empty in most sections
    QString name;
    QString value;
    bool isAlarming = false; ///< whether a user should look at it first
};

/// A group of lines under a heading.
struct DiffSection {
    QString title;
    QVector<DiffLine> lines;
    int unlisted = 0; ///< differences without a line
};

/**
 * The differences between two packages, in the order in which a user asks before an update: the application and its signer,
 * versions, permissions, features, components, launchers, labels, processors, splits, signatures, sizes, members. The
 * texts are those of the packages. DiffText and DiffPage make them harmless.
 */
class DiffReport
{
public:
    DiffReport(const DiffSide &before, const DiffSide &after, const SorrelKit::PackageDiff &diff);

    QString before() const { return m_before.file.text(); }
    QString after() const { return m_after.file.text(); }
    /// Reasons for which Android refuses the update, or does not take it for one, the most important first.
    const QStringList &alarms() const { return m_alarms; }
    /// Sections without lines are left out.
    const QVector<DiffSection> &sections() const { return m_sections; }

private:
    void addAlarms();
    void addApplication();
    void addTexts(const QString &title, const QList<SorrelKit::TextChange> &changes);
    void addLabels();
    void addComponents();
    void addSizes();
    void addMembers();
    QString signerText() const;

    DiffSide m_before;
    DiffSide m_after;
    SorrelKit::PackageDiff m_diff;
    QStringList m_alarms;
    QVector<DiffSection> m_sections;
};

#endif
