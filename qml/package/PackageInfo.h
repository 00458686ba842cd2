// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_PACKAGEINFO_H
#define SORRELQML_PACKAGEINFO_H

#include "icons/SourceNumber.h"
#include "package/PackageReading.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QUrl>

#include <memory>

namespace SorrelQml {

/**
 * The QML type PackageInfo: the facts of one package file, or set of packages, read from the file itself.
 *
 *     PackageInfo { id: info; source: "file:///srv/packages/notes.apk" }
 *     Text { text: info.label; textFormat: Text.PlainText }
 *     Image { source: info.icon; sourceSize: Qt.size(96, 96); asynchronous: true }
 *
 * The file is read in a thread, never in that of the user interface; `status` is Loading until then. The icon is
 * drawn in this process, in a thread and within limits, when an Image shows it; icons of a ShelfModel are drawn by
 * worker processes.
 *
 * A package with a damaged part has the status Error and the facts that can be read. All texts are those of
 * strangers, up to 1,024 UTF-16 units of each: show them with Text.PlainText. docs/qml.md describes every property.
 */
class PackageInfo : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(QString locale READ locale WRITE setLocale NOTIFY localeChanged)
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString errorString READ errorString NOTIFY statusChanged)
    Q_PROPERTY(QString label READ label NOTIFY factsChanged)
    Q_PROPERTY(QString packageName READ packageName NOTIFY factsChanged)
    Q_PROPERTY(QString version READ version NOTIFY factsChanged)
    Q_PROPERTY(qint64 versionCode READ versionCode NOTIFY factsChanged)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion NOTIFY factsChanged)
    Q_PROPERTY(int targetSdkVersion READ targetSdkVersion NOTIFY factsChanged)
    Q_PROPERTY(QStringList permissions READ permissions NOTIFY factsChanged)
    Q_PROPERTY(QVariantList launchers READ launchers NOTIFY factsChanged)
    Q_PROPERTY(QUrl icon READ icon NOTIFY factsChanged)

public:
    /// How far reading the source is.
    enum Status {
        Null,    ///< there is no source
        Loading, ///< the file is being read
        Ready,   ///< the facts are those of the file
        Error,   ///< the file, or a part of it, cannot be read: errorString has the reason
    };
    Q_ENUM(Status)

    explicit PackageInfo(QObject *parent = nullptr);
    ~PackageInfo() override;

    void classBegin() override {}
    void componentComplete() override;

    QUrl source() const { return m_source; }
    void setSource(const QUrl &source);
    QString locale() const { return m_locale; }
    void setLocale(const QString &locale);
    Status status() const { return m_status; }
    QString errorString() const { return m_facts.error; }
    QString label() const { return m_facts.label; }
    QString packageName() const { return m_facts.packageName; }
    QString version() const { return m_facts.version; }
    qint64 versionCode() const { return m_facts.versionCode; }
    int minSdkVersion() const { return m_facts.minSdkVersion; }
    int targetSdkVersion() const { return m_facts.targetSdkVersion; }
    QStringList permissions() const { return m_facts.permissions; }
    QVariantList launchers() const { return m_facts.launchers; }
    QUrl icon() const;

Q_SIGNALS:
    void sourceChanged();
    void localeChanged();
    void statusChanged();
    void factsChanged();

private:
    void load();
    void take(const PackageFacts &facts, int reading);
    void setFacts(const PackageFacts &facts, Status status);

    QUrl m_source;
    QString m_locale;
    PackageFacts m_facts;
    SourceNumber m_number;
    std::unique_ptr<PackageReading> m_reading;
    int m_readings = 0;
    Status m_status = Null;
    bool m_isComplete = false;
};

} // namespace SorrelQml

#endif
