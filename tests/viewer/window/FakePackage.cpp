// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FakePackage.h"

#include <QFile>
#include <QJsonDocument>

namespace {

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonObject topic(const char *name, QJsonObject content)
{
    content.insert(QStringLiteral("topic"), QLatin1String(name));
    return content;
}

QJsonObject head(const QString &label)
{
    return topic("head", {{"packageName", "org.example.notes"},
                          {"versionName", "1.2"},
                          {"versionCode", "12"},
                          {"minSdk", 21},
                          {"targetSdk", 33},
                          {"label", label},
                          {"isSet", false},
                          {"fileSize", 4096},
                          {"error", QJsonValue::Null},
                          {"sandbox", QJsonArray()}});
}

QJsonObject list(const char *name, const QJsonArray &items = {})
{
    return topic(name, {{"items", items}});
}

} // namespace

FakePackage::FakePackage()
{
    const QJsonObject certificate{{"subject", "CN=Jane Doe,O=Example"}, {"sha256", QString(64, QLatin1Char('a'))}};
    const QJsonArray signers{QJsonObject{{"scheme", "v2"}, {"certificate", certificate}}};
    m_topics = {
        head(QStringLiteral("Notes")),
        topic("signature", {{"verified", true},
                            {"schemes", QJsonArray{"v2"}},
                            {"minSdkVersion", 21},
                            {"maxSdkVersion", 2147483647},
                            {"signers", signers},
                            {"stamp", QJsonValue::Null},
                            {"errors", QJsonArray()},
                            {"warnings", QJsonArray()}}),
        list("permissions",
             {permission(QStringLiteral("take pictures"), true), permission(QStringLiteral("see networks"), false)}),
        list("launchers"),
        list("contents"),
        list("languages", {QJsonObject{{"tag", "de"}, {"name", "Deutsch"}, {"label", "Notizen"}}}),
        topic("manifest", {{"text", "<manifest/>"}}),
        list("resources"),
        list("lint"),
        topic("end", {}),
    };
}

QJsonObject FakePackage::permission(const QString &label, bool isDangerous)
{
    return {{"name", "android.permission.X"},
            {"label", label},
            {"description", "Some words."},
            {"isDangerous", isDangerous},
            {"group", ""}};
}

FakePackage &FakePackage::set(const QString &topic, const QString &key, const QJsonValue &value)
{
    for (QJsonObject &content : m_topics) {
        if (content.value(QLatin1String("topic")) == topic)
            content.insert(key, value);
    }
    return *this;
}

FakePackage &FakePackage::cutAt(const QString &topic)
{
    for (int i = 0; i < m_topics.size(); ++i) {
        if (m_topics.at(i).value(QLatin1String("topic")) == topic)
            m_topics.erase(m_topics.begin() + i, m_topics.end());
    }
    return *this;
}

FakePackage &FakePackage::dies()
{
    m_dies = true;
    return cutAt(QStringLiteral("end"));
}

void FakePackage::write(const QString &path) const
{
    QByteArray bytes;
    for (const QJsonObject &content : m_topics)
        bytes += lineOf(content);
    if (m_dies)
        bytes += "!die\n";
    bytes += "?locale " + lineOf(head(QStringLiteral("Notizen")));
    bytes += "?diff " + lineOf(topic("diff", {{"error", "These do not differ."}}));
    QFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    Q_ASSERT(isOpen);
    file.write(bytes);
}
