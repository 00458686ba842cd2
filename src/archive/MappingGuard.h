// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MAPPINGGUARD_H
#define MAPPINGGUARD_H

#include <QtGlobal>

/**
 * Keeps the process alive when a mapped file shrinks.
 *
 * The kernel sends SIGBUS to a process that reads a mapped page beyond the end of its file, and the file may be cut at
 * any time. The guard handles that signal: it replaces the pages of the mapping from there on by pages of zeros, and
 * the read goes on. Readers of formats then find damaged content. A signal for any other address goes to the handler
 * that was there before, so crash reporters work as they did.
 *
 * The handler is installed when the first mapping is guarded, and stays. When another part of the program replaces it,
 * nothing is guarded any more, and callers have to copy. All functions may be called from any thread.
 */
namespace MappingGuard {

/// Mappings that are guarded at the same time.
constexpr int MaxMappings = 64;

/// Guards the @p size bytes at @p begin, both multiples of the page size, and returns a number for release(). -1 when
/// they cannot be guarded: too many are, or the handler was replaced.
int guard(const void *begin, quint64 size);
/// Ends the guard @p number; the mapping is removed after it.
void release(int number);

} // namespace MappingGuard

#endif
