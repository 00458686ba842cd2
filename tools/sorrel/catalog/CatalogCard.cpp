// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CatalogCard.h"

#include "AndroidVersion.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

const QLatin1String severities[] = {QLatin1String("error"), QLatin1String("warning"), QLatin1String("note")};
constexpr qint64 RankStep = 1000;

QString valueOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

QString counted(int count, const QString &thing)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(thing, count == 1 ? QString() : QStringLiteral("s"));
}

// The text on one line, with a limited length.
QString labelText(const QString &label)
{
    QString text = label.simplified();
    if (text.size() > CatalogCard::MaxLabelLength) {
        const bool splitsPair = text.at(CatalogCard::MaxLabelLength - 1).isHighSurrogate();
        text.truncate(CatalogCard::MaxLabelLength - (splitsPair ? 1 : 0));
        text += QChar(0x2026);
    }
    return text;
}

bool isLanguageTag(const QString &tag)
{
    static const QRegularExpression form(QStringLiteral("\\A[A-Za-z]{2,3}(-[A-Za-z0-9]{2,8}){0,3}\\z"));
    return tag.isEmpty() || form.match(tag).hasMatch();
}

// The first bytes decide. The value can only contain base64.
bool isPng(const QString &base64)
{
    return base64.startsWith(QLatin1String("iVBORw0KGgo"))
           && std::all_of(base64.cbegin(), base64.cend(), [](QChar character) {
                  return character.unicode() < 0x80
                         && (character.isLetterOrNumber() || QLatin1String("+/=").contains(character));
              });
}

// The icon of a launcher or of a package.
QString defaultLabel(const QJsonObject &labelled)
{
    return labelText(valueOf(labelled.value(QLatin1String("labels")).toObject(), ""));
}

QString launcherLabel(const QJsonObject &launcher)
{
    const QString label = defaultLabel(launcher);
    return label.isEmpty() ? labelText(valueOf(launcher, "name")) : label;
}

QStringList labelLines(const QJsonObject &labelled)
{
    QStringList lines;
    const QJsonObject labels = labelled.value(QLatin1String("labels")).toObject();
    for (auto label = labels.begin(); label != labels.end(); ++label) {
        const QString text = labelText(label.value().toString());
        if (!text.isEmpty() && isLanguageTag(label.key()))
            lines.append(label.key() + QLatin1Char('=') + text);
    }
    return lines;
}

Markup launcherItem(const QJsonObject &launcher)
{
    const QString name = valueOf(launcher, "name");
    const QString className = valueOf(launcher, "class");
    Markup item = Markup::element("bdi", {{"class", QStringLiteral("label")}, {"data-labels", labelLines(launcher)}},
                                  Markup::text(launcherLabel(launcher)));
    item += Markup::element("code", {{"class", QStringLiteral("name")}, {"dir", QStringLiteral("ltr")}},
                            Markup::text(name));
    if (className != name)
        item +=
            Markup::element("span", {{"class", QStringLiteral("runs")}},
                            Markup::text(QStringLiteral("runs "))
                                + Markup::element("code", {{"dir", QStringLiteral("ltr")}}, Markup::text(className)));
    return Markup::element("li", {}, item);
}

QLatin1String severityOf(const QJsonObject &finding)
{
    const QString text = valueOf(finding, "severity");
    for (const QLatin1String &severity : severities) {
        if (text == severity)
            return severity;
    }
    return QLatin1String("note");
}

Markup findingItem(const QJsonObject &finding)
{
    const QString severity = severityOf(finding);
    return Markup::element("li", {{"class", severity}},
                           Markup::element("strong", severity) + Markup::text(QStringLiteral(" "))
                               + Markup::element("bdi", valueOf(finding, "text").simplified())
                               + Markup::text(QStringLiteral(" "))
                               + Markup::element("code", valueOf(finding, "check")));
}

Markup fact(const QString &name, const QString &value)
{
    if (value.isEmpty())
        return {};
    return Markup::element("div", {},
                           Markup::element("dt", name) + Markup::element("dd", {}, Markup::element("bdi", value)));
}

Markup fold(const QString &kind, const QString &summary, const Markup &items)
{
    return Markup::element("details", {{"class", kind}},
                           Markup::element("summary", summary) + Markup::element("ul", {}, items));
}

