// SPDX-License-Identifier: LGPL-2.1-or-later
#include "document/AndroidNamespace.h"

const QString androidNamespace = QStringLiteral("http://schemas.android.com/apk/res/android");
