// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_PACKAGEREADING_H
#define SORRELQML_PACKAGEREADING_H

#include <QMutex>
#include <QRunnable>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <memory>

namespace SorrelQml {

/// The facts of a package that PackageInfo has.
struct PackageFacts {
    QString error; ///< empty for a package that can be read
    QString label;
    QString packageName;
    QString version;
    qint64 versionCode = 0;
    int minSdkVersion = 0;
    int targetSdkVersion = 0;
    QStringList permissions;
    QVariantList launchers;
};

/// Reads the facts of a package in a thread of a pool that all objects share, of up to MaxThreads threads.
class PackageReading
{
public:
    using Receiver = std::function<void(const PackageFacts &facts)>;
    static constexpr int MaxThreads = 2;

    /// Starts to read @p fileName, with texts for the locale @p locale. @p receiver gets the facts in the thread that
    /// reads.
    PackageReading(const QString &fileName, const QString &locale, const Receiver &receiver);
    /// The receiver is not called any more: waits while it is being called.
    ~PackageReading();

private:
    Q_DISABLE_COPY(PackageReading)

    struct Order {
        QString fileName;
        QString locale;
        QMutex mutex;
        Receiver receiver; ///< none when nobody waits any more
    };
    class Task;

    const std::shared_ptr<Order> m_order;
};

} // namespace SorrelQml

#endif
