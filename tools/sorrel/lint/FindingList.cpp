// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FindingList.h"

#include <algorithm>
#include <iterator>

QString severityName(Severity severity)
{
    switch (severity) {
    case Severity::Note:
        return QStringLiteral("note");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Error:
        return QStringLiteral("error");
    }
    return {};
}

void FindingList::add(const LintCheck &check, const QString &subject, const QString &text)
{
    const auto place = std::find(std::begin(LintChecks::All), std::end(LintChecks::All), &check);
    Q_ASSERT(place != std::end(LintChecks::All));
    Findings &findings = m_findings[size_t(place - std::begin(LintChecks::All))];
    if (findings.told.size() < MaxPerCheck)
        findings.told.append({QLatin1String(check.name), check.severity, shortened(subject), text});
    else
        ++findings.more;
}

QVector<Finding> FindingList::findings() const
{
    QVector<Finding> all;
    for (const Findings &findings : m_findings) {
        all += findings.told;
        if (findings.more > 0) {
            const Finding &last = findings.told.constLast();
            all.append({last.check, last.severity, QString(),
                        QStringLiteral("The same is so %1 times more.").arg(findings.more)});
        }
    }
    return all;
}

QString FindingList::shortened(const QString &text)
{
    if (text.size() <= MaxLength)
        return text;
    const int length = text.at(MaxLength - 1).isHighSurrogate() ? MaxLength - 1 : MaxLength;
    return text.left(length) + QStringLiteral("...");
}
