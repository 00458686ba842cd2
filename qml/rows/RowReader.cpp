// SPDX-License-Identifier: LGPL-2.1-or-later
#include "rows/RowReader.h"

#include <QMutexLocker>

#include <utility>

namespace SorrelQml {

using SorrelKit::Shelf;

RowReader::RowReader(const QString &fileName, const ShelfRows &rows, const Receiver &receiver)
    : m_fileName(fileName), m_receiver(receiver), m_rows(rows)
{
    start();
}

RowReader::~RowReader()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_isEnding = true;
        m_isAsked.wakeAll();
    }
    wait();
}

void RowReader::ask(const RowRequest &request, int number)
{
    const QMutexLocker locker(&m_mutex);
    m_request = request;
    m_number = number;
    m_isAsked.wakeAll();
}

void RowReader::run()
{
    Shelf shelf;
    QMutexLocker locker(&m_mutex);
    while (!m_isEnding) {
        if (m_number == 0) {
            m_isAsked.wait(&m_mutex);
            continue;
        }
        const RowRequest request = m_request;
        const int number = std::exchange(m_number, 0);
        locker.unlock();
        RowPatch patch;
        // Without an index that can be read, the rows stay as they are.
        if (shelf.isOpen() || shelf.open(m_fileName, Shelf::Access::ReadOnly)) {
            const ShelfRows rows = request.read(shelf);
            patch = RowPatch::between(m_rows, rows);
            m_rows = rows;
        }
        patch.request = number;
        m_receiver(patch);
        locker.relock();
    }
}

} // namespace SorrelQml
