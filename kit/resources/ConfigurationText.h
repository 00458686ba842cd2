// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CONFIGURATIONTEXT_H
#define SORRELKIT_CONFIGURATIONTEXT_H

#include "format/Configuration.h"

#include <QString>

namespace SorrelKit {

/**
 * The qualifiers of @p configuration as in the name of a resource directory ("de-rAT-land-hdpi-v21"); empty for the
 * default configuration. A locale with a script, a variant or a system of digits is written as a BCP 47 tag, with "b"
 * in front and "+" in place of "-" ("b+sr+Latn").
 *
 * A value that no directory name can express is written as the field and its number ("orientation=9"), so different
 * configurations have different texts.
 */
QString configurationText(const Configuration &configuration);

} // namespace SorrelKit

#endif
