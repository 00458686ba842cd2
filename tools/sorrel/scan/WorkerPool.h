// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERPOOL_H
#define WORKERPOOL_H

#include "FileName.h"
#include "ScanError.h"

#include <QByteArray>
#include <QEventLoop>
#include <QStringList>
#include <QVector>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

class QProcess;

/**
 * Processes that read packages, each one file at a time. A file that ends or exhausts its process loses only its own
 * report. A process that ended is replaced while files remain.
 *
 * Needs a QCoreApplication.
 */
class WorkerPool
{
public:
    /// The maximum size of a report in bytes. A process that writes more is killed.
    static constexpr qint64 MaxAnswerBytes = 64 << 20;

    /// The outcome for a file: its report without the line end, or an error.
    struct Outcome {
        int index = 0;     ///< of the file
        int errorCode = 0; ///< of the report, or a ScanError::Code
        QByteArray report; ///< as JSON; empty when the process gave none
    };
    /// Returns whether to continue.
    using Deliver = std::function<bool(const Outcome &outcome)>;

    /// A pool of @p jobs processes of @p program, started with @p arguments.
    WorkerPool(const QString &program, const QStringList &arguments, int jobs);
    ~WorkerPool();

    /**
     * Reads all @p files and passes on each outcome when it is ready, until the receiver returns false. At most @p
     * window files are started after the first unfinished one, so a caller that sorts the outcomes keeps no more than
     * that.
     *
     * Returns false and sets errorText() when no process can be started.
     */
    bool run(const QVector<FileName> &files, const Deliver &deliver, int window = std::numeric_limits<int>::max());

    QString errorText() const { return m_error; }

private:
    struct Worker {
        std::unique_ptr<QProcess> process;
        int index = -1; ///< of its current file; -1 for none
        QByteArray answer;
    };

    void handOut();
    void start(Worker &worker);
    void read(Worker &worker);
    void finish(Worker &worker, bool crashed, int exitCode);
    void letGo(Worker &worker);
    void failToStart(const QString &text);
    void deliver(Worker &worker, int errorCode, const QByteArray &report);

    const QString m_program;
    const QStringList m_arguments;
    std::vector<Worker> m_workers;
    QVector<FileName> m_files;
    Deliver m_deliver;
    int m_window = 0;
    int m_next = 0;   ///< index of the next file to read
    int m_oldest = 0; ///< index of the first unfinished file
    int m_done = 0;
    std::vector<bool> m_isDone; ///< by index
    QString m_error;
    QEventLoop m_loop;
};

#endif
