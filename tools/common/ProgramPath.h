// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROGRAMPATH_H
#define PROGRAMPATH_H

#include <QByteArray>

/// The path of this process's program, in the bytes of the system; empty when it cannot be read. Unlike that of
/// QCoreApplication, it needs no object of that class.
QByteArray programPath();

#endif
