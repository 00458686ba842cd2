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
 * Processes that read packages, each one file at a time, so that a file which ends or exhausts its process costs nothing
 * but its own answer. A process reads file after file; one that is gone is replaced when there is more to read.
 *
 * Takes a QCoreApplication.
 */
class WorkerPool
{
public:
    /// Bytes of an answer at most. A process that writes more is ended.
    static constexpr qint64 MaxAnswerBytes = 64 << 20;

    /// What became of a file: its answer, without the line's end, or why there is none.
    struct Outcome {
        int index = 0;     ///< of the file
        int errorCode = 0; ///< that of the report, or a ScanError::Code
        QByteArray report; ///< as JSON; empty when the process gave none
    };
    /// Answers whether to go on.
    using Deliver = std::function<bool(const Outcome &outcome)>;

    /// @p jobs processes, which are started with @p arguments by this program's own name.
    WorkerPool(const QStringList &arguments, int jobs);
    ~WorkerPool();

    /**
     * Has each of @p files read, and hands over each outcome as it comes, until that is no longer wanted. At most @p
     * window files are begun before the first one that is not done, so that a caller who puts outcomes in order keeps no
     * more.
     *
     * False when processes cannot be started, and errorText() tells why.
     */
    bool run(const QVector<FileName> &files, const Deliver &deliver, int window = std::numeric_limits<int>::max());

    QString errorText() const { return m_error; }

private:
    struct Worker {
        std::unique_ptr<QProcess> process;
        int index = -1; ///< of the file that it reads; -1 for none
        QByteArray answer;
    };

    void handOut();
    void start(Worker &worker);
    void read(Worker &worker);
    void finish(Worker &worker, bool crashed, int exitCode);
    void letGo(Worker &worker);
    void failToStart(const QString &text);
    void deliver(Worker &worker, int errorCode, const QByteArray &report);

    const QStringList m_arguments;
    std::vector<Worker> m_workers;
    QVector<FileName> m_files;
    Deliver m_deliver;
    int m_window = 0;
    int m_next = 0;   ///< index of the next file to hand out
    int m_oldest = 0; ///< index of the first file that is not done
    int m_done = 0;
    std::vector<bool> m_isDone; ///< by index
    QString m_error;
    QEventLoop m_loop;
};

#endif
