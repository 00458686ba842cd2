// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ZipArchive.h"

#include "archive/ArchiveOddities.h"
#include "archive/BytesOfFile.h"

#include <QFile>

#include <limits>
#include <utility>

ZipArchive::ZipArchive(const QString &fileName) : m_fileName(fileName) {}

ZipArchive::ZipArchive(QIODevice *device) : m_device(device) {}

ZipArchive::ZipArchive(const QByteArray &bytes) : m_source(std::make_shared<BytesInMemory>(SharedBytes(bytes))) {}

std::unique_ptr<ZipArchive> ZipArchive::atNativePath(const QByteArray &path)
{
    std::unique_ptr<ZipArchive> archive(new ZipArchive);
    archive->m_nativePath = path;
    return archive;
}

QByteArray ZipArchive::path() const
{
    return m_nativePath.isNull() ? QFile::encodeName(m_fileName) : m_nativePath;
}

std::shared_ptr<ByteSource> ZipArchive::openSource() const
{
    if (m_source != nullptr)
        return m_source;
    if (m_device != nullptr)
        return BytesOfDevice::open(m_device);
    return m_nativePath.isNull() ? BytesOfFile::open(m_fileName) : BytesOfFile::openNativePath(m_nativePath);
}

bool ZipArchive::open(Budget *budget)
{
    if (m_isOpen)
        return true;
    const std::shared_ptr<ByteSource> source = openSource();
    if (source == nullptr || !m_directory.read(*source))
        return false;
    if (budget != nullptr) {
        const qint64 bytes = MemberBytes * m_directory.count() + m_directory.bytes();
        const bool isWhole = budget->spendWork(MemberWork * m_directory.count()) && budget->holdBytes(bytes);
        if (!isWhole) {
            m_directory = ZipDirectory();
            return false;
        }
    }
    m_source = source;
    m_isOpen = true;
    return true;
}

int ZipArchive::find(const QString &path)
{
    const QByteArray name = path.toUtf8();
    return name.isEmpty() ? -1 : m_directory.find(ByteView(name));
}

OddityList ZipArchive::oddities()
{
    return m_isOpen ? ArchiveOddities::ofDirectory(m_directory, *m_source) : OddityList();
}

OddityList ZipArchive::oddities(int number)
{
    if (number < 0)
        return {};
    OddityList oddities = ArchiveOddities::ofMember(m_directory, *m_source, number);
    if (m_misfits.contains(number))
        oddities.add(Oddity::MemberInflatedSize);
    return oddities;
}

QStringList ZipArchive::names(int most)
{
    QStringList names;
    for (int number = 0; number < qMin(m_directory.count(), most); ++number) {
        const ByteView name = m_directory.name(number);
        if (!name.isEmpty() && m_directory.find(name) == number)
            names.append(QString::fromUtf8(reinterpret_cast<const char *>(name.data()), int(name.size())));
    }
    return names;
}

std::optional<ZipArchive::Data> ZipArchive::data(int number)
{
    return this->data(number, true);
}

std::optional<ZipArchive::Data> ZipArchive::dataAnyway(int number)
{
    return this->data(number, false);
}

std::optional<ZipArchive::Data> ZipArchive::data(int number, bool isAsAndroid)
{
    if (number < 0)
        return {};
    const ZipDirectory::Member member = m_directory.member(number);
    const ZipDirectory::LocalHeader own = ZipDirectory::localHeader(*m_source, member);
    if (!own.isFound || member.packedSize < 0 || member.size < 0)
        return {};
    if (isAsAndroid && !ArchiveOddities::isOpened(m_directory, member, own))
        return {};
    Data data;
    data.at = own.dataAt;
    data.method = member.method;
    data.size = member.size;
    data.packedSize = data.isStored() ? member.size : member.packedSize;
    if (data.at > m_source->size())
        return {};
    // A file that is cut in a member has the start of it.
    data.packedSize = qMin(data.packedSize, m_source->size() - data.at);
    return data;
}

