// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FindingList.h"

#include <algorithm>

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
    const std::vector<const LintCheck *> &checks = LintChecks::all();
    const auto place = std::find(checks.cbegin(), checks.cend(), &check);
    Q_ASSERT(place != checks.cend());
    Findings &findings = m_findings[size_t(place - checks.cbegin())];
    if (findings.listed.size() < MaxPerCheck)
        findings.listed.append({QLatin1String(check.name), check.severity, shortened(subject), text});
    else
        ++findings.more;
}

QVector<Finding> FindingList::findings() const
{
    QVector<Finding> all;
    for (const Findings &findings : m_findings) {
        all += findings.listed;
        if (findings.more > 0) {
            const Finding &last = findings.listed.constLast();
            all.append(
                {last.check, last.severity, QString(),
                 QStringLiteral("Lint found this %1.").arg(counted(findings.more, QStringLiteral("more time")))});
        }
    }
    return all;
}

QString FindingList::counted(qint64 count, const QString &noun)
{
    return QStringLiteral("%1 %2%3").arg(QString::number(count), noun, count == 1 ? QString() : QStringLiteral("s"));
}

QString FindingList::shortened(const QString &text)
{
    if (text.size() <= MaxLength)
        return text;
    const int length = text.at(MaxLength - 1).isHighSurrogate() ? MaxLength - 1 : MaxLength;
    return text.left(length) + QStringLiteral("...");
}
