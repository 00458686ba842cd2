// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_ANSWERCHECK_H
#define VIEWER_ANSWERCHECK_H

#include <QJsonObject>
#include <QString>

namespace Viewer {

/**
 * Checks an answer of the reader, which a package may have taken over, before a widget sees it: the topic is known, its
 * members have the types that Protocol.h describes, texts, lists and pictures are no larger than a reader may send. A
 * picture has the signature and the size of a PNG file that may be decoded. Members that the topic does not have are
 * removed, except in the reports that a schema describes; the types of their innermost values are left to the page.
 */
class AnswerCheck
{
public:
    /// Checks @p content, and removes what does not belong to @p topic.
    AnswerCheck(const QString &topic, QJsonObject content);

    /// The fault, for developers; empty when there is none.
    const QString &fault() const { return m_fault; }
    const QJsonObject &content() const { return m_content; }

private:
    QString m_fault;
    QJsonObject m_content;
};

} // namespace Viewer

#endif
