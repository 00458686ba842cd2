// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCECONFIG_H
#define RESOURCECONFIG_H

#include <SorrelExport.h>

#include <QString>

class Extractor;

/**
 * The configuration of a type chunk (see Configuration for the record). A shorter record, as older tools wrote it, ends
 * between two groups of fields. Fields from the script on, and the minor version, are not kept.
 *
 * A plain value. 0 in a field means any; fields hold what was read, sign-extended from their width.
 */
class ResourceConfig
{
public:
    /**
     * Reads a record at the reader's position, and consumes all of it. Fields beyond a short record are 0; all are when
     * the reader had failed after the size was read.
     */
    SORREL_EXPORT void load(Extractor *reader);

    /**
     * The locale: language in lower case, then "-" and the country in upper case if set ("de", "pt-BR"). A null string
     * without a language. Languages of three letters, which the format packs into two bytes, are garbled.
     */
    SORREL_EXPORT QString locale() const;

    /**
     * The qualifiers as in the names of resource directories ("en-rUS-land-hdpi"), without the densities, sizes and
     * modes that Android added later; an empty string for the default configuration. A density of 0xffff was read as
     * -1, and prints nothing instead of "nodpi", which is kept on purpose.
     */
    SORREL_EXPORT QString toString() const;

    /// Whether every field is equal.
    SORREL_EXPORT bool operator==(const ResourceConfig &other) const;

    int mcc = 0;
    int mnc = 0;
    char language[2] = {0, 0};
    char country[2] = {0, 0};
    int orientation = 0;
    int touchscreen = 0;
    int density = 0;
    int keyboard = 0;
    int navigation = 0;
    int keysHidden = 0;
    int navHidden = 0;
    int screenWidth = 0;
    int screenHeight = 0;
    int sdkVersion = 0;
    int screenSize = 0;
    int screenLong = 0;
    int layoutDirection = 0;
    int uiModeType = 0;
    int uiModeNight = 0;
    int smallestScreenWidthDp = 0;
    int screenWidthDp = 0;
    int screenHeightDp = 0;
};

#endif
