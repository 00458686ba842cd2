// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/SignatureRequest.h>

#include <QSharedData>

namespace SorrelKit {

class SignatureRequestData : public QSharedData
{
public:
    int minSdkVersion = 0;
    int maxSdkVersion = 0;
    QString v4SignatureFile;
};

SignatureRequest::SignatureRequest() : d(new SignatureRequestData) {}
SignatureRequest::SignatureRequest(const SignatureRequest &other) = default;
SignatureRequest::SignatureRequest(SignatureRequest &&other) noexcept = default;
SignatureRequest &SignatureRequest::operator=(const SignatureRequest &other) = default;
SignatureRequest &SignatureRequest::operator=(SignatureRequest &&other) noexcept = default;
SignatureRequest::~SignatureRequest() = default;

int SignatureRequest::minSdkVersion() const
{
    return d->minSdkVersion;
}

void SignatureRequest::setMinSdkVersion(int version)
{
    d->minSdkVersion = version;
}

int SignatureRequest::maxSdkVersion() const
{
    return d->maxSdkVersion;
}

void SignatureRequest::setMaxSdkVersion(int version)
{
    d->maxSdkVersion = version;
}

QString SignatureRequest::v4SignatureFile() const
{
    return d->v4SignatureFile;
}

void SignatureRequest::setV4SignatureFile(const QString &fileName)
{
    d->v4SignatureFile = fileName;
}

} // namespace SorrelKit
