// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ShelfError.h>

#include <QSharedData>

namespace SorrelKit {

class ShelfErrorData : public QSharedData
{
public:
    ShelfError::Code code = ShelfError::Code::None;
    QString text;
};

ShelfError::ShelfError() : d(new ShelfErrorData) {}
ShelfError::ShelfError(Code code, const QString &text) : d(new ShelfErrorData)
{
    d->code = code;
    d->text = text;
}

ShelfError::ShelfError(const ShelfError &other) = default;
ShelfError::ShelfError(ShelfError &&other) noexcept = default;
ShelfError &ShelfError::operator=(const ShelfError &other) = default;
ShelfError &ShelfError::operator=(ShelfError &&other) noexcept = default;
ShelfError::~ShelfError() = default;

ShelfError::Code ShelfError::code() const
{
    return d->code;
}

QString ShelfError::text() const
{
    return d->text;
}

ShelfError::operator bool() const
{
    return d->code != Code::None;
}

bool operator==(const ShelfError &a, const ShelfError &b)
{
    return a.d->code == b.d->code && a.d->text == b.d->text;
}

bool operator!=(const ShelfError &a, const ShelfError &b)
{
    return !(a == b);
}

} // namespace SorrelKit
