// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/PackageSetData.h"

#include "package/PackageAccess.h"
#include "package/PackageData.h"
#include "package/SetReader.h"
#include "sets/NameChooser.h"
#include "sets/TocChooser.h"

namespace SorrelKit {

namespace {

QString tocPath()
{
    return QStringLiteral("toc.pb");
}

void addNativeCode(ZipArchive &package, SetMember *member)
{
    const QSet<QString> abis = PackageData::nativeAbis(package);
    member->facts.abis = QStringList(abis.cbegin(), abis.cend());
}

} // namespace

const std::vector<SetMember> &PackageSetData::members()
{
    if (!m_isRead)
        read();
    m_isRead = true;
    return m_members;
}

void PackageSetData::read()
{
    const std::shared_ptr<ByteSource> source = PackageAccess::data(m_package)->bytes();
    if (source == nullptr)
        return;
    ZipArchive archive(source);
    if (!archive.open())
        return;
    m_isSet = !archive.contains(QStringLiteral("AndroidManifest.xml")) && SetReader::isSet(archive);
    if (m_isSet)
        readSet(archive);
    else
        readAlone(archive);
    for (SetMember &member : m_members)
        member.classify();
}

void PackageSetData::readSet(ZipArchive &archive)
{
    Budget budget(MaxReadingWork, MaxReadingBytes);
    if (archive.contains(tocPath())) {
        const SharedBytes toc = archive.content(tocPath(), TocReader::MaxBytes, &budget);
        m_toc.emplace(toc.view(), &budget);
        m_isTocWhole = !toc.isEmpty() && m_toc->isWhole();
    }
    for (const QString &path : SetReader::packagePaths(archive)) {
        SetMember member;
        member.facts.path = path;
        const QByteArray name = path.toUtf8();
        const int number = archive.directory().find(ByteView(name));
        const std::optional<ZipArchive::Data> data = archive.dataAnyway(number);
        if (data) {
            member.facts.packedBytes = data->packedSize;
            member.facts.bytes = data->size;
        }
        const qint64 bytesLeft = budget.bytesLeft();
        const bool isPacked = data && data->method != ZipDirectory::Stored;
        if (!isPacked || budget.spendWork(Budget::ByteWork * data->size)) {
            const std::optional<SetReader::Opened> package = SetReader::openPackage(archive, path, &budget);
            if (package && package->manifest.root().name == QLatin1String("manifest")) {
                member.readManifest(package->manifest);
                addNativeCode(*package->archive, &member);
            }
        }
        // The package is closed again.
        budget.releaseBytes(bytesLeft - budget.bytesLeft());
        m_members.push_back(std::move(member));
    }
}

void PackageSetData::readAlone(ZipArchive &archive)
{
    const Manifest &manifest = PackageAccess::data(m_package)->manifest();
    if (manifest.root().isNull())
        return;
    SetMember member;
    member.facts.packedBytes = archive.source().size();
    member.facts.bytes = archive.source().size();
    member.readManifest(manifest);
    addNativeCode(archive, &member);
    m_members.push_back(std::move(member));
}

SplitChoice PackageSetData::choose(const Device &device)
{
    if (device.fault() != Device::Fault::None)
        return SetAccess::choice(ChoiceCode::BadDevice, device.faultText());
    if (members().empty())
        return SetAccess::choice(ChoiceCode::CannotRead, m_package.error().message());
    const DeviceMatch match(device);
    if (!m_toc)
        return NameChooser(m_members, match).choose();
    if (!m_isTocWhole)
        return SetAccess::choice(ChoiceCode::BadContents, QStringLiteral("toc.pb is damaged"));
    return TocChooser(*m_toc, m_members, match).choose();
}

Package PackageSetData::packageFor(const Device &device)
{
    const SplitChoice choice = choose(device);
    if (!choice.fits())
        return Package();
    if (!m_isSet)
        return m_package;
    QStringList paths;
    for (const SetPackage &package : choice.packages())
        paths.append(package.path());
    return PackageAccess::package(new PackageData(PackageAccess::data(m_package)->bytes(), paths));
}

} // namespace SorrelKit
