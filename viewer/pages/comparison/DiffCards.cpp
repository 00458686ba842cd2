// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/comparison/DiffCards.h"

#include "permissions/PermissionTable.h"
#include "reading/SafeText.h"

#include <QJsonArray>
#include <QLocale>

#include <algorithm>

namespace Viewer {

namespace {

QString textIn(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

qint64 bytesIn(const QJsonObject &object, const char *key)
{
    constexpr double Most = double(qint64(1) << 53);
    return qint64(qBound(0.0, object.value(QLatin1String(key)).toDouble(), Most));
}

QString bytesText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1);
}

// Of Android's protection level, whose lowest bits are its base.
bool isDangerousPermission(const QString &name)
{
    constexpr quint32 Base = 0xf;
    constexpr quint32 Dangerous = 1;
    const auto facts = SorrelKit::PermissionTable::find(name);
    return facts && (facts->protection & Base) == Dangerous;
}

bool isVerified(const QJsonObject &package)
{
    return package.value(QLatin1String("signer")).toObject().value(QLatin1String("verified")).toBool();
}

} // namespace

DiffCards::DiffCards(const QJsonObject &diff, const QIcon &warning)
    : m_diff(diff),
      m_before(diff.value(QLatin1String("before")).toObject()),
      m_after(diff.value(QLatin1String("after")).toObject()),
      m_warning(warning)
{
    addSigner();
    addAlarms();
    addPermissions();
    addFacts();
    addTexts(tr("Features"), "features");
    addComponents();
    addTexts(tr("Launchers"), "launchers");
    addTexts(tr("Names of the application"), "labels", tr("All other languages"));
    addTexts(tr("Native code for"), "nativeAbis");
    addTexts(tr("Splits"), "splits");
    addTexts(tr("Signature schemes"), "schemes");
    addSizes();
    addFiles();
}

void DiffCards::addSigner()
{
    m_cards.append(Card::heading(tr("Signer")));
    const QString match = textIn(m_diff, "signerMatch");
    if (match == QLatin1String("different")) {
        addAlarm(tr("Signed by someone else: Android refuses this update"));
    } else if (match == QLatin1String("same") || match == QLatin1String("rotated")
               || match == QLatin1String("rollback")) {
        Card card;
        card.title = tr("The signer is the same");
        if (match == QLatin1String("rotated"))
            card.title = tr("The signer is the same, with a new key");
        else if (match == QLatin1String("rollback"))
            card.title = tr("The signer is the same, with an earlier key");
        m_cards.append(card);
    } else if (isVerified(m_after)) {
        addAlarm(tr("The signers cannot be compared: the old package is not verified"), firstError(m_before));
    }
    if (!isVerified(m_after))
        addAlarm(tr("Not verified: Android refuses the new package"), firstError(m_after));
    const QJsonArray signers = m_diff.value(QLatin1String("signers")).toArray();
    for (int i = 0; i < qMin(int(signers.size()), MaxSectionCards); ++i) {
        const QJsonObject signer = signers.at(i).toObject();
        Card card = cardOf(signer);
        card.name = card.title;
        card.title = safeText(textIn(signer, "before") + textIn(signer, "after"));
        card.description.clear();
        m_cards.append(card);
    }
}

void DiffCards::addAlarms()
{
    if (!m_diff.value(QLatin1String("sameApplication")).toBool(true))
        addAlarm(tr("Another application: Android installs it beside the other one"));
    else if (textIn(m_after, "versionCode").toLongLong() < textIn(m_before, "versionCode").toLongLong())
        addAlarm(tr("An older version: Android refuses this update"));
    if (!m_diff.value(QLatin1String("different")).toBool(true)) {
        Card card;
        card.title = tr("The packages do not differ");
        m_cards.append(card);
    }
}

void DiffCards::addAlarm(const QString &text, const QString &description)
{
    Card card;
    card.title = text;
    card.description = description;
    card.badge = tr("Warning");
    card.icon = m_warning;
    card.isAlarming = true;
    m_cards.append(card);
}

void DiffCards::addFacts()
{
    const auto number = [](const QJsonObject &package, const char *key) {
        return QString::number(package.value(QLatin1String(key)).toInt());
    };
    m_cards.append(Card::heading(tr("Application")));
    addFact(tr("Package"), safePart(textIn(m_before, "package")), safePart(textIn(m_after, "package")),
            textIn(m_after, "package"));
    addFact(tr("Version"), versionOf(m_before), versionOf(m_after), textIn(m_after, "versionName"));
    addFact(tr("Lowest API level that it runs on"), number(m_before, "minSdkVersion"), number(m_after, "minSdkVersion"),
            number(m_after, "minSdkVersion"));
    addFact(tr("API level that it was made for"), number(m_before, "targetSdkVersion"),
            number(m_after, "targetSdkVersion"), number(m_after, "targetSdkVersion"));
    const QJsonArray facts = m_diff.value(QLatin1String("facts")).toArray();
    for (int i = 0; i < qMin(int(facts.size()), MaxSectionCards); ++i) {
        const QJsonObject fact = facts.at(i).toObject();
        if (textIn(fact, "name") == QLatin1String("openGlEsVersion"))
            addFact(tr("OpenGL ES"), safePart(textIn(fact, "before")), safePart(textIn(fact, "after")),
                    textIn(fact, "after"));
    }
}

