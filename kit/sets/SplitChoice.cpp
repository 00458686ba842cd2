// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/SplitChoice.h>

#include "limits/ByteSum.h"
#include "sets/SplitChoiceData.h"

namespace SorrelKit {

static_assert(int(SplitChoice::Code::Fits) == int(ChoiceCode::Fits)
                  && int(SplitChoice::Code::CannotRead) == int(ChoiceCode::CannotRead)
                  && int(SplitChoice::Code::BadDevice) == int(ChoiceCode::BadDevice)
                  && int(SplitChoice::Code::BadContents) == int(ChoiceCode::BadContents)
                  && int(SplitChoice::Code::SdkTooLow) == int(ChoiceCode::SdkTooLow)
                  && int(SplitChoice::Code::NoNativeCode) == int(ChoiceCode::NoNativeCode)
                  && int(SplitChoice::Code::NoScreen) == int(ChoiceCode::NoScreen)
                  && int(SplitChoice::Code::MissingPackage) == int(ChoiceCode::MissingPackage),
              "the data has the numbers of the public enumeration");

SplitChoice::SplitChoice() : d(new SplitChoiceData) {}
SplitChoice::SplitChoice(const SplitChoice &other) = default;
SplitChoice::SplitChoice(SplitChoice &&other) noexcept = default;
SplitChoice &SplitChoice::operator=(const SplitChoice &other) = default;
SplitChoice &SplitChoice::operator=(SplitChoice &&other) noexcept = default;
SplitChoice::~SplitChoice() = default;

SplitChoice::Code SplitChoice::code() const
{
    return Code(d->code);
}

QString SplitChoice::message() const
{
    return d->message;
}

QList<SetPackage> SplitChoice::packages() const
{
    return d->packages;
}

QList<ExpansionFile> SplitChoice::expansions() const
{
    return d->expansions;
}

qint64 SplitChoice::downloadBytes() const
{
    qint64 bytes = 0;
    for (const SetPackage &package : d->packages)
        bytes = byteSum(bytes, package.packedBytes());
    for (const ExpansionFile &file : d->expansions)
        bytes = byteSum(bytes, file.packedBytes());
    return bytes;
}

qint64 SplitChoice::installedBytes() const
{
    qint64 bytes = d->libraryBytes;
    for (const SetPackage &package : d->packages)
        bytes = byteSum(bytes, package.bytes());
    for (const ExpansionFile &file : d->expansions)
        bytes = byteSum(bytes, file.bytes());
    return bytes;
}

qint64 SplitChoice::libraryBytes() const
{
    return d->libraryBytes;
}

} // namespace SorrelKit
