// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRAWNICONCHECK_H
#define DRAWNICONCHECK_H

#include "FindingList.h"
#include "IconCheck.h"

#include <SorrelKit/DrawableRenderer.h>

#include <QHash>

/**
 * Draws the icons of a package's launchers, each resource once, and reports those that cannot be drawn as the package
 * describes them. Each icon may take as long as the limits of drawing allow, so at most MaxIcons are drawn, and none
 * after an icon that exceeds these limits.
 */
class DrawnIconCheck : public IconCheck
{
public:
    static constexpr int MaxIcons = 20;

    DrawnIconCheck(const SorrelKit::Package &package, FindingList *findings) : m_renderer(package), m_findings(findings)
    {
    }
    /// An IconCheckFactory.
    static std::unique_ptr<IconCheck> make(const SorrelKit::Package &package, FindingList *findings);

    void check(const SorrelKit::Entry &launcher) override;
    void finish() override;

private:
    struct Outcome {
        bool isDrawn = false;
        QString fault; ///< empty when the icon is drawn as the package describes it
    };

    Outcome draw(const SorrelKit::Entry &launcher);

    SorrelKit::DrawableRenderer m_renderer;
    QHash<quint32, Outcome> m_outcomes; ///< by resource id
    FindingList *m_findings;
    int m_drawn = 0;
    int m_skippedLaunchers = 0;
    bool m_isTooMuch = false; ///< whether an icon exceeded the limits of drawing
};

#endif
