// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DEFAULTSTATE_H
#define SORRELKIT_DEFAULTSTATE_H

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * Whether @p item, the element `item` of a `selector` of drawables or colours, is for something that is enabled, in a
 * window that has the focus, and in no other state.
 *
 * The states of an item are its attributes that are booleans, an application's own among them: one that is true asks
 * for the state, one that is false for its absence. An item without states is for everything.
 */
bool isDefaultState(const XmlElement &item, DrawableLoader &loader);

} // namespace SorrelKit

#endif
