// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FAKEPACKAGE_H
#define FAKEPACKAGE_H

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

/// A file for fake_viewer_reader. By default it is a good package: "Notes", verified, with a dangerous permission.
class FakePackage
{
public:
    FakePackage();

    /// Sets a member of the topic @p topic.
    FakePackage &set(const QString &topic, const QString &key, const QJsonValue &value);
    /// Leaves out @p topic and all that follow.
    FakePackage &cutAt(const QString &topic);
    /// The reader dies after its last answer, which is not `end`.
    FakePackage &dies();

    void write(const QString &path) const;

    static QJsonObject permission(const QString &label, bool isDangerous);

private:
    QList<QJsonObject> m_topics;
    bool m_dies = false;
};

#endif
