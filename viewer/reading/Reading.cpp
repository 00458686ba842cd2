// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Reading.h"

#include "AnswerCheck.h"
#include "Protocol.h"
#include "ReaderCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int DefaultPatience = 60000;
/// A killed process ends at once, unless the system waits for a disk.
constexpr int KillPatience = 2000;
/// The exit status of the reader when its memory did not suffice.
constexpr int TooMuchMemory = 3;

/// Whether bubblewrap failed to start the reader: it does not work in each container.
bool bubblewrapFails = false;

QByteArray toLine(const QJsonObject &request)
{
    return QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

Viewer::Reading::Reading(QObject *parent) : QObject(parent), m_lines(Protocol::MaxLineBytes)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(DefaultPatience);
    connect(&m_timer, &QTimer::timeout, this, [this] { fail(tr("Reading the package took too long.")); });
}

Viewer::Reading::~Reading()
{
    stop();
}

void Viewer::Reading::setPatience(int milliseconds)
{
    m_timer.setInterval(milliseconds);
}

void Viewer::Reading::open(const QString &file, const QString &locale, const QString &compareWith)
{
    stop();
    m_early.clear();
    m_command = std::make_unique<ReaderCommand>(file, locale, compareWith);
    m_isWrapped = m_command->mustWrap() || (m_command->canWrap() && !bubblewrapFails);
    start();
}

void Viewer::Reading::start()
{
    m_lines = LineBuffer(Protocol::MaxLineBytes);
    m_hasHello = m_hasEnd = false;
    m_due = 0;
    m_left = MaxTopics;
    m_process = std::make_unique<QProcess>();
    // What a package makes libraries print is unbounded.
    m_process->setProcessEnvironment(ReaderCommand::environment());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &Reading::readOutput);
    connect(m_process.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &Reading::handleEnd);
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart && !startUnwrapped())
            fail(tr("The program that reads packages could not be started."));
    });
    m_timer.start();
    m_process->start(m_command->program(m_isWrapped), m_command->arguments(m_isWrapped));
}

bool Viewer::Reading::startUnwrapped()
{
    if (m_hasHello || !m_isWrapped || m_command->mustWrap())
        return false;
    bubblewrapFails = true;
    m_isWrapped = false;
    stop();
    start();
    return true;
}

void Viewer::Reading::stop()
{
    m_timer.stop();
    if (m_process == nullptr)
        return;
    m_process->disconnect(this);
    m_process->kill();
    // A slot of the process may be running. One that does not end now is left to the system.
    QProcess *const process = m_process.release();
    if (process->state() == QProcess::NotRunning || process->waitForFinished(KillPatience))
        process->deleteLater();
}

void Viewer::Reading::fail(const QString &reason)
{
    if (m_process == nullptr)
        return;
    stop();
    Q_EMIT failed(reason);
}

void Viewer::Reading::request(const QJsonObject &wanted)
{
    if (m_process == nullptr)
        return;
    if (!m_hasHello) {
        m_early.append(wanted);
        return;
    }
    ++m_due;
    m_left += Protocol::MaxAnswersPerRequest;
    m_process->write(toLine(wanted));
    updateTimer();
}

void Viewer::Reading::updateTimer()
{
    if (m_hasEnd && m_due == 0)
        m_timer.stop();
    else
        m_timer.start();
}

void Viewer::Reading::readOutput()
{
    const QPointer<QProcess> process(m_process.get());
    m_lines.add(process->readAllStandardOutput());
    QByteArray line;
    // A slot may end this process, start another, or delete this object.
    while (process != nullptr && m_lines.take(&line)) {
        const QPointer<Reading> self(this);
        if (!handle(line) && self != nullptr && process == m_process.get())
            fail(tr("The program that reads packages sent something unexpected, and was ended."));
        if (self == nullptr || process != m_process.get())
            return;
    }
    if (m_lines.isTooLong())
        fail(tr("The program that reads packages sent something unexpected, and was ended."));
}

bool Viewer::Reading::handle(const QByteArray &line)
{
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return false;
    const QString topic = document.object().value(QLatin1String("topic")).toString();
    const AnswerCheck check(topic, document.object());
    if (!check.fault().isEmpty() || !expects(topic))
        return false;
    updateTimer();
    if (topic == QLatin1String("hello")) {
        const QList<QJsonObject> early = m_early;
        m_early.clear();
        for (const QJsonObject &wanted : early)
            request(wanted);
        return check.content().value(QLatin1String("protocol")).toInt() == Protocol::Version;
    }
    if (topic == QLatin1String("end"))
        Q_EMIT finished();
    else if (topic != QLatin1String("done"))
        Q_EMIT answered(topic, check.content());
    return true;
}

bool Viewer::Reading::expects(const QString &topic)
{
    const bool isHello = topic == QLatin1String("hello");
    if (isHello == m_hasHello || m_left == 0)
        return false;
    --m_left;
    m_hasHello = true;
    if (topic == QLatin1String("end")) {
        if (m_hasEnd)
            return false;
        m_hasEnd = true;
    }
    if (topic == QLatin1String("done")) {
        if (m_due == 0)
            return false;
        --m_due;
    }
    return true;
}

void Viewer::Reading::handleEnd(int status, QProcess::ExitStatus how)
{
    const QPointer<Reading> self(this);
    const QProcess *const process = m_process.get();
    readOutput();
    // A slot may have ended this process.
    if (self == nullptr || process != m_process.get() || startUnwrapped())
        return;
    if (how == QProcess::NormalExit && status == TooMuchMemory)
        fail(tr("Reading the package took too much memory."));
    else
        fail(tr("The program that reads packages ended unexpectedly; the package may be made to harm it."));
}
