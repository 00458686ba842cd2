// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LibraryLog.h"

#include <QLoggingCategory>

#include <atomic>
#include <mutex>

namespace {

/// What all threads have in common: the handler is one for the whole process.
struct Installation {
    std::mutex mutex;
    int count = 0; ///< of the logs that there are
    std::atomic<QtMessageHandler> previous{nullptr};
    std::atomic<bool> wasEnabled{false};
};

Installation &installation()
{
    static Installation shared;
    return shared;
}

} // namespace

thread_local LibraryLog *LibraryLog::s_current = nullptr;

LibraryLog::LibraryLog()
{
    Q_ASSERT(s_current == nullptr);
    s_current = this;
    Installation &shared = installation();
    const std::lock_guard<std::mutex> lock(shared.mutex);
    if (shared.count++ > 0)
        return;
    QLoggingCategory *const category = QLoggingCategory::defaultCategory();
    shared.wasEnabled = category->isDebugEnabled();
    category->setEnabled(QtDebugMsg, true);
    shared.previous = qInstallMessageHandler(&LibraryLog::handle);
}

LibraryLog::~LibraryLog()
{
    s_current = nullptr;
    Installation &shared = installation();
    const std::lock_guard<std::mutex> lock(shared.mutex);
    if (--shared.count > 0)
        return;
    qInstallMessageHandler(shared.previous);
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, shared.wasEnabled);
}

void LibraryLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (s_current != nullptr && type != QtFatalMsg) {
        ++s_current->m_lines[text];
        return;
    }
    const Installation &shared = installation();
    const QtMessageHandler previous = shared.previous;
    const bool isOff = type == QtDebugMsg && !shared.wasEnabled && qstrcmp(context.category, "default") == 0;
    if (previous != nullptr && !isOff)
        previous(type, context, text);
}
