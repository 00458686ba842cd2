// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Error.h>

#include "archive/PackageError.h"

#include <QSharedData>

namespace SorrelKit {

// The texts of the codes are those of libsorrel.
static_assert(int(Error::Code::None) == PackageError::NoError
                  && int(Error::Code::CannotOpen) == PackageError::CannotOpen
                  && int(Error::Code::BadTable) == PackageError::BadResources
                  && int(Error::Code::NoManifest) == PackageError::NoManifest
                  && int(Error::Code::BadManifest) == PackageError::BadManifest
                  && int(Error::Code::RefusedByAndroid) == PackageError::RefusedByAndroid,
              "the codes are those of ApkFile::getError()");

class ErrorData : public QSharedData
{
public:
    Error::Code code = Error::Code::None;
    QString detail;
};

Error::Error() : d(new ErrorData) {}
Error::Error(Code code, const QString &detail) : d(new ErrorData)
{
    d->code = code;
    d->detail = detail;
}

Error::Error(const Error &other) = default;
Error::Error(Error &&other) noexcept = default;
Error &Error::operator=(const Error &other) = default;
Error &Error::operator=(Error &&other) noexcept = default;
Error::~Error() = default;

Error::Code Error::code() const
{
    return d->code;
}

QString Error::detail() const
{
    return d->detail;
}

QString Error::message() const
{
    const QString text = PackageError::text(int(d->code));
    return d->detail.isEmpty() ? text : text + QLatin1String(": ") + d->detail;
}

Error::operator bool() const
{
    return d->code != Code::None;
}

bool operator==(const Error &a, const Error &b)
{
    return a.d->code == b.d->code && a.d->detail == b.d->detail;
}

bool operator!=(const Error &a, const Error &b)
{
    return !(a == b);
}

} // namespace SorrelKit
