// SPDX-License-Identifier: LGPL-2.1-or-later
#include "InstallReport.h"

#include <SorrelKit/PackageSet.h>

#include <QJsonArray>
#include <QLocale>

using SorrelKit::ExpansionFile;
using SorrelKit::SetPackage;
using SorrelKit::SplitChoice;

namespace {

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1);
}

QString codeName(SplitChoice::Code code)
{
    switch (code) {
    case SplitChoice::Code::Fits:
        return QStringLiteral("none");
    case SplitChoice::Code::CannotRead:
        return QStringLiteral("cannot-read");
    case SplitChoice::Code::BadDevice:
        return QStringLiteral("bad-device");
    case SplitChoice::Code::BadContents:
        return QStringLiteral("bad-contents");
    case SplitChoice::Code::SdkTooLow:
        return QStringLiteral("sdk-too-low");
    case SplitChoice::Code::NoNativeCode:
        return QStringLiteral("no-native-code");
    case SplitChoice::Code::NoScreen:
        return QStringLiteral("no-screen");
    case SplitChoice::Code::MissingPackage:
        return QStringLiteral("missing-package");
    }
    return QStringLiteral("other");
}

QString kindName(SetPackage::Kind kind)
{
    switch (kind) {
    case SetPackage::Kind::Unknown:
        break;
    case SetPackage::Kind::Base:
        return QStringLiteral("base");
    case SetPackage::Kind::Feature:
        return QStringLiteral("feature");
    case SetPackage::Kind::Configuration:
        return QStringLiteral("configuration");
    case SetPackage::Kind::Standalone:
        return QStringLiteral("standalone");
    }
    return QStringLiteral("unknown");
}

QString reasonName(SetPackage::Reason reason)
{
    switch (reason) {
    case SetPackage::Reason::None:
        break;
    case SetPackage::Reason::Always:
        return QStringLiteral("always");
    case SetPackage::Reason::Condition:
        return QStringLiteral("condition");
    case SetPackage::Reason::Dependency:
        return QStringLiteral("dependency");
    case SetPackage::Reason::Abi:
        return QStringLiteral("abi");
    case SetPackage::Reason::Language:
        return QStringLiteral("language");
    case SetPackage::Reason::ScreenDensity:
        return QStringLiteral("screen-density");
    case SetPackage::Reason::Standalone:
        return QStringLiteral("standalone");
    case SetPackage::Reason::Texture:
        return QStringLiteral("texture");
    case SetPackage::Reason::Fallback:
        return QStringLiteral("fallback");
    }
    return QStringLiteral("other");
}

QJsonObject packageJson(const SetPackage &package)
{
    return {
        {QStringLiteral("path"), package.path()},
        {QStringLiteral("split"), package.splitName()},
        {QStringLiteral("module"), package.module()},
        {QStringLiteral("kind"), kindName(package.kind())},
        {QStringLiteral("downloadBytes"), package.packedBytes()},
        {QStringLiteral("installedBytes"), package.bytes()},
        {QStringLiteral("reason"), reasonName(package.reason())},
        {QStringLiteral("text"), package.reasonText()},
    };
}

} // namespace

InstallReport::InstallReport(const SorrelKit::Package &package, const SorrelKit::Device &device)
{
    const SorrelKit::PackageSet set(package);
    m_choice = set.splitsFor(device);
    m_mismatches = set.mismatches();
}

ReportRows InstallReport::rows() const
{
    ReportRows rows;
    for (const QString &mismatch : m_mismatches)
        rows.add(QStringLiteral("  mismatch"), mismatch, ReportRows::Emphasis::Error);
    if (!fits()) {
        rows.add(QStringLiteral("  installs"), QStringLiteral("nothing: ") + errorText(), ReportRows::Emphasis::Error);
        return rows;
    }
    constexpr int SizeWidth = 10;
    const QList<SetPackage> packages = m_choice.packages();
    rows.add(QStringLiteral("  installs"),
             packages.size() == 1 ? QStringLiteral("1 package") : QStringLiteral("%1 packages").arg(packages.size()));
    for (const SetPackage &package : packages) {
        rows.add(QStringLiteral("    ") + (package.path().isEmpty() ? QStringLiteral("package") : package.path()),
                 QStringLiteral("%1  %2").arg(sizeText(package.packedBytes()).rightJustified(SizeWidth),
                                              package.reasonText()));
    }
    for (const ExpansionFile &file : m_choice.expansions())
        rows.add(QStringLiteral("    ") + file.path(),
                 QStringLiteral("%1  to %2")
                     .arg(sizeText(file.packedBytes()).rightJustified(SizeWidth), file.installPath()));
    rows.add(QStringLiteral("  download"), sizeText(m_choice.downloadBytes()));
    const QString libraries =
        m_choice.libraryBytes() > 0
            ? QStringLiteral(", with %1 of unpacked libraries").arg(sizeText(m_choice.libraryBytes()))
            : QString();
    rows.add(QStringLiteral("  installed"), sizeText(m_choice.installedBytes()) + libraries);
    return rows;
}

QJsonObject InstallReport::toJson() const
{
    QJsonArray packages;
    for (const SetPackage &package : m_choice.packages())
        packages.append(packageJson(package));
    QJsonArray expansions;
    for (const ExpansionFile &file : m_choice.expansions())
        expansions.append(QJsonObject{{QStringLiteral("path"), file.path()},
                                      {QStringLiteral("installPath"), file.installPath()},
                                      {QStringLiteral("downloadBytes"), file.packedBytes()},
                                      {QStringLiteral("installedBytes"), file.bytes()}});
    return {
        {QStringLiteral("fits"), fits()},
        {QStringLiteral("error"), codeName(m_choice.code())},
        {QStringLiteral("text"), errorText()},
        {QStringLiteral("downloadBytes"), m_choice.downloadBytes()},
        {QStringLiteral("installedBytes"), m_choice.installedBytes()},
        {QStringLiteral("libraryBytes"), m_choice.libraryBytes()},
        {QStringLiteral("packages"), packages},
        {QStringLiteral("expansions"), expansions},
        {QStringLiteral("mismatches"), QJsonArray::fromStringList(m_mismatches)},
    };
}
