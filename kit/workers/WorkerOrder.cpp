// SPDX-License-Identifier: LGPL-2.1-or-later
#include "workers/WorkerOrder.h"

namespace {

constexpr int ContentArguments = 6;
const QByteArray noIcons("-"); // an argument is never empty

QByteArray flag(bool isSet)
{
    return isSet ? "1" : "0";
}

} // namespace

QList<QByteArray> WorkerOrder::arguments() const
{
    return {
        "worker",
        flag(includesDisabled),
        QByteArray::number(iconSize),
        QByteArray::number(iconMask),
        flag(includesLint),
        flag(lintDrawsIcons),
        flag(includesSignatures),
        launcherIcons.isEmpty() ? noIcons : launcherIcons,
        QByteArray::number(maxMemory),
        QByteArray::number(maxSeconds),
        QByteArray::number(parent),
    };
}

WorkerOrder WorkerOrder::fromArguments(const QStringList &arguments)
{
    WorkerOrder order;
    order.includesDisabled = arguments.at(0).toInt() != 0;
    order.iconSize = arguments.at(1).toInt();
    order.iconMask = arguments.at(2).toInt();
    order.includesLint = arguments.at(3).toInt() != 0;
    order.lintDrawsIcons = arguments.at(4).toInt() != 0;
    order.includesSignatures = arguments.at(5).toInt() != 0;
    order.launcherIcons = arguments.at(6).toLatin1();
    if (order.launcherIcons == noIcons)
        order.launcherIcons.clear();
    order.maxMemory = arguments.at(7).toLongLong();
    order.maxSeconds = arguments.at(8).toDouble();
    order.parent = arguments.at(9).toLongLong();
    return order;
}

QByteArray WorkerOrder::content() const
{
    return arguments().mid(1, ContentArguments).join(' ');
}
