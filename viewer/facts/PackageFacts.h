// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PACKAGEFACTS_H
#define VIEWER_PACKAGEFACTS_H

#include "facts/SignatureState.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace Viewer {

/// The facts that the head of the window and the question before installing show. They are gathered from the topics of
/// a Reading as these arrive. Texts of strangers are on one line and isolated (safeText()).
struct PackageFacts {
    struct Language {
        QString tag;
        QString name; ///< the language, or its tag when it has no name
    };

    /// Adds the content of @p topic. Other topics than `head`, `signature`, `permissions` and `languages` are ignored.
    void take(const QString &topic, const QJsonObject &content);

    bool isHeadKnown = false;
    bool isSet = false;
    qint64 fileSize = -1;
    QString label;
    QString packageName;
    QString plainPackageName; ///< as it is in the package, to compare with
    QString version;          ///< name and number
    QString error;            ///< what is broken; empty when the package can be read

    SignatureState signature;

    bool arePermissionsKnown = false;
    QString permissionsError;
    QStringList dangerousPermissions; ///< the first ones, in words

    /// The number of dangerous permissions, with those that the list leaves out.
    int dangerousCount = 0;

    QList<Language> languages;

private:
    void takeHead(const QJsonObject &content);
    void takePermissions(const QJsonObject &content);
    void takeLanguages(const QJsonObject &content);
};

} // namespace Viewer

#endif
