// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageReading.h"

#include "rows/ShortText.h"

#include <SorrelKit/Package.h>

#include <QLocale>
#include <QMutexLocker>
#include <QThreadPool>
#include <QVariantMap>

namespace SorrelQml {

using namespace SorrelKit;

namespace {

class PackagePool : public QThreadPool
{
public:
    PackagePool() { setMaxThreadCount(PackageReading::MaxThreads); }
};

QThreadPool &packagePool()
{
    static PackagePool pool;
    return pool;
}

PackageFacts readFacts(const QString &fileName, const QString &localeName)
{
    const QLocale locale = localeName.isEmpty() ? QLocale() : QLocale(localeName);
    Package package(fileName);
    package.setPlatform(Platform::installed());
    PackageFacts facts;
    facts.error = package.error().message();
    if (!package.error())
        facts.error.clear();
    if (!package.isValid())
        return facts;
    facts.label = shortText(package.label(locale));
    facts.packageName = shortText(package.packageName());
    facts.version = shortText(package.versionName());
    facts.versionCode = package.versionCode();
    facts.minSdkVersion = package.minSdkVersion();
    facts.targetSdkVersion = package.targetSdkVersion();
    const QStringList permissions = package.permissionNames();
    for (const QString &permission : permissions)
        facts.permissions.append(shortText(permission));
    const QList<Entry> launchers = package.launchers();
    for (const Entry &launcher : launchers) {
        if (launcher.isShown())
            facts.launchers.append(QVariantMap{{QStringLiteral("name"), shortText(launcher.name())},
                                               {QStringLiteral("label"), shortText(launcher.label(locale))}});
    }
    return facts;
}

} // namespace

class PackageReading::Task : public QRunnable
{
public:
    explicit Task(const std::shared_ptr<Order> &order) : m_order(order) {}

    void run() override
    {
        {
            const QMutexLocker locker(&m_order->mutex);
            if (!m_order->receiver)
                return;
        }
        const PackageFacts facts = readFacts(m_order->fileName, m_order->locale);
        const QMutexLocker locker(&m_order->mutex);
        if (m_order->receiver)
            m_order->receiver(facts);
    }

private:
    const std::shared_ptr<Order> m_order;
};

PackageReading::PackageReading(const QString &fileName, const QString &locale, const Receiver &receiver)
    : m_order(std::make_shared<Order>())
{
    m_order->fileName = fileName;
    m_order->locale = locale;
    m_order->receiver = receiver;
    packagePool().start(new Task(m_order));
}

PackageReading::~PackageReading()
{
    const QMutexLocker locker(&m_order->mutex);
    m_order->receiver = nullptr;
}

} // namespace SorrelQml
