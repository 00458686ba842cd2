// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Platform.h>

#include "format/AndroidAttributes.h"
#include "platform/PlatformData.h"

#include <QFile>

namespace SorrelKit {

Platform::Platform() : Platform(QString()) {}
Platform::Platform(const QString &fileName) : d(new PlatformData(fileName)) {}
Platform::Platform(const Platform &other) = default;
Platform::Platform(Platform &&other) noexcept = default;
Platform &Platform::operator=(const Platform &other) = default;
Platform &Platform::operator=(Platform &&other) noexcept = default;
Platform::~Platform() = default;

Platform Platform::installed()
{
    constexpr const char *Variable = "SORREL_PLATFORM";
    if (qEnvironmentVariableIsSet(Variable))
        return Platform(QFile::decodeName(qgetenv(Variable)));
    const QString file = QStringLiteral("/usr/share/android-framework-res/framework-res.apk");
    return QFile::exists(file) ? Platform(file) : Platform();
}

QString Platform::fileName() const
{
    return d->fileName();
}

bool Platform::isValid() const
{
    return !d->tables().isEmpty();
}

Error Platform::error() const
{
    return d->error();
}

int Platform::apiLevel() const
{
    for (const XmlElement &child : d->manifest().children) {
        const XmlAttribute *const level =
            child.name == QLatin1String("uses-sdk") ? child.attribute(Attr::TargetSdkVersion) : nullptr;
        if (level != nullptr)
            return qMax(0, level->value.integer().value_or(0));
    }
    const XmlAttribute *const version = d->manifest().attribute(Attr::VersionCode);
    return version != nullptr ? qMax(0, version->value.integer().value_or(0)) : 0;
}

} // namespace SorrelKit
