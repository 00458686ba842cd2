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

/// Bytes of a line that is decoded at once: that takes about a millisecond.
constexpr int ShortLine = 128 << 10;
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
    const QPointer<QThread> decoding(m_decoding);
    stop();
    if (decoding != nullptr)
        decoding->wait();
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
    m_hasHello = m_hasEnd = m_hasExited = false;
    m_due = 0;
    m_left = MaxTopics;
    m_process = std::make_unique<QProcess>();
    // A package can make libraries print without a bound.
    m_process->setProcessEnvironment(ReaderCommand::environment());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &Reading::readOutput);
    connect(m_process.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, [this] {
        m_hasExited = true;
        readOutput();
    });
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
    if (m_decoding != nullptr)
        m_decoding->disconnect(this);
    m_decoding = nullptr;
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

Viewer::Reading::Answer Viewer::Reading::decoded(const QByteArray &line)
{
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return {};
    const QString topic = document.object().value(QLatin1String("topic")).toString();
    const AnswerCheck check(topic, document.object());
    return {topic, check.content(), check.fault().isEmpty()};
}

void Viewer::Reading::readOutput()
{
    m_lines.add(m_process->readAllStandardOutput());
    takeLines();
}

void Viewer::Reading::takeLines()
{
    QByteArray line;
    while (m_decoding == nullptr && m_lines.take(&line)) {
        if (line.size() > ShortLine)
            decodeInThread(line);
        else if (!accept(decoded(line)))
            return;
    }
    // Behind a line that is being decoded, there may be one of any size.
    if (m_lines.isTooLong() || m_lines.size() > 2 * Protocol::MaxLineBytes)
        fail(tr("The program that reads packages sent something unexpected, and was ended."));
    else if (m_hasExited && m_decoding == nullptr)
        handleEnd();
}

void Viewer::Reading::decodeInThread(const QByteArray &line)
{
    const auto answer = std::make_shared<Answer>();
    m_decoding = QThread::create([answer, line] { *answer = decoded(line); });
    connect(m_decoding, &QThread::finished, this, [this, answer] {
        m_decoding = nullptr;
        if (accept(*answer))
            takeLines();
    });
    connect(m_decoding, &QThread::finished, m_decoding, &QObject::deleteLater);
    m_decoding->start();
}

bool Viewer::Reading::accept(const Answer &answer)
{
    const QPointer<Reading> self(this);
    const QProcess *const process = m_process.get();
    const bool isRight = handle(answer);
    // A slot may have ended this process, started another, or deleted this object.
    if (self == nullptr || process != m_process.get())
        return false;
    if (!isRight)
        fail(tr("The program that reads packages sent something unexpected, and was ended."));
    return isRight;
}

bool Viewer::Reading::handle(const Answer &answer)
{
    const QString topic = answer.topic;
    if (!answer.isSound || !expects(topic))
        return false;
    updateTimer();
    if (topic == QLatin1String("hello")) {
        const QList<QJsonObject> early = m_early;
        m_early.clear();
        for (const QJsonObject &wanted : early)
            request(wanted);
        return answer.content.value(QLatin1String("protocol")).toInt() == Protocol::Version;
    }
    if (topic == QLatin1String("end"))
        Q_EMIT finished();
    else if (topic != QLatin1String("done"))
        Q_EMIT answered(topic, answer.content);
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

void Viewer::Reading::handleEnd()
{
    if (startUnwrapped())
        return;
    if (m_process->exitStatus() == QProcess::NormalExit && m_process->exitCode() == TooMuchMemory)
        fail(tr("Reading the package took too much memory."));
    else
        fail(tr("The program that reads packages ended unexpectedly; the package may be made to harm it."));
}
