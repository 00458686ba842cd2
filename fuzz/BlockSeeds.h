// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BLOCKSEEDS_H
#define BLOCKSEEDS_H

#include "ZipBuilder.h"

#include <QByteArray>
#include <QVector>

/// The kinds of inputs of the harness of signing blocks, by their first byte. Any other input is a package.
enum class BlockInput : char {
    ValueV2 = 'a',  ///< the value of v2
    ValueV3 = 'b',  ///< the value of v3
    ValueV31 = 'c', ///< the value of v3.1, beside a right v3
    SignedV2 = 'd', ///< two lists that the harness signs: 2 bytes with the size of the digests, digests, attributes
    SignedV3 = 'e', ///< API levels in 8 bytes, and the same
    SignedV31 = 'f',
    Lineage = 'g',
};

/// The archive that the values and lists are put into.
QByteArray blockZip();
/// Seeds of the harness. The keys are made when this runs, so the signatures differ from run to run.
QVector<fixture::Member> blockSeeds();

#endif
