// SPDX-License-Identifier: LGPL-2.1-or-later
#include "workers/WorkerPool.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <poll.h>

namespace {

/// The time in which answers gather. Waking up for each would slow down the workers.
constexpr int RestMs = 1;
/// The time that a worker without files has to end by itself.
constexpr int FinishSeconds = 30;

} // namespace

WorkerPool::WorkerPool(const WorkerProgram &program, int jobs) : m_program(program), m_workers(size_t(jobs))
{
    sigset_t signal = {};
    ::sigemptyset(&signal);
    ::sigaddset(&signal, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &signal, nullptr);
}

// Workers with files are killed by the destructors of their processes.
WorkerPool::~WorkerPool()
{
    const auto forEachIdle = [this](const auto &call) {
        for (Worker &worker : m_workers) {
            if (worker.process != nullptr && worker.queue.empty())
                call(*worker.process);
        }
    };
    forEachIdle([](WorkerProcess &process) { process.closeInput(); });
    forEachIdle([](const WorkerProcess &process) { process.wait(FinishSeconds); });
}

bool WorkerPool::run(const QList<QByteArray> &files, const Deliver &deliver, int window)
{
    m_files = files;
    m_window = window;
    m_next = m_oldest = m_done = 0;
    m_isDone.assign(size_t(files.size()), false);
    m_error.clear();
    bool goesOn = true;
    while (goesOn && m_done < m_files.size()) {
        if (!handOut())
            return false;
        rest();
        if (!wait())
            break;
        for (Worker &worker : m_workers) {
            if (worker.process != nullptr)
                look(worker);
        }
        if (!m_outcomes.empty())
            goesOn = deliver(m_outcomes);
        m_outcomes.clear();
    }
    return true;
}

// Returns whether there is a worker.
bool WorkerPool::handOut()
{
    int error = 0;
    for (Worker &worker : m_workers) {
        if (!hasFile())
            break;
        const int startError = worker.process == nullptr ? start(worker) : 0;
        if (startError != 0)
            error = startError;
        else if (!worker.isLeaving)
            fill(worker);
    }
    if (error == 0)
        return true;
    // The workers that are there go on alone.
    const auto isMissing = [](const Worker &worker) { return worker.process == nullptr; };
    if (std::all_of(m_workers.cbegin(), m_workers.cend(), isMissing)) {
        m_error =
            QString::fromUtf8(m_program.path) + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error));
        return false;
    }
    m_workers.erase(std::remove_if(m_workers.begin(), m_workers.end(), isMissing), m_workers.end());
    return true;
}

// Returns 0, or the number of the error.
int WorkerPool::start(Worker &worker)
{
    auto process = std::make_unique<WorkerProcess>();
    const int error = process->start(m_program);
    if (error == 0)
        worker.process = std::move(process);
    return error;
}

void WorkerPool::fill(Worker &worker)
{
    // Half of an equal share of the remaining files: the queues get shorter towards the end.
    const auto remaining = m_files.size() - m_next + int(m_returned.size());
    const int share = qMax(1, int(remaining) / (2 * int(m_workers.size())));
    int room = qMin(worker.queueSize - int(worker.queue.size()), share);
    QByteArray paths;
    for (; room > 0 && hasFile(); --room) {
        const int index = takeFile();
        worker.queue.push_back(index);
        paths += m_files.at(index) + '\0';
    }
    worker.process->send(paths);
}

bool WorkerPool::hasFile() const
{
    return !m_returned.empty() || (m_next < m_files.size() && m_next - m_oldest < m_window);
}

int WorkerPool::takeFile()
{
    if (m_returned.empty())
        return m_next++;
    const int index = *m_returned.begin();
    m_returned.erase(m_returned.begin());
    return index;
}

