// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDNAMESPACE_H
#define ANDROIDNAMESPACE_H

#include <QString>

/// The namespace URI that Android's build tools bind to the prefix `android`, in manifests and other resources.
extern const QString androidNamespace;

#endif
