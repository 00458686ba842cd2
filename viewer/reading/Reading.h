// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_READING_H
#define VIEWER_READING_H

#include "LineBuffer.h"

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QThread>
#include <QTimer>

#include <memory>

namespace Viewer {

class ReaderCommand;

/**
 * Reads a package, or compares two, in another process, `sorrel-viewer-reader`. Protocol.h has the topics and the
 * requests. Everything is asynchronous: open() returns when the process was started, before it runs.
 *
 * The process is started within bubblewrap where that works, and confines itself besides. Nothing that it writes is
 * trusted: AnswerCheck checks each answer. When the process dies, writes something else, or is silent for too long
 * while an answer is due, it is killed, failed() is emitted once, and nothing else follows until the next open(). A
 * slot may call open() and may delete the object. Long lines are decoded in a thread, so this one stays responsive.
 */
class Reading : public QObject
{
    Q_OBJECT

public:
    explicit Reading(QObject *parent = nullptr);
    /// Kills the process.
    ~Reading() override;

    /// Starts to read @p file, and ends what was read before. Names are argumentTexts(). Texts are for @p locale, a
    /// language tag after BCP 47; an empty one is the language of the user. With @p compareWith, a newer version of
    /// the package, the differences are read instead.
    void open(const QString &file, const QString &locale = {}, const QString &compareWith = {});
    /// Sends a request, as Protocol.h describes it. Does nothing without an open file, and after a failure.
    void request(const QJsonObject &wanted);

    /// How long the process may be silent while an answer is due, in milliseconds: one minute by default, because the
    /// digests of a package of several gigabytes take that long.
    void setPatience(int milliseconds);

Q_SIGNALS:
    /// An answer that AnswerCheck accepted: the topic, and its content without the topic. Not for `hello`, `done` and
    /// `end`.
    void answered(const QString &topic, const QJsonObject &content);
    /// Reading ended early. @p reason is a translated sentence for people.
    void failed(const QString &reason);
    /// Every topic was answered. Requests may follow.
    void finished();

private:
    /// Each is due at most once, unasked.
    static constexpr int MaxTopics = 16;

    void start();
    /// Starts the reader without bubblewrap, when that has not started it. Else returns false.
    bool startUnwrapped();
    void stop();
    void fail(const QString &reason);
    /// A line of the process.
    struct Answer {
        QString topic;
        QJsonObject content;
        bool isSound = false;
    };

    static Answer decoded(const QByteArray &line);
    void readOutput();
    void takeLines();
    void decodeInThread(const QByteArray &line);
    /// Passes @p answer on. Returns whether this process is still the one to listen to; the object may be gone else.
    bool accept(const Answer &answer);
    bool handle(const Answer &answer);
    bool expects(const QString &topic);
    void handleEnd();
    void updateTimer();

    std::unique_ptr<ReaderCommand> m_command;
    std::unique_ptr<QProcess> m_process;
    LineBuffer m_lines;
    QThread *m_decoding = nullptr; ///< decodes a long line; lines behind it wait
    QTimer m_timer;
    QList<QJsonObject> m_early; ///< requests before `hello`
    bool m_isWrapped = false;   ///< whether the process is within bubblewrap
    bool m_hasHello = false;
    bool m_hasEnd = false;
    bool m_hasExited = false; ///< whether the process has ended
    int m_due = 0;            ///< requests without `done`
    int m_left = 0;           ///< answers that the process may still write
};

} // namespace Viewer

#endif
