// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_EXPORT_H
#define SORRELKIT_EXPORT_H

#include <QtGlobal>

/// Marks what the library offers; everything else in it is hidden.
#ifdef SORRELKIT_BUILD
#define SORRELKIT_EXPORT Q_DECL_EXPORT
#else
#define SORRELKIT_EXPORT Q_DECL_IMPORT
#endif

#endif
