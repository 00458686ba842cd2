// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/PackageFacts.h"

#include "shelf/index/IconKind.h"
#include "shelf/index/ShelfTexts.h"
#include "workers/ScanError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace SorrelKit {

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString().left(PackageFacts::MaxTextUnits);
}

QMap<QString, QString> labelsOf(const QJsonObject &object)
{
    QMap<QString, QString> labels;
    qint64 units = 0;
    const QJsonObject json = object.value(QLatin1String("labels")).toObject();
    for (auto label = json.begin(); label != json.end(); ++label) {
        const QString text = label.value().toString().left(PackageFacts::MaxTextUnits);
        units += text.size() + label.key().size();
        if (units > PackageFacts::MaxListUnits)
            break;
        labels.insert(label.key(), text);
    }
    return labels;
}

QStringList permissionsOf(const QJsonObject &report)
{
    QStringList permissions;
    qint64 units = 0;
    const QJsonArray json = report.value(QLatin1String("permissions")).toArray();
    for (const QJsonValue &permission : json) {
        const QString text = permission.toString().left(PackageFacts::MaxTextUnits);
        units += text.size();
        if (units > PackageFacts::MaxListUnits)
            break;
        permissions.append(text);
    }
    return permissions;
}

QString signerOf(const QJsonObject &report)
{
    const QJsonObject signatures = report.value(QLatin1String("signatures")).toObject();
    if (!signatures.value(QLatin1String("verified")).toBool())
        return {};
    const QJsonArray signers = signatures.value(QLatin1String("signers")).toArray();
    const QJsonObject certificate = signers.first().toObject().value(QLatin1String("certificate")).toObject();
    return textOf(certificate, "sha256");
}

// Collects lines to search, each once.
class Words
{
public:
    void add(const QString &text)
    {
        const QString line = ShelfTexts::folded(text);
        if (line.isEmpty() || line.size() > PackageFacts::MaxWordUnits - m_text.size() - 1 || m_known.contains(line))
            return;
        m_known.insert(line);
        m_text += line + QLatin1Char('\n');
    }
    const QString &text() const { return m_text; }

private:
    QString m_text;
    QSet<QString> m_known;
};

} // namespace

PackageFacts PackageFacts::fromReport(const QByteArray &json, int code)
{
    PackageFacts facts;
    QJsonObject report = QJsonDocument::fromJson(json).object();
    const QJsonObject error = report.value(QLatin1String("error")).toObject();
    facts.errorCode = code;
    if (code != 0)
        facts.errorText = report.isEmpty() ? ScanError::text(ScanError::Code(code)) : textOf(error, "text");
    facts.state = code == 0 ? ShelfItem::State::Ready : ShelfItem::State::Broken;
    facts.packageName = textOf(report, "package");
    facts.versionName = textOf(report, "versionName");
    facts.versionCode = report.value(QLatin1String("versionCode")).toString().toLongLong();
    facts.minSdkVersion = report.value(QLatin1String("minSdkVersion")).toInt();
    facts.targetSdkVersion = report.value(QLatin1String("targetSdkVersion")).toInt();
    const QStringList permissions = permissionsOf(report);
    facts.permissions = ShelfTexts::fromList(permissions);
    facts.isVerified = report.contains(QLatin1String("signatures"));
    facts.signer = signerOf(report);

    Words words;
    const auto addLabels = [&words](const QMap<QString, QString> &labels) {
        for (const QString &label : labels)
            words.add(label);
    };
    words.add(facts.packageName);
    addLabels(labelsOf(report));
    const QJsonArray launchers = report.value(QLatin1String("launchers")).toArray();
    for (const QJsonValue &value : launchers) {
        if (facts.items.size() >= MaxItems)
            break;
        const QJsonObject launcher = value.toObject();
        const QMap<QString, QString> labels = labelsOf(launcher);
        facts.items.append({textOf(launcher, "name"), ShelfTexts::fromLabels(labels), {}});
        addLabels(labels);
    }
    if (facts.items.isEmpty())
        facts.items.append({QString(), ShelfTexts::fromLabels(labelsOf(report)), {}});
    words.add(facts.signer);
    for (const QString &permission : permissions)
        words.add(permission);
    facts.words = words.text();

    const QJsonArray icons = report.take(QLatin1String("launcherIcons")).toArray();
    for (const QJsonValue &value : icons) {
        const QJsonObject icon = value.toObject();
        const int item = icon.value(QLatin1String("launcher")).toInt();
        if (item < 0 || item >= int(facts.items.size()))
            continue;
        const QByteArray kind = icon.value(QLatin1String("kind")).toString().toLatin1();
        const QByteArray png = QByteArray::fromBase64(icon.value(QLatin1String("png")).toString().toLatin1());
        facts.items[item].icons.append({IconKind::numberOfWord(kind), png});
    }
    if (!report.isEmpty())
        facts.report = icons.isEmpty() ? json : QJsonDocument(report).toJson(QJsonDocument::Compact);
    if (facts.report.size() > MaxReportBytes)
        facts.report.clear();
    return facts;
}

} // namespace SorrelKit
