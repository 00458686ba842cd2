// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffReport.h"

#include "DiffNames.h"

using SorrelKit::Component;
using SorrelKit::ComponentChange;
using SorrelKit::MemberChange;
using SorrelKit::Package;
using SorrelKit::PackageDiff;
using SorrelKit::SignatureIssue;
using SorrelKit::Signatures;
using SorrelKit::Signer;
using SorrelKit::SizeChange;
using SorrelKit::TextChange;

namespace {

DiffLine::Mark markOf(TextChange::Kind kind)
{
    switch (kind) {
    case TextChange::Kind::Added:
        return DiffLine::Mark::Added;
    case TextChange::Kind::Removed:
        return DiffLine::Mark::Removed;
    case TextChange::Kind::Changed:
        break;
    }
    return DiffLine::Mark::Changed;
}

QString arrowText(const QString &before, const QString &after)
{
    return before + QStringLiteral(" \u2192 ") + after;
}

QString valueOf(const TextChange &change)
{
    return change.kind() == TextChange::Kind::Changed ? arrowText(change.before(), change.after())
                                                      : change.before() + change.after();
}

DiffLine lineOf(const TextChange &change)
{
    return {markOf(change.kind()), QString(), change.name(), valueOf(change)};
}

// One of the facts of the packages, which are equal or not.
DiffLine factLine(const QString &name, const QString &before, const QString &after)
{
    return before == after ? DiffLine{DiffLine::Mark::None, QString(), name, before}
                           : DiffLine{DiffLine::Mark::Changed, QString(), name, arrowText(before, after)};
}

QString versionText(const Package &package)
{
    const QString code = QString::number(package.versionCode());
    return package.versionName().isEmpty() ? code : package.versionName() + QStringLiteral(" (%1)").arg(code);
}

QString unverifiedText(const DiffSide &side)
{
    const QList<SignatureIssue> errors = side.signatures.errors();
    return errors.isEmpty() ? QString() : errors.constFirst().message();
}

QString guardText(const Component &component)
{
    if (component.permission() == component.writePermission())
        return component.permission().isEmpty() ? QStringLiteral("needs no permission")
                                                : QStringLiteral("needs ") + component.permission();
    const auto text = [](const QString &permission) {
        return permission.isEmpty() ? QStringLiteral("no permission") : permission;
    };
    return QStringLiteral("needs %1 to read and %2 to write")
        .arg(text(component.permission()), text(component.writePermission()));
}

// Who may use the component.
QString useText(const Component &component)
{
    if (!component.isEnabled())
        return QStringLiteral("disabled");
    return component.isExported() ? QStringLiteral("exported, ") + guardText(component)
                                  : QStringLiteral("not exported");
}

QString sizeText(const SizeChange &sizes)
{
    return QStringLiteral("%1, unpacked %2")
        .arg(arrowText(DiffNames::size(sizes.packedBefore()), DiffNames::size(sizes.packedAfter())),
             arrowText(DiffNames::size(sizes.sizeBefore()), DiffNames::size(sizes.sizeAfter())));
}

} // namespace

DiffReport::DiffReport(const DiffSide &before, const DiffSide &after, const PackageDiff &diff)
    : m_before(before), m_after(after), m_diff(diff)
{
    addAlarms();
    addApplication();
    addTexts(QStringLiteral("Permissions"), diff.permissions());
    addTexts(QStringLiteral("Features"), diff.features());
    addComponents();
    addTexts(QStringLiteral("Launchers"), diff.launchers());
    addLabels();
    addTexts(QStringLiteral("Native code for"), diff.nativeAbis());
    addTexts(QStringLiteral("Splits"), diff.splits());
    addTexts(QStringLiteral("Signature schemes"), diff.schemes());
    addSizes();
    addMembers();
}

void DiffReport::addAlarms()
{
    if (m_diff.signerMatch() == Signer::Match::Different)
        m_alarms.append(QStringLiteral("Signed by someone else: Android refuses this update"));
    if (!m_after.signatures.isVerified())
        m_alarms.append(QStringLiteral("Not verified: Android refuses this package (%1)").arg(unverifiedText(m_after)));
    if (!m_diff.isSameApplication())
        m_alarms.append(QStringLiteral("Another application: Android installs it beside the other one"));
    else if (m_after.package.versionCode() < m_before.package.versionCode())
        m_alarms.append(QStringLiteral("An older version: Android refuses this update"));
}

QString DiffReport::signerText() const
{
    switch (m_diff.signerMatch()) {
    case Signer::Match::Same:
        return QStringLiteral("the same");
    case Signer::Match::Rotated:
        return QStringLiteral("the same, with a new key");
    case Signer::Match::Rollback:
        return QStringLiteral("the same, with an earlier key");
    case Signer::Match::Different:
        return QStringLiteral("someone else");
    case Signer::Match::Unverified:
        break;
    }
    return m_before.signatures.isVerified()
               ? QStringLiteral("unknown: the new package is not verified")
               : QStringLiteral("unknown: the old package is not verified (%1)").arg(unverifiedText(m_before));
}

