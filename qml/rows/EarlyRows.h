// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_EARLYROWS_H
#define SORRELQML_EARLYROWS_H

#include "rows/ShelfRow.h"

#include <optional>

namespace SorrelQml {

/**
 * The rows of this user's index, which are read in a thread while the engine still loads QML files. Most programs show
 * them, and reading them takes as long as making the objects of a window. A program that shows another index loses some
 * milliseconds of a processor that would be idle.
 */
namespace EarlyRows {

/// Rows that nobody took after this time are read again.
constexpr int MaxAgeMilliseconds = 2000;

/// Starts to read the index Shelf::defaultFileName() for the default locale, in the global thread pool. Does nothing in a
/// process without an application, which would end that pool. May be called in any thread.
void start();
/// The rows for @p request of the index @p fileName, once after start(). Waits for the thread. Nothing, when there are
/// none for that index and request, or when the index could not be read. @p fileName is that of an open index.
std::optional<ShelfRows> take(const QString &fileName, const RowRequest &request);

} // namespace EarlyRows

} // namespace SorrelQml

#endif
