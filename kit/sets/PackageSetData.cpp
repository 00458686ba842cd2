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
    member->libraryBytes = PackageData::nativeLibraryBytes(package);
    member->facts.abis = member->libraryBytes.keys();
}

// Android looks for expansion files there alone.
QString expansionPath(const QString &application, const QString &path)
{
    return QStringLiteral("Android/obb/%1/%2").arg(application, path.section(QLatin1Char('/'), -1));
}

} // namespace

const std::vector<SetMember> &PackageSetData::members()
{
    if (!m_isRead)
        read();
    m_isRead = true;
    return m_members;
}

const QList<ExpansionFile> &PackageSetData::expansions()
{
    members();
    return m_expansions;
}

const QStringList &PackageSetData::mismatches()
{
    members();
    return m_mismatches;
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
    const SetInfo info(archive, &budget);
    for (const QString &path : SetReader::packagePaths(archive)) {
        SetMember member;
        member.facts.path = path;
        member.describedSplit = info.splitName(path);
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
    readExpansions(archive, info);
    m_mismatches = info.mismatches(facts());
}

SetInfo::Facts PackageSetData::facts() const
{
    SetInfo::Facts facts;
    for (const SetMember &member : m_members) {
        facts.paths.append(member.facts.path);
        facts.abis += member.facts.abis;
        if (!member.hasManifest)
            continue;
        facts.splitNames.insert(member.facts.path, member.facts.splitName);
        const bool isBase = member.facts.splitName.isEmpty();
        if (facts.application.isEmpty() || (isBase && !facts.versionCode))
            facts.application = member.application;
        if (isBase && !facts.versionCode)
            facts.versionCode = member.versionCode;
    }
    for (const ExpansionFile &file : m_expansions)
        facts.expansions.insert(file.path(), file.installPath());
    return facts;
}

void PackageSetData::readExpansions(ZipArchive &archive, const SetInfo &info)
{
    const QString application = facts().application;
    const QStringList described = info.expansions();
    const QSet<QString> known(described.cbegin(), described.cend());
    for (const QString &path : archive.names(SetReader::MaxMembers)) {
        const bool isExpansion = path.endsWith(QLatin1String(".obb"), Qt::CaseInsensitive) || known.contains(path);
        const QByteArray name = path.toUtf8();
        const auto data = isExpansion ? archive.data(archive.directory().find(ByteView(name))) : std::nullopt;
        if (!data || m_expansions.size() == MaxExpansions)
            continue;
        ExpansionFileData file;
        file.path = path;
        file.installPath = expansionPath(application, path);
        file.packedBytes = data->packedSize;
        file.bytes = data->size;
        m_expansions.append(SetAccess::expansion(file));
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
    if (m_toc && !m_isTocWhole)
        return SetAccess::choice(ChoiceCode::BadContents, QStringLiteral("toc.pb is damaged"));
    SplitChoice choice = m_toc ? TocChooser(*m_toc, m_members, match).choose() : NameChooser(m_members, match).choose();
    if (choice.fits())
        SetAccess::setExpansions(&choice, m_expansions);
    return choice;
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