Markup plainFold(const QString &text)
{
    return Markup::element("p", {{"class", QStringLiteral("none")}}, Markup::text(text));
}

} // namespace

CatalogCard::CatalogCard(const QJsonObject &package, int number)
    : m_package(package),
      m_launchers(package.value(QLatin1String("launchers")).toArray()),
      m_findings(package.value(QLatin1String("lint")).toArray()),
      m_labelId(QStringLiteral("label%1").arg(number))
{
}

Markup CatalogCard::markup() const
{
    Markup folds = launchers() + findings();
    return Markup::element(
               "li",
               {{"class", QStringLiteral("card")},
                {"aria-labelledby", m_labelId},
                {"data-sdk", QString::number(m_package.value(QLatin1String("minSdkVersion")).toInt())},
                {"data-rank", QString::number(rank())}},
               head() + problem() + facts() + file()
                   + (folds.isEmpty() ? Markup() : Markup::element("div", {{"class", QStringLiteral("folds")}}, folds)))
           + Markup::lineFeed();
}

QString CatalogCard::text(const char *key) const
{
    return valueOf(m_package, key);
}

QString CatalogCard::title() const
{
    QString title = m_launchers.isEmpty() ? defaultLabel(m_package) : launcherLabel(m_launchers.at(0).toObject());
    if (title.isEmpty())
        title = labelText(text("package"));
    if (title.isEmpty())
        title = labelText(text("file").section(QLatin1Char('/'), -1));
    return title.isEmpty() ? QStringLiteral("Unnamed") : title;
}

Markup CatalogCard::icon() const
{
    const QString icon = text("icon");
    if (isPng(icon))
        return Markup::voidElement("img", {{"class", QStringLiteral("icon")},
                                           {"src", QStringLiteral("data:image/png;base64,") + icon},
                                           {"alt", QString()},
                                           {"width", QStringLiteral("64")},
                                           {"height", QStringLiteral("64")},
                                           {"decoding", QStringLiteral("async")}});
    return Markup::element("svg", {{"class", QStringLiteral("icon")}, {"aria-hidden", QStringLiteral("true")}},
                           Markup::element("use", {{"href", QStringLiteral("#no-icon")}}, Markup()));
}

Markup CatalogCard::head() const
{
    // A package with launchers has the label of the first one as its title, which is written there.
    const Markup label = m_launchers.isEmpty() && m_package.contains(QLatin1String("labels"))
                             ? Markup::element("bdi", {{"data-labels", labelLines(m_package)}}, Markup::text(title()))
                             : Markup::element("bdi", title());
    Markup names = Markup::element("h2", {{"id", m_labelId}}, label);
    // Without a label, the package name is the title already.
    if (!text("package").isEmpty() && title() != text("package"))
        names += Markup::element("code", {{"class", QStringLiteral("package")}, {"dir", QStringLiteral("ltr")}},
                                 Markup::text(text("package")));
    return Markup::element("div", {{"class", QStringLiteral("head")}}, icon() + Markup::element("div", {}, names));
}

bool CatalogCard::isUnreadable() const
{
    return m_package.value(QLatin1String("error")).toObject().value(QLatin1String("code")).toInt() != 0;
}

Markup CatalogCard::problem() const
{
    if (!isUnreadable())
        return {};
    const QString reason = valueOf(m_package.value(QLatin1String("error")).toObject(), "text").simplified();
    return Markup::element("p", {{"class", QStringLiteral("problem")}},
                           Markup::element("strong", QStringLiteral("Not read:")) + Markup::text(QStringLiteral(" "))
                               + Markup::element("bdi", reason));
}

Markup CatalogCard::facts() const
{
    // A package that could not be read has a default for its minimum version, which means nothing.
    if (text("package").isEmpty())
        return {};
    QString version = labelText(text("versionName"));
    const QString code = text("versionCode");
    if (!code.isEmpty() && code != QLatin1String("0"))
        version += version.isEmpty() ? code : QStringLiteral(" (%1)").arg(code);
    const auto splits = m_package.value(QLatin1String("splits")).toArray().size();
    return Markup::element("dl", {{"class", QStringLiteral("facts")}},
                           fact(QStringLiteral("Version"), version)
                               + fact(QStringLiteral("Runs from"),
                                      AndroidVersion::text(m_package.value(QLatin1String("minSdkVersion")).toInt()))
                               + fact(QStringLiteral("Splits"), splits == 0 ? QString() : QString::number(splits))
                               + signer());
}

