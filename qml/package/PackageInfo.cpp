// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageInfo.h"

#include "icons/IconUrl.h"

namespace SorrelQml {

PackageInfo::PackageInfo(QObject *parent) : QObject(parent) {}

PackageInfo::~PackageInfo() = default;

void PackageInfo::componentComplete()
{
    m_isComplete = true;
    load();
}

void PackageInfo::setSource(const QUrl &source)
{
    if (m_source == source)
        return;
    m_source = source;
    Q_EMIT sourceChanged();
    load();
}

void PackageInfo::setLocale(const QString &locale)
{
    if (m_locale == locale)
        return;
    m_locale = locale;
    Q_EMIT localeChanged();
    load();
}

QUrl PackageInfo::icon() const
{
    if (m_number.value() == 0)
        return QUrl();
    IconUrl url;
    url.source = IconUrl::Source::Package;
    url.number = m_number.value();
    url.revision = m_readings;
    return QUrl(url.toString());
}

void PackageInfo::load()
{
    if (!m_isComplete)
        return;
    m_reading.reset();
    const int reading = ++m_readings;
    const QString fileName = m_source.toLocalFile();
    PackageFacts none;
    if (fileName.isEmpty()) {
        if (!m_source.isEmpty())
            none.error = QStringLiteral("only local files can be read");
        setFacts(none, m_source.isEmpty() ? Null : Error);
        return;
    }
    setFacts(none, Loading);
    m_reading = std::make_unique<PackageReading>(fileName, m_locale, [this, reading](const PackageFacts &facts) {
        QMetaObject::invokeMethod(
            this, [this, facts, reading] { take(facts, reading); }, Qt::QueuedConnection);
    });
}

void PackageInfo::take(const PackageFacts &facts, int reading)
{
    if (reading != m_readings)
        return;
    setFacts(facts, facts.error.isEmpty() ? Ready : Error);
}

void PackageInfo::setFacts(const PackageFacts &facts, Status status)
{
    m_facts = facts;
    m_status = status;
    m_number = facts.packageName.isEmpty() ? SourceNumber() : SourceNumber(m_source.toLocalFile());
    Q_EMIT factsChanged();
    Q_EMIT statusChanged();
}

} // namespace SorrelQml
