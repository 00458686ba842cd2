// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/IconError.h>

#include <QSharedData>

namespace SorrelKit {

class IconErrorData : public QSharedData
{
public:
    IconError::Code code = IconError::Code::None;
    QString text;
};

IconError::IconError() : d(new IconErrorData) {}
IconError::IconError(Code code, const QString &text) : d(new IconErrorData)
{
    d->code = code;
    d->text = text;
}

IconError::IconError(const IconError &other) = default;
IconError::IconError(IconError &&other) noexcept = default;
IconError &IconError::operator=(const IconError &other) = default;
IconError &IconError::operator=(IconError &&other) noexcept = default;
IconError::~IconError() = default;

IconError::Code IconError::code() const
{
    return d->code;
}

QString IconError::text() const
{
    return d->text;
}

IconError::operator bool() const
{
    return d->code != Code::None;
}

bool operator==(const IconError &a, const IconError &b)
{
    return a.d->code == b.d->code && a.d->text == b.d->text;
}

bool operator!=(const IconError &a, const IconError &b)
{
    return !(a == b);
}

} // namespace SorrelKit
