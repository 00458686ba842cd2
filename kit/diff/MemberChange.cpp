// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/MemberChange.h>

#include <QSharedData>

namespace SorrelKit {

class MemberChangeData : public QSharedData
{
public:
    TextChange::Kind kind = TextChange::Kind::Changed;
    QString package;
    QString path;
    SizeChange sizes;
};

MemberChange::MemberChange() : d(new MemberChangeData) {}
MemberChange::MemberChange(TextChange::Kind kind, const QString &package, const QString &path, const SizeChange &sizes)
    : MemberChange()
{
    d->kind = kind;
    d->package = package;
    d->path = path;
    d->sizes = sizes;
}

MemberChange::MemberChange(const MemberChange &other) = default;
MemberChange::MemberChange(MemberChange &&other) noexcept = default;
MemberChange &MemberChange::operator=(const MemberChange &other) = default;
MemberChange &MemberChange::operator=(MemberChange &&other) noexcept = default;
MemberChange::~MemberChange() = default;

TextChange::Kind MemberChange::kind() const
{
    return d->kind;
}

QString MemberChange::package() const
{
    return d->package;
}

QString MemberChange::path() const
{
    return d->path;
}

SizeChange MemberChange::sizes() const
{
    return d->sizes;
}

} // namespace SorrelKit
