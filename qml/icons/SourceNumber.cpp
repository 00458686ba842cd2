// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/SourceNumber.h"

#include <QMap>
#include <QMutex>
#include <QMutexLocker>

#include <utility>

namespace SorrelQml {

namespace {

struct NumberedSource {
    QString fileName;
    int users = 0;
};

struct NumberedSources {
    QMutex mutex;
    QMap<int, NumberedSource> sources;
    int last = 0;
};

NumberedSources &numberedSources()
{
    static NumberedSources sources;
    return sources;
}

} // namespace

SourceNumber::SourceNumber(const QString &fileName)
{
    NumberedSources &all = numberedSources();
    const QMutexLocker locker(&all.mutex);
    for (auto source = all.sources.begin(); source != all.sources.end(); ++source) {
        if (source->fileName == fileName) {
            ++source->users;
            m_value = source.key();
            return;
        }
    }
    m_value = ++all.last;
    all.sources.insert(m_value, {fileName, 1});
}

SourceNumber::SourceNumber(SourceNumber &&other) noexcept : m_value(std::exchange(other.m_value, 0)) {}

SourceNumber &SourceNumber::operator=(SourceNumber &&other) noexcept
{
    std::swap(m_value, other.m_value);
    return *this;
}

SourceNumber::~SourceNumber()
{
    if (m_value == 0)
        return;
    NumberedSources &all = numberedSources();
    const QMutexLocker locker(&all.mutex);
    const auto source = all.sources.find(m_value);
    if (--source->users == 0)
        all.sources.erase(source);
}

QString SourceNumber::fileName(int value)
{
    NumberedSources &all = numberedSources();
    const QMutexLocker locker(&all.mutex);
    return all.sources.value(value).fileName;
}

} // namespace SorrelQml
