// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CONFIGURATIONTEXT_H
#define SORRELKIT_CONFIGURATIONTEXT_H

#include "format/Configuration.h"

#include <QString>

namespace SorrelKit {

/**
 * The qualifiers of @p configuration as the name of a resource directory has them, in the order of Android's manual
 * ("de-rAT-land-hdpi-v21"); empty for the default one. A locale with a script, a variant or a system of digits has its
 * BCP 47 form, with "+" and a "b" ahead ("b+sr+Latn").
 *
 * What no directory can be for is told as the name of the field and its number ("orientation=9"), so that
 * configurations that differ have different texts.
 */
QString configurationText(const Configuration &configuration);

} // namespace SorrelKit

#endif
