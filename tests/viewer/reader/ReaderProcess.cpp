// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReaderProcess.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace fixture {

ReaderProcess::ReaderProcess(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SORREL_PLATFORM"), QString());
    // A confined process cannot be traced, which the search for leaks does.
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       environment.value(QStringLiteral("ASAN_OPTIONS")) + QStringLiteral(":detect_leaks=0"));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(SORREL_READER), arguments);
}

ReaderProcess::~ReaderProcess()
{
    m_process.kill();
    m_process.waitForFinished();
}

QJsonObject ReaderProcess::next()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead())
            return {};
    }
    return QJsonDocument::fromJson(m_process.readLine()).object();
}

QHash<QString, QJsonObject> ReaderProcess::all(QStringList *order)
{
    QHash<QString, QJsonObject> answers;
    for (QJsonObject answer = next(); !answer.isEmpty(); answer = next()) {
        const QString topic = answer.value(QLatin1String("topic")).toString();
        answers.insert(topic, answer);
        if (order != nullptr)
            order->append(topic);
        if (topic == QLatin1String("end"))
            break;
    }
    return answers;
}

void ReaderProcess::send(const QJsonObject &request)
{
    m_process.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    m_process.waitForBytesWritten();
}

QList<QJsonObject> ReaderProcess::ask(const QJsonObject &request)
{
    send(request);
    QList<QJsonObject> answers;
    for (QJsonObject answer = next(); !answer.isEmpty(); answer = next()) {
        if (answer.value(QLatin1String("topic")) == QLatin1String("done"))
            break;
        answers.append(answer);
    }
    return answers;
}

int ReaderProcess::finish()
{
    m_process.closeWriteChannel();
    const bool hasEnded = m_process.state() == QProcess::NotRunning || m_process.waitForFinished();
    return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QList<QJsonObject> itemsOf(const QJsonObject &answer)
{
    QList<QJsonObject> items;
    const QJsonArray array = answer.value(QLatin1String("items")).toArray();
    for (const QJsonValue &item : array)
        items.append(item.toObject());
    return items;
}

QStringList valuesOf(const QJsonObject &answer, const char *key)
{
    QStringList values;
    for (const QJsonObject &item : itemsOf(answer))
        values.append(item.value(QLatin1String(key)).toVariant().toString());
    return values;
}

} // namespace fixture
