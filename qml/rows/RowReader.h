// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ROWREADER_H
#define SORRELQML_ROWREADER_H

#include "rows/RowPatch.h"

#include <QMutex>
#include <QString>
#include <QThread>
#include <QWaitCondition>

#include <functional>

namespace SorrelQml {

/**
 * The thread that reads the rows of a model from the index. It answers the newest request; those that it did not
 * begin are left out. It keeps the list that it returned last, so the thread of the model only takes the steps to the
 * next one.
 */
class RowReader : private QThread
{
public:
    /// Gets each patch, in this thread. It must not take longer than passing it on.
    using Receiver = std::function<void(const RowPatch &patch)>;

    /// Reads from the index @p fileName; the model has @p rows.
    RowReader(const QString &fileName, const ShelfRows &rows, const Receiver &receiver);
    /// Waits for the end of a query that is under way: a few milliseconds.
    ~RowReader() override;

    /// Asks for the rows of @p request, which has the number @p number.
    void ask(const RowRequest &request, int number);

private:
    void run() override;

    const QString m_fileName;
    const Receiver m_receiver;
    ShelfRows m_rows;
    QMutex m_mutex;
    QWaitCondition m_isAsked;
    RowRequest m_request;
    int m_number = 0; ///< 0 when there is no new request
    bool m_isEnding = false;
};

} // namespace SorrelQml

#endif
