// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SELECTION_H
#define SORRELKIT_SELECTION_H

#include "sets/DeviceMatch.h"
#include "sets/SetAccess.h"
#include "sets/SetMember.h"

#include <QSet>

#include <vector>

namespace SorrelKit {

/**
 * The packages that are chosen for a device, or the first reason why nothing fits. Classes that choose add to it;
 * choice() checks what Android checks when it installs the packages:
 *
 * - there is a base, or a whole application, whose manifest can be read;
 * - each of them runs on the device's API level;
 * - when they have native code, some of it is for one of the device's processors;
 * - the types of splits that they require are among them;
 * - there is a split when the base requires one, and each module that one of them uses.
 */
class Selection
{
public:
    using Code = ChoiceCode;
    using Reason = ChoiceReason;

    /// @p match outlives the selection.
    explicit Selection(const DeviceMatch &match) : m_match(match) {}

    /// Adds @p member, which outlives the selection. Each counts once.
    void add(const SetMember &member, Reason reason, const QString &text);
    bool contains(const SetMember &member) const { return m_known.contains(&member); }
    /// Sets the reason why nothing fits. The first one counts.
    void fail(Code code, const QString &message);
    bool failed() const { return m_code != Code::Fits; }

    /// The reasons that several classes have. When the device reaches @p needed, or has one of @p abis, the set lacks the
    /// alternative that fits better.
    void failForSdk(int needed);
    void failForAbi(const QStringList &abis);

    /// The result.
    SplitChoice choice();

private:
    struct Chosen {
        const SetMember *member = nullptr;
        Reason reason = Reason::None;
        QString text;
    };

    void checkBase();
    void checkSdk();
    void checkNativeCode();
    void checkSplits();

    const DeviceMatch &m_match;
    std::vector<Chosen> m_chosen;
    QSet<const SetMember *> m_known;
    Code m_code = Code::Fits;
    QString m_message;
};

} // namespace SorrelKit

#endif
