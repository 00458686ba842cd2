// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WorkerPool.h"

#include <QProcess>

#include <csignal>

namespace {

ScanError::Code errorOf(bool crashed, int exitCode)
{
    // After a signal, the exit code is the number of the signal.
    return crashed && exitCode == SIGALRM ? ScanError::TooMuchTime : ScanError::WorkerDied;
}

} // namespace

WorkerPool::WorkerPool(const QString &program, const QStringList &arguments, int jobs)
    : m_program(program), m_arguments(arguments), m_workers(size_t(jobs))
{
}

WorkerPool::~WorkerPool()
{
    for (Worker &worker : m_workers) {
        if (worker.process == nullptr)
            continue;
        worker.process->disconnect();
        worker.process->closeWriteChannel();
    }
    for (Worker &worker : m_workers) {
        if (worker.process != nullptr && !worker.process->waitForFinished()) {
            worker.process->kill();
            worker.process->waitForFinished();
        }
    }
}

bool WorkerPool::run(const QVector<FileName> &files, const Deliver &deliver, int window)
{
    m_files = files;
    m_deliver = deliver;
    m_window = window;
    m_next = m_oldest = m_done = 0;
    m_isDone.assign(size_t(files.size()), false);
    m_error.clear();
    handOut();
    if (m_done < files.size() && m_error.isEmpty())
        m_loop.exec();
    return m_error.isEmpty();
}

void WorkerPool::handOut()
{
    for (Worker &worker : m_workers) {
        if (worker.index >= 0 || m_next >= m_files.size() || m_next - m_oldest >= m_window)
            continue;
        if (worker.process == nullptr)
            start(worker);
        if (!m_error.isEmpty())
            return;
        worker.index = m_next++;
        worker.answer.clear();
        worker.process->write(m_files.at(worker.index).path() + '\0');
    }
}

void WorkerPool::start(Worker &worker)
{
    worker.process = std::make_unique<QProcess>();
    QProcess *const process = worker.process.get();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QObject::connect(process, &QProcess::readyReadStandardOutput, [this, &worker] { read(worker); });
    QObject::connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                     [this, &worker](int exitCode, QProcess::ExitStatus status) {
                         finish(worker, status == QProcess::CrashExit, exitCode);
                     });
    QObject::connect(process, &QProcess::errorOccurred, [this, process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            failToStart(m_program + QStringLiteral(": ") + process->errorString());
    });
    process->start(m_program, m_arguments);
}

void WorkerPool::read(Worker &worker)
{
    worker.answer += worker.process->readAllStandardOutput();
    if (worker.index < 0)
        return;
    if (!worker.answer.endsWith('\n')) {
        if (worker.answer.size() > MaxAnswerBytes)
            worker.process->kill();
        return;
    }
    const auto space = worker.answer.indexOf(' ');
    const int code = worker.answer.left(space).toInt();
    const QByteArray report = worker.answer.mid(space + 1).chopped(1);
    if (code == ScanError::TooMuchMemory)
        letGo(worker);
    deliver(worker, code, report);
}

// The process gets no more input and ends by itself.
void WorkerPool::letGo(Worker &worker)
{
    QProcess *const process = worker.process.release();
    process->disconnect();
    QObject::connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), process,
                     &QObject::deleteLater);
    process->closeWriteChannel();
}

void WorkerPool::finish(Worker &worker, bool crashed, int exitCode)
{
    // The process calls this function, so it must be deleted later.
    worker.process->disconnect();
    worker.process.release()->deleteLater();
    if (worker.index >= 0)
        deliver(worker, errorOf(crashed, exitCode), QByteArray());
    else
        handOut();
}

void WorkerPool::failToStart(const QString &text)
{
    m_error = text;
    m_loop.quit();
}

void WorkerPool::deliver(Worker &worker, int errorCode, const QByteArray &report)
{
    const Outcome outcome{worker.index, errorCode, report};
    worker.index = -1;
    worker.answer.clear();
    m_isDone[size_t(outcome.index)] = true;
    ++m_done;
    while (m_oldest < m_files.size() && m_isDone[size_t(m_oldest)])
        ++m_oldest;
    if (!m_deliver(outcome))
        m_files = m_files.mid(0, m_next);
    if (m_done == m_files.size())
        m_loop.quit();
    else
        handOut();
}
