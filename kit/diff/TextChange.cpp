// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/TextChange.h>

#include <QSharedData>

namespace SorrelKit {

class TextChangeData : public QSharedData
{
public:
    TextChange::Kind kind = TextChange::Kind::Changed;
    QString name;
    QString before;
    QString after;
};

TextChange::TextChange() : d(new TextChangeData) {}
TextChange::TextChange(Kind kind, const QString &name, const QString &before, const QString &after) : TextChange()
{
    d->kind = kind;
    d->name = name;
    d->before = before;
    d->after = after;
}

TextChange::TextChange(const TextChange &other) = default;
TextChange::TextChange(TextChange &&other) noexcept = default;
TextChange &TextChange::operator=(const TextChange &other) = default;
TextChange &TextChange::operator=(TextChange &&other) noexcept = default;
TextChange::~TextChange() = default;

TextChange::Kind TextChange::kind() const
{
    return d->kind;
}

QString TextChange::name() const
{
    return d->name;
}

QString TextChange::before() const
{
    return d->before;
}

QString TextChange::after() const
{
    return d->after;
}

} // namespace SorrelKit
