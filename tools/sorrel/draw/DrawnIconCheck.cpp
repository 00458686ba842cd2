// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawnIconCheck.h"

#include <QImage>

using SorrelKit::Entry;

std::unique_ptr<IconCheck> DrawnIconCheck::make(const SorrelKit::Package &package, FindingList *findings)
{
    return std::make_unique<DrawnIconCheck>(package, findings);
}

void DrawnIconCheck::check(const Entry &launcher)
{
    const quint32 resource = launcher.iconResource();
    const bool isKnown = resource != 0 && m_outcomes.contains(resource);
    if (!isKnown && (m_drawn == MaxIcons || m_isTooMuch)) {
        ++m_skippedLaunchers;
        return;
    }
    const Outcome icon = isKnown ? m_outcomes.value(resource) : draw(launcher);
    m_outcomes.insert(resource, icon);
    if (!icon.isDrawn)
        m_findings->add(
            LintChecks::UnresolvedIcon, launcher.name(),
            QStringLiteral("The launcher's icon cannot be drawn (%1); hosts show no icon.").arg(icon.fault));
    else if (!icon.fault.isEmpty())
        m_findings->add(LintChecks::PartialIcon, launcher.name(),
                        QStringLiteral("The launcher's icon is drawn incompletely, or from another of its files (%1).")
                            .arg(icon.fault));
}

DrawnIconCheck::Outcome DrawnIconCheck::draw(const Entry &launcher)
{
    constexpr int IconSize = 48;
    Outcome outcome;
    outcome.isDrawn = !m_renderer.icon(launcher, SorrelKit::IconRequest(IconSize)).isNull();
    outcome.fault = FindingList::shortened(m_renderer.error().text());
    ++m_drawn;
    m_isTooMuch = m_renderer.error().code() == SorrelKit::IconError::Code::TooMuch;
    return outcome;
}

void DrawnIconCheck::finish()
{
    if (m_skippedLaunchers > 0)
        m_findings->add(LintChecks::LaunchersSkipped, QString(),
                        QStringLiteral("Lint did not draw the icons of %1, because drawing them may take too long.")
                            .arg(FindingList::counted(m_skippedLaunchers, QStringLiteral("launcher"))));
}
