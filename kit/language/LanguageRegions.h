// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LANGUAGEREGIONS_H
#define SORRELKIT_LANGUAGEREGIONS_H

namespace SorrelKit {

/// The countries whose users of a language accept the texts for another region of it, as in the Common Locale Data
/// Repository. The kit and the tools share this list.
struct LanguageRegion {
    const char *language;
    const char *region;    ///< a code of several countries, or the country that the others follow
    const char *countries; ///< separated by spaces
};

/// A country of several regions belongs to the first of them.
constexpr LanguageRegion languageRegions[] = {
    {"en", "150", "AT BE CH DE DK FI NL SE SI"},
    {"es", "419", "AR BO BR BZ CL CO CR CU DO EC GT HN MX NI PA PE PR PY SV US UY VE"},
    {"pt", "PT", "AO CH CV FR GQ GW LU MO MZ ST TL"},
    {"en", "001",
     "AG AI AT AU BB BE BM BS BW BZ CA CC CH CK CM CX CY DE DG DK DM ER FI FJ FK FM GB GD GG GH "
     "GI GM GY HK IE IL IM IN IO JE JM KE KI KN KY LC LR LS MG MO MS MT MU MV MW MY NA NF NG NL "
     "NR NU NZ PG PK PN PW RW SB SC SD SE SG SH SI SL SS SX SZ TC TK TO TT TV TZ UG VC VG VU WS "
     "ZA ZM ZW"},
};

} // namespace SorrelKit

#endif