SharedBytes ZipArchive::content(int number, const std::optional<Data> &data, qint64 maxBytes, Budget *budget,
                                bool mayView, bool *isWhole)
{
    *isWhole = false;
    if (!data || budget->workLeft() <= 0)
        return {};
    const bool isStored = data->isStored();
    // A member delivers no more than the directory says, so one that is too long is not read at all.
    const qint64 size = isStored ? data->packedSize : data->size;
    const qint64 workPerByte = isStored ? Budget::ByteWork : Budget::PackedByteWork;
    if (data->size > maxBytes || data->packedSize > budget->workLeft() / workPerByte
        || qMin(size, data->packedSize * Inflater::MaxRatio) > budget->workLeft() / Budget::ByteWork)
        return {};
    SharedBytes bytes;
    if (!isStored) {
        const SharedBytes packed(m_source->read(data->at, data->packedSize));
        bytes = SharedBytes(m_inflater.inflated(packed.view(), size, isWhole));
        if (!*isWhole && m_misfits.size() < MaxMisfits)
            m_misfits.insert(number);
    } else {
        bytes = mayView ? m_source->view(data->at, size) : SharedBytes(m_source->read(data->at, size));
        *isWhole = bytes.size() == data->size;
    }
    budget->chargeWork(qMax(Budget::ByteWork * bytes.size(), workPerByte * data->packedSize));
    return bytes;
}

QByteArray ZipArchive::file(const QString &path, qint64 maxBytes)
{
    Budget any(std::numeric_limits<qint64>::max(), 0);
    return file(path, maxBytes, &any);
}

QByteArray ZipArchive::file(const QString &path, qint64 maxBytes, Budget *budget)
{
    return openedContent(path, maxBytes, budget, false).toByteArray();
}

SharedBytes ZipArchive::content(const QString &path, qint64 maxBytes)
{
    Budget any(std::numeric_limits<qint64>::max(), 0);
    return content(path, maxBytes, &any);
}

SharedBytes ZipArchive::content(const QString &path, qint64 maxBytes, Budget *budget)
{
    return openedContent(path, maxBytes, budget, true);
}

SharedBytes ZipArchive::openedContent(const QString &path, qint64 maxBytes, Budget *budget, bool mayView)
{
    const int number = find(path);
    const std::optional<Data> data = budget->workLeft() > 0 ? this->data(number) : std::nullopt;
    bool isWhole = false;
    const SharedBytes bytes = content(number, data, maxBytes, budget, mayView, &isWhole);
    return isWhole ? bytes : SharedBytes();
}

SharedBytes ZipArchive::contentAnyway(const QString &path, qint64 maxBytes, Budget *budget)
{
    const int number = find(path);
    bool isWhole = false;
    const std::optional<Data> data = budget->workLeft() > 0 ? dataAnyway(number) : std::nullopt;
    return content(number, data, maxBytes, budget, true, &isWhole);
}

std::optional<bool> ZipArchive::hasRightChecksum(int number, Budget *budget)
{
    const std::optional<Data> data = this->data(number);
    if (!data)
        return {};
    const quint32 wanted = m_directory.member(number).crc;
    if (!data->isStored()) {
        bool isWhole = false;
        const SharedBytes bytes = content(number, data, MaxCheckedBytes, budget, false, &isWhole);
        if (!isWhole)
            return {};
        return Inflater::checksum(bytes.view()) == wanted;
    }
    if (!budget->spendWork(Budget::ByteWork * data->packedSize))
        return {};
    constexpr qint64 PieceSize = 1 << 18;
    quint32 sum = 0;
    for (qint64 at = 0; at < data->packedSize; at += PieceSize) {
        const QByteArray piece = m_source->read(data->at + at, qMin(PieceSize, data->packedSize - at));
        sum = Inflater::checksum(ByteView(piece), sum);
    }
    return sum == wanted;
}

std::unique_ptr<ZipArchive> ZipArchive::archive(const QString &path, Budget *budget)
{
    const int number = find(path);
    // No Android reads this archive.
    const std::optional<Data> data = dataAnyway(number);
    if (!data || data->packedSize > m_source->size() - m_innerBytes)
        return nullptr;
    if (data->isStored()) {
        m_innerBytes += data->packedSize;
        const auto part = std::make_shared<PartOfBytes>(m_source, data->at, data->packedSize);
        return std::unique_ptr<ZipArchive>(new ZipArchive(part));
    }
    if (!budget->holdBytes(data->size))
        return nullptr;
    // A member that turns out to be damaged counts too: reading it takes as long.
    m_innerBytes += data->packedSize;
    Budget any(std::numeric_limits<qint64>::max(), 0);
    bool isWhole = false;
    const SharedBytes bytes = content(number, data, data->size, &any, false, &isWhole);
    if (bytes.isEmpty())
        return nullptr;
    return std::unique_ptr<ZipArchive>(new ZipArchive(std::make_shared<BytesInMemory>(bytes)));
}