void DiffReport::addApplication()
{
    const Package &before = m_before.package;
    const Package &after = m_after.package;
    const auto orNone = [](const QString &text) { return text.isEmpty() ? QStringLiteral("none") : text; };
    const auto number = [](int level) { return QString::number(level); };
    const Signer::Match match = m_diff.signerMatch();
    const bool isEqual = match == Signer::Match::Same || match == Signer::Match::Unverified;
    DiffSection section{QStringLiteral("Application"), {}};
    section.lines.append(factLine(QStringLiteral("package"), before.packageName(), after.packageName()));
    section.lines.append({isEqual ? DiffLine::Mark::None : DiffLine::Mark::Changed, QString(), QStringLiteral("signer"),
                          signerText(), match == Signer::Match::Different});
    for (const TextChange &signer : m_diff.signers())
        section.lines.append(lineOf(signer));
    section.lines.append(factLine(QStringLiteral("version"), versionText(before), versionText(after)));
    section.lines.append(
        factLine(QStringLiteral("minimum SDK"), number(before.minSdkVersion()), number(after.minSdkVersion())));
    section.lines.append(
        factLine(QStringLiteral("target SDK"), number(before.targetSdkVersion()), number(after.targetSdkVersion())));
    for (const TextChange &fact : m_diff.facts()) {
        if (fact.name() == QLatin1String("openGlEsVersion"))
            section.lines.append(factLine(QStringLiteral("OpenGL ES"), orNone(fact.before()), orNone(fact.after())));
    }
    m_sections.append(section);
}

void DiffReport::addTexts(const QString &title, const QList<TextChange> &changes)
{
    DiffSection section{title, {}};
    for (const TextChange &change : changes)
        section.lines.append(lineOf(change));
    if (!section.lines.isEmpty())
        m_sections.append(section);
}

void DiffReport::addLabels()
{
    DiffSection section{QStringLiteral("Labels"), {}};
    for (const TextChange &change : m_diff.labels()) {
        DiffLine line = lineOf(change);
        if (line.name.isEmpty())
            line.name = QStringLiteral("default");
        section.lines.append(line);
    }
    if (!section.lines.isEmpty())
        m_sections.append(section);
}

void DiffReport::addComponents()
{
    DiffSection section{QStringLiteral("Components"), {}};
    for (const ComponentChange &change : m_diff.components()) {
        const Component component = change.kind() == TextChange::Kind::Removed ? change.before() : change.after();
        QString value = useText(component);
        if (change.kind() == TextChange::Kind::Changed && useText(change.before()) != value)
            value = arrowText(useText(change.before()), value);
        const QString name = DiffNames::componentKind(component.kind()) + QLatin1Char(' ') + component.name();
        section.lines.append({markOf(change.kind()), QString(), name, value, change.isOpened()});
    }
    if (!section.lines.isEmpty())
        m_sections.append(section);
}

void DiffReport::addSizes()
{
    const SizeChange file = m_diff.fileSize();
    DiffSection section{QStringLiteral("Sizes"), {}};
    for (const SizeChange &sizes : m_diff.sizes())
        section.lines.append({DiffLine::Mark::Changed, DiffNames::growth(sizes.packedGrowth()),
                              DiffNames::category(sizes.category()), sizeText(sizes)});
    if (section.lines.isEmpty() && file.packedGrowth() == 0)
        return;
    section.lines.append(
        {DiffLine::Mark::Changed, DiffNames::growth(file.packedGrowth()), QStringLiteral("file"), sizeText(file)});
    m_sections.append(section);
}

void DiffReport::addMembers()
{
    DiffSection section{QStringLiteral("Files"), {}};
    for (const TextChange::Kind kind : {TextChange::Kind::Added, TextChange::Kind::Removed, TextChange::Kind::Changed})
        section.unlisted += m_diff.memberCount(kind);
    for (const MemberChange &member : m_diff.members()) {
        const SizeChange sizes = member.sizes();
        const QString name =
            member.package().isEmpty() ? member.path() : member.package() + QStringLiteral(": ") + member.path();
        const QString value =
            member.kind() == TextChange::Kind::Changed
                ? arrowText(DiffNames::size(sizes.packedBefore()), DiffNames::size(sizes.packedAfter()))
                : QString();
        section.lines.append({markOf(member.kind()), DiffNames::growth(sizes.packedGrowth()), name, value});
        --section.unlisted;
    }
    if (m_diff.hasOtherBytes())
        section.lines.append({DiffLine::Mark::Changed, QString(),
                              QStringLiteral("the same files, in another order or with other bytes between them"),
                              QString()});
    if (!section.lines.isEmpty())
        m_sections.append(section);
}
