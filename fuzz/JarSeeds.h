// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JARSEEDS_H
#define JARSEEDS_H

#include "ZipBuilder.h"

#include <QByteArray>
#include <QVector>

/// The signature file that the blocks of the harness sign.
QByteArray jarSeedFile();
/// The members that the manifests of the harness are about.
QVector<fixture::Member> jarSeedMembers();

/// Seeds of the harness of block files. The keys are made when this runs, so the signatures differ from run to run.
QVector<fixture::Member> signatureBlockSeeds();
/// Seeds of the harness of manifests: a manifest and a signature file, with a byte of 0 between them.
QVector<fixture::Member> jarManifestSeeds();

#endif