// The signers on the newest version of Android come first. Several may have signed by the same scheme.
Markup CatalogCard::signer() const
{
    const QJsonObject signatures = m_package.value(QLatin1String("signatures")).toObject();
    if (signatures.isEmpty())
        return {};
    const bool isVerified = signatures.value(QLatin1String("verified")).toBool();
    const QJsonArray signers = signatures.value(QLatin1String("signers")).toArray();
    QStringList names;
    const QJsonObject first = signers.at(0).toObject();
    const QLatin1String level("minSdkVersion");
    for (const QJsonValue &each : signers) {
        const QJsonObject object = each.toObject();
        if (valueOf(object, "scheme") == valueOf(first, "scheme") && object.value(level) == first.value(level))
            names.append(labelText(valueOf(object.value(QLatin1String("certificate")).toObject(), "subject")));
    }
    const QJsonArray errors = signatures.value(QLatin1String("errors")).toArray();
    const QString reason = labelText(valueOf(errors.at(0).toObject(), "message"));
    const Markup text = isVerified ? Markup::element("bdi", names.join(QStringLiteral("; ")))
                                   : Markup::element("strong", QStringLiteral("Not verified:"))
                                         + Markup::text(QStringLiteral(" ")) + Markup::element("bdi", reason);
    const QString kind = isVerified ? QStringLiteral("signer") : QStringLiteral("signer unverified");
    return Markup::element(
        "div", {}, Markup::element("dt", QStringLiteral("Signed by")) + Markup::element("dd", {{"class", kind}}, text));
}

// Without enough space, the directory is shortened first.
Markup CatalogCard::file() const
{
    const QString path = text("file");
    if (path.isEmpty())
        return {};
    const auto name = path.lastIndexOf(QLatin1Char('/')) + 1;
    return Markup::element(
        "p", {{"class", QStringLiteral("file")}, {"dir", QStringLiteral("ltr")}, {"title", path}},
        (name == 0 ? Markup()
                   : Markup::element("bdi", {{"class", QStringLiteral("directory")}}, Markup::text(path.left(name))))
            + Markup::element("bdi", path.mid(name)));
}

Markup CatalogCard::launchers() const
{
    if (m_launchers.isEmpty())
        return isUnreadable() ? Markup() : plainFold(QStringLiteral("No launcher"));
    Markup items;
    for (const QJsonValue &launcher : m_launchers)
        items += launcherItem(launcher.toObject());
    return fold(QStringLiteral("launchers"), counted(int(m_launchers.size()), QStringLiteral("launcher")), items);
}

int CatalogCard::count(const char *severity) const
{
    int count = 0;
    for (const QJsonValue &finding : m_findings)
        count += severityOf(finding.toObject()) == QLatin1String(severity) ? 1 : 0;
    return count;
}

Markup CatalogCard::findings() const
{
    if (m_findings.isEmpty())
        return m_package.contains(QLatin1String("lint")) ? plainFold(QStringLiteral("No findings")) : Markup();
    QStringList counts;
    QString worst;
    Markup items;
    for (const QLatin1String &severity : severities) {
        const int found = count(severity.data());
        if (found == 0)
            continue;
        counts.append(counted(found, severity));
        if (worst.isEmpty())
            worst = severity;
        for (const QJsonValue &finding : m_findings) {
            if (severityOf(finding.toObject()) == severity)
                items += findingItem(finding.toObject());
        }
    }
    return fold(QStringLiteral("findings ") + worst, counts.join(QStringLiteral(", ")), items);
}

// A package that could not be read has an error as its finding.
qint64 CatalogCard::rank() const
{
    const qint64 most = RankStep - 1;
    const qint64 errors = count("error") + (isUnreadable() ? 1 : 0);
    return (qMin(errors, most) * RankStep + qMin<qint64>(count("warning"), most)) * RankStep
           + qMin<qint64>(count("note"), most);
}
