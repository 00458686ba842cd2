// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERPOOL_H
#define WORKERPOOL_H

#include "workers/ScanError.h"
#include "workers/WorkerProcess.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <vector>

/**
 * Processes that read packages. Each has a queue of files. It reads them one after another, and writes a line about
 * each file before it begins the next. So a file that ends or exhausts its process loses only its own report: the other
 * files of the queue go to another process. A process that ended is replaced while files remain.
 *
 * A queue is as long as a process needs to be busy until this process looks again. It is shorter at the end, so all
 * processes end at about the same time.
 *
 * A worker reads paths from standard input, with a NUL after each. Its line has the error code in decimal, a space, and
 * the report as a JSON object. A worker that writes anything else is killed.
 *
 * The constructor blocks SIGPIPE in its thread, so a worker or a reader that is gone is an error of write(). Use an
 * object in one thread: the workers end with it.
 */
class WorkerPool
{
public:
    /// The maximum size of a line in bytes. A process that writes more is killed.
    static constexpr int MaxAnswerBytes = 64 << 20;

    /// The outcome for a file: its report without the line end, or an error.
    struct Outcome {
        int index = 0;     ///< of the file
        int errorCode = 0; ///< of the report, or a ScanError::Code
        QByteArray report; ///< as JSON; empty when the process gave none
    };
    /// Receives the outcomes since the last call, at least one. Returns whether to continue.
    using Deliver = std::function<bool(const std::vector<Outcome> &outcomes)>;

    /// A pool of @p jobs processes of @p program.
    WorkerPool(const WorkerProgram &program, int jobs);
    ~WorkerPool();

    /**
     * Reads all @p files and passes on each outcome when it is ready, until the receiver returns false. At most @p
     * window files are started after the first unfinished one, so a caller that sorts the outcomes keeps no more than
     * that.
     *
     * When only some processes can be started, they read all files. Returns false and sets errorText() when there is
     * none.
     */
    bool run(const QList<QByteArray> &files, const Deliver &deliver, int window = std::numeric_limits<int>::max());

    /// run() also ends, without the remaining files, when the descriptor @p stop is readable; -1 for none.
    void setStop(int stop) { m_stop = stop; }

    QString errorText() const { return m_error; }

private:
    /// The sizes of a queue: at first, at least (the worker reads a file and has another), and at most.
    static constexpr int FirstQueue = 8;
    static constexpr int MinQueue = 2;
    static constexpr int MaxQueue = 256;

    struct Worker {
        std::unique_ptr<WorkerProcess> process;
        std::deque<int> queue;      ///< indices of the files that the process has; it reads the first
        int queueSize = FirstQueue; ///< the number of files that the process should have
        QByteArray answer;          ///< the received part of a line
        int searched = 0;           ///< the bytes of it that have no line end
        bool isLeaving = false;     ///< whether the process ends after its last line
    };

    bool handOut();
    int start(Worker &worker);
    void fill(Worker &worker);
    bool hasFile() const;
    int takeFile();
    void rest() const;
    bool wait() const;
    void look(Worker &worker);
    bool readAnswers(Worker &worker);
    bool readAnswer(Worker &worker, const QByteArray &line);
    void remove(Worker &worker, bool wroteNoReport);
    void returnFiles(Worker &worker);
    void setDone(int index, int errorCode, const QByteArray &report);

    const WorkerProgram m_program;
    std::vector<Worker> m_workers;
    QList<QByteArray> m_files;
    int m_window = 0;
    int m_stop = -1;
    int m_next = 0;           ///< index of the first file that no process had
    std::set<int> m_returned; ///< files from the queues of ended processes
    int m_oldest = 0;         ///< index of the first unfinished file
    int m_done = 0;
    std::vector<bool> m_isDone; ///< by index
    std::vector<Outcome> m_outcomes;
    QString m_error;
};

#endif