void DiffCards::addFact(const QString &title, const QString &before, const QString &after, const QString &original)
{
    const auto orNone = [](const QString &text) { return text.isEmpty() ? tr("none") : text; };
    Card card;
    card.title = title;
    card.description =
        before == after ? orNone(after) : tr("%1 → %2", "before and after").arg(orNone(before), orNone(after));
    card.original = original;
    if (before != after)
        card.badge = tr("Changed");
    m_cards.append(card);
}

void DiffCards::addPermissions()
{
    QList<QJsonObject> changes;
    for (const QJsonValue &change : m_diff.value(QLatin1String("permissions")).toArray())
        changes.append(change.toObject());
    // New and dangerous permissions come first.
    const auto rank = [](const QJsonObject &change) {
        return (isDangerousPermission(textIn(change, "name")) ? 0 : 2)
               + (textIn(change, "change") == QLatin1String("removed") ? 1 : 0);
    };
    std::stable_sort(changes.begin(), changes.end(),
                     [&rank](const QJsonObject &one, const QJsonObject &other) { return rank(one) < rank(other); });
    QJsonArray sorted;
    for (const QJsonObject &change : changes)
        sorted.append(change);
    addSection(tr("Permissions"), sorted, [this](const QJsonObject &change, Card *card) {
        if (!isDangerousPermission(card->original))
            return;
        const bool isRemoved = textIn(change, "change") == QLatin1String("removed");
        card->badge = isRemoved ? tr("Removed, dangerous") : tr("Added, dangerous");
        card->isAlarming = !isRemoved;
        card->icon = m_warning;
    });
}

void DiffCards::addSection(const QString &title, const QJsonArray &changes, const Fill &fill, int unlisted)
{
    if (changes.isEmpty())
        return;
    m_cards.append(Card::heading(title));
    const int count = qMin(int(changes.size()), MaxSectionCards);
    for (int i = 0; i < count; ++i) {
        const QJsonObject change = changes.at(i).toObject();
        Card card = cardOf(change);
        fill(change, &card);
        m_cards.append(card);
    }
    const qint64 missing = qint64(changes.size()) - count + unlisted;
    if (missing <= 0)
        return;
    Card rest;
    rest.title = tr("and %1 more").arg(QLocale().toString(missing));
    m_cards.append(rest);
}

void DiffCards::addTexts(const QString &title, const char *key, const QString &nameless)
{
    addSection(title, m_diff.value(QLatin1String(key)).toArray(), [&nameless](const QJsonObject &, Card *card) {
        if (card->title.isEmpty())
            card->title = nameless;
    });
}

void DiffCards::addComponents()
{
    addSection(tr("Components"), m_diff.value(QLatin1String("components")).toArray(),
               [this](const QJsonObject &change, Card *card) {
                   const QString before = useOf(change.value(QLatin1String("before")).toObject());
                   const QString after = useOf(change.value(QLatin1String("after")).toObject());
                   if (textIn(change, "change") == QLatin1String("removed"))
                       card->description = before;
                   else
                       card->description = textIn(change, "change") == QLatin1String("changed") && before != after
                                               ? tr("%1 → %2", "before and after").arg(before, after)
                                               : after;
                   card->name = safeText(textIn(change, "kind"));
                   card->isAlarming = change.value(QLatin1String("opened")).toBool();
                   if (card->isAlarming) {
                       card->badge = tr("Open to other applications");
                       card->icon = m_warning;
                   }
               });
}

void DiffCards::addSizes()
{
    QJsonArray sizes = m_diff.value(QLatin1String("sizes")).toArray();
    QJsonObject file = m_diff.value(QLatin1String("fileSize")).toObject();
    if (sizes.isEmpty() && bytesIn(file, "packedBefore") == bytesIn(file, "packedAfter"))
        return;
    file.insert(QStringLiteral("category"), QStringLiteral("file"));
    sizes.append(file);
    addSection(tr("Sizes"), sizes, [](const QJsonObject &change, Card *card) {
        card->title = categoryOf(textIn(change, "category"));
        card->badge = growthOf(change);
        card->description =
            tr("%1 → %2, unpacked %3 → %4", "sizes before and after")
                .arg(bytesText(bytesIn(change, "packedBefore")), bytesText(bytesIn(change, "packedAfter")),
                     bytesText(bytesIn(change, "sizeBefore")), bytesText(bytesIn(change, "sizeAfter")));
    });
}

