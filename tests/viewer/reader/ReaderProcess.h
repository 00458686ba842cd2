// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef READERPROCESS_H
#define READERPROCESS_H

#include <QHash>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

namespace fixture {

/// A process of sorrel-viewer-reader. Functions that wait do so for half a minute.
class ReaderProcess
{
public:
    /// Starts the reader with @p arguments, without a platform.
    explicit ReaderProcess(const QStringList &arguments);
    ~ReaderProcess();

    /// The next answer; empty when there is none.
    QJsonObject next();
    /// Answers up to `end`, by topic. Their order is added to @p order.
    QHash<QString, QJsonObject> all(QStringList *order = nullptr);
    /// Sends @p request.
    void send(const QJsonObject &request);
    /// Sends @p request, and returns the answers to it, without `done`. Precondition: all() was called.
    QList<QJsonObject> ask(const QJsonObject &request);
    /// Closes the input. Returns the exit status, or -1 when the process crashed or does not end.
    int finish();

private:
    QProcess m_process;
};

/// The items of @p answer.
QList<QJsonObject> itemsOf(const QJsonObject &answer);
/// The values of @p key in the items of @p answer.
QStringList valuesOf(const QJsonObject &answer, const char *key);

} // namespace fixture

#endif
