// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_DIFFCARDS_H
#define VIEWER_DIFFCARDS_H

#include "pages/parts/CardModel.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QList>

#include <functional>

namespace Viewer {

/**
 * The differences between two packages as cards, from the object that docs/diff.schema.json describes: first the
 * signers and the reasons for which Android refuses the update, then permissions, with dangerous ones first, and the
 * rest in the order of `sorrel diff`. Each section has MaxSectionCards at most, and a last card for the others.
 */
class DiffCards
{
    Q_DECLARE_TR_FUNCTIONS(Viewer::DiffCards)

public:
    static constexpr int MaxSectionCards = 200;

    /// The icons of cards that warn come from @p warning.
    DiffCards(const QJsonObject &diff, const QIcon &warning);

    const QList<Card> &cards() const { return m_cards; }

private:
    using Fill = std::function<void(const QJsonObject &change, Card *card)>;

    void addSigner();
    void addAlarms();
    void addFacts();
    void addPermissions();
    void addSection(const QString &title, const QJsonArray &changes, const Fill &fill, int unlisted = 0);
    void addTexts(const QString &title, const char *key, const QString &nameless = QString());
    void addComponents();
    void addSizes();
    void addFiles();
    void addAlarm(const QString &text, const QString &description = QString());
    /// The texts are safe parts; @p original is copied.
    void addFact(const QString &title, const QString &before, const QString &after, const QString &original);

    static Card cardOf(const QJsonObject &change);
    static QString badgeOf(const QJsonObject &change);
    static QString arrow(const QString &before, const QString &after);
    static QString versionOf(const QJsonObject &package);
    static QString firstError(const QJsonObject &package);
    static QString useOf(const QJsonObject &component);
    static QString categoryOf(const QString &name);
    static QString growthOf(const QJsonObject &sizes);

    QJsonObject m_diff;
    QJsonObject m_before;
    QJsonObject m_after;
    QIcon m_warning;
    QList<Card> m_cards;
};

} // namespace Viewer

#endif