void DiffCards::addFiles()
{
    const QJsonObject files = m_diff.value(QLatin1String("files")).toObject();
    const QJsonArray list = files.value(QLatin1String("list")).toArray();
    constexpr int MostFiles = 1 << 20;
    int all = 0;
    for (const char *key : {"added", "removed", "changed"})
        all += qBound(0, files.value(QLatin1String(key)).toInt(), MostFiles);
    addSection(
        tr("Files"), list,
        [](const QJsonObject &change, Card *card) {
            const QString path = textIn(change, "path");
            const QString split = textIn(change, "split");
            card->title =
                split.isEmpty() ? safeText(path) : tr("%1: %2", "split and path").arg(safePart(split), safePart(path));
            card->original = path;
            card->description = growthOf(change);
            if (textIn(change, "change") == QLatin1String("changed"))
                card->description = tr("%1: %2 → %3", "growth, size before and after")
                                        .arg(growthOf(change), bytesText(bytesIn(change, "packedBefore")),
                                             bytesText(bytesIn(change, "packedAfter")));
        },
        qMax(0, all - int(list.size())));
    if (!m_diff.value(QLatin1String("otherBytes")).toBool())
        return;
    Card card;
    card.title = tr("The same files, in another order or with other bytes between them");
    m_cards.append(card);
}

Card DiffCards::cardOf(const QJsonObject &change)
{
    Card card;
    const QString before = textIn(change, "before");
    const QString after = textIn(change, "after");
    card.original = textIn(change, "name");
    card.title = safeText(card.original);
    card.badge = badgeOf(change);
    card.description =
        textIn(change, "change") == QLatin1String("changed") ? arrow(before, after) : safeText(before + after);
    return card;
}

QString DiffCards::badgeOf(const QJsonObject &change)
{
    const QString name = textIn(change, "change");
    if (name == QLatin1String("added"))
        return tr("Added");
    if (name == QLatin1String("removed"))
        return tr("Removed");
    return name == QLatin1String("changed") ? tr("Changed") : QString();
}

QString DiffCards::arrow(const QString &before, const QString &after)
{
    return tr("%1 → %2", "before and after").arg(safePart(before), safePart(after));
}

QString DiffCards::versionOf(const QJsonObject &package)
{
    const QString name = safePart(textIn(package, "versionName"));
    const QString code = safePart(textIn(package, "versionCode"));
    return name.isEmpty() ? code : tr("%1 (%2)", "version and its number").arg(name, code);
}

QString DiffCards::firstError(const QJsonObject &package)
{
    const QJsonArray errors =
        package.value(QLatin1String("signer")).toObject().value(QLatin1String("errors")).toArray();
    return safeText(textIn(errors.at(0).toObject(), "message"));
}

QString DiffCards::useOf(const QJsonObject &component)
{
    if (!component.value(QLatin1String("enabled")).toBool())
        return tr("disabled");
    if (!component.value(QLatin1String("exported")).toBool())
        return tr("closed to other applications");
    const QString reading = textIn(component, "permission");
    const QString writing = textIn(component, "writePermission");
    if (reading.isEmpty() && writing.isEmpty())
        return tr("open to other applications without a permission");
    if (reading == writing)
        return tr("open to other applications with the permission %1").arg(safePart(reading));
    const auto orNone = [](const QString &name) { return name.isEmpty() ? tr("none") : safePart(name); };
    return tr("open to other applications with the permissions %1 to read and %2 to write")
        .arg(orNone(reading), orNone(writing));
}

QString DiffCards::categoryOf(const QString &name)
{
    if (name == QLatin1String("code"))
        return tr("code");
    if (name == QLatin1String("resources"))
        return tr("resources");
    if (name == QLatin1String("libraries"))
        return tr("native libraries");
    if (name == QLatin1String("assets"))
        return tr("assets");
    if (name == QLatin1String("signatures"))
        return tr("signatures");
    return name == QLatin1String("file") ? tr("the file") : tr("other");
}

QString DiffCards::growthOf(const QJsonObject &sizes)
{
    const qint64 growth = bytesIn(sizes, "packedAfter") - bytesIn(sizes, "packedBefore");
    if (growth == 0)
        return bytesText(0);
    return growth > 0 ? tr("+%1", "a size that grew").arg(bytesText(growth))
                      : tr("-%1", "a size that shrank").arg(bytesText(-growth));
}

} // namespace Viewer