// Lets answers gather while every worker has enough to read, and none waits for room in its pipe.
void WorkerPool::rest() const
{
    const auto isBusy = [](const Worker &worker) {
        return worker.process == nullptr || (worker.queue.size() >= MinQueue && worker.answer.isEmpty());
    };
    if (std::all_of(m_workers.cbegin(), m_workers.cend(), isBusy))
        ::poll(nullptr, 0, RestMs);
}

// Returns whether to continue.
bool WorkerPool::wait() const
{
    // poll() skips a negative descriptor.
    std::vector<pollfd> descriptors{{m_stop, POLLIN, 0}};
    for (const Worker &worker : m_workers) {
        if (worker.process == nullptr)
            continue;
        descriptors.push_back({worker.process->output(), POLLIN, 0});
        descriptors.push_back({worker.process->blockedInput(), POLLOUT, 0});
    }
    ::poll(descriptors.data(), nfds_t(descriptors.size()), -1);
    return descriptors.front().revents == 0;
}

void WorkerPool::look(Worker &worker)
{
    worker.process->flush();
    const bool isOpen = worker.process->receive(&worker.answer);
    const auto before = worker.queue.size();
    const bool wroteNoReport = !readAnswers(worker);
    if (wroteNoReport || !isOpen) {
        remove(worker, wroteNoReport);
        return;
    }
    const int answers = int(before - worker.queue.size());
    if (answers == 0)
        return;
    if (worker.queue.empty())
        worker.queueSize = qMin(2 * worker.queueSize, MaxQueue);
    else
        worker.queueSize = qBound(MinQueue, qMax(2 * answers, worker.queueSize * 7 / 8), MaxQueue);
}

// Returns false when the worker has to be killed.
bool WorkerPool::readAnswers(Worker &worker)
{
    const char *const bytes = worker.answer.constData();
    const int size = int(worker.answer.size());
    int begin = 0;
    for (int searched = worker.searched; searched < size; searched = begin) {
        const void *const found = std::memchr(bytes + searched, '\n', size_t(size - searched));
        if (found == nullptr)
            break;
        const int end = int(static_cast<const char *>(found) - bytes);
        if (!readAnswer(worker, QByteArray::fromRawData(bytes + begin, end - begin)))
            return false;
        begin = end + 1;
    }
    worker.answer.remove(0, begin);
    worker.searched = int(worker.answer.size());
    return worker.answer.size() <= MaxAnswerBytes;
}

bool WorkerPool::readAnswer(Worker &worker, const QByteArray &line)
{
    const auto space = line.indexOf(' ');
    bool isNumber = false;
    const int code = line.left(space).toInt(&isNumber);
    const QByteArray report = line.mid(space + 1);
    if (worker.queue.empty() || !isNumber || !report.startsWith('{') || !report.endsWith('}'))
        return false;
    setDone(worker.queue.front(), code, report);
    worker.queue.pop_front();
    if (code == ScanError::TooMuchMemory) {
        worker.isLeaving = true;
        returnFiles(worker);
    }
    return true;
}

// The process was reading the first file of its queue. One that wrote no report may have read on until it is killed.
void WorkerPool::remove(Worker &worker, bool wroteNoReport)
{
    const bool tookTooLong = worker.process->end() == SIGALRM && !wroteNoReport;
    if (!worker.queue.empty()) {
        setDone(worker.queue.front(), tookTooLong ? ScanError::TooMuchTime : ScanError::WorkerDied, QByteArray());
        worker.queue.pop_front();
    }
    returnFiles(worker);
    worker = Worker();
}

void WorkerPool::returnFiles(Worker &worker)
{
    m_returned.insert(worker.queue.cbegin(), worker.queue.cend());
    worker.queue.clear();
}

void WorkerPool::setDone(int index, int errorCode, const QByteArray &report)
{
    m_outcomes.push_back({index, errorCode, report});
    m_isDone[size_t(index)] = true;
    ++m_done;
    while (m_oldest < m_files.size() && m_isDone[size_t(m_oldest)])
        ++m_oldest;
}
