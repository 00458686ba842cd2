// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Component.h>

#include <QSharedData>

namespace SorrelKit {

class ComponentData : public QSharedData
{
public:
    Component::Kind kind = Component::Kind::Activity;
    QString name;
    bool isExported = false;
    bool isEnabled = true;
    QString permission;
    QString writePermission;
};

Component::Component() : d(new ComponentData) {}
Component::Component(Kind kind, const QString &name, bool isExported, bool isEnabled, const QString &permission,
                     const QString &writePermission)
    : Component()
{
    d->kind = kind;
    d->name = name;
    d->isExported = isExported;
    d->isEnabled = isEnabled;
    d->permission = permission;
    d->writePermission = writePermission;
}

Component::Component(const Component &other) = default;
Component::Component(Component &&other) noexcept = default;
Component &Component::operator=(const Component &other) = default;
Component &Component::operator=(Component &&other) noexcept = default;
Component::~Component() = default;

Component::Kind Component::kind() const
{
    return d->kind;
}

QString Component::name() const
{
    return d->name;
}

bool Component::isExported() const
{
    return d->isExported;
}

bool Component::isEnabled() const
{
    return d->isEnabled;
}

QString Component::permission() const
{
    return d->permission;
}

QString Component::writePermission() const
{
    return d->writePermission;
}

} // namespace SorrelKit
