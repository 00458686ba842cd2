// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/Configuration.h"

#include <cstring>

namespace {

// The fields of a record. Those beyond a shorter record are 0.
class Fields
{
public:
    explicit Fields(const ByteView &record)
    {
        const ByteView known = record.part(0, qMin(qint64(record.u32(0)), qint64(sizeof m_bytes)));
        if (!known.isEmpty())
            std::memcpy(m_bytes, known.data(), size_t(known.size()));
    }

    int u8(int at) const { return m_bytes[at]; }
    int u16(int at) const { return qFromLittleEndian<quint16>(m_bytes + at); }
    // Letters and digits, up to the first other character.
    ShortText ascii(int at, int length) const
    {
        ShortText text;
        for (int i = 0; i < length && ShortText::isLetterOrDigit(char(m_bytes[at + i])); ++i)
            text.append(char(m_bytes[at + i]));
        return text;
    }
    // A language or region: two characters, or three of five bits each when the top bit is set.
    ShortText code(int at, char base) const
    {
        const int first = u8(at);
        const int second = u8(at + 1);
        if ((first & 0x80) == 0)
            return first == 0 || second == 0 ? ShortText() : ascii(at, 2);
        const int codes[] = {second & 0x1f, (second & 0xe0) >> 5 | (first & 0x03) << 3, (first & 0x7c) >> 2};
        ShortText text;
        for (const int code : codes)
            text.append(char(base + code));
        return text.isAll(ShortText::isLetterOrDigit) ? text : ShortText();
    }

private:
    uchar m_bytes[64] = {}; // more than the fields have
};

bool fits(int wanted, int actual)
{
    return wanted == 0 || wanted == actual;
}

// For qualifiers that are minimums: whether the device has at least @p wanted.
bool isReached(int wanted, int actual)
{
    return wanted == 0 || actual == 0 || wanted <= actual;
}

// 1 when only @p mine is set, -1 when only @p other is, 0 otherwise.
int specificity(int mine, int other)
{
    return int(mine != 0) - int(other != 0);
}

// A device with a keyboard on the screen also uses values for an exposed keyboard.
bool fitsKeys(int wanted, int actual)
{
    enum KeysHidden : int {
        No = 1,
        OnScreen = 3,
    };
    return fits(wanted, actual) || (wanted == No && actual == OnScreen);
}

// Positive when @p mine is the better one: a set field beats one that is not set, and then the device's own state wins.
int keysOrder(int mine, int other, int actual)
{
    const int order = specificity(mine, other);
    return order != 0 ? order : int(mine == actual) - int(other == actual);
}

// Positive when @p mine is the closer of two screen sizes, neither of which is above the device's. A size that is not
// set counts as normal, but loses to one that is set to normal.
int screenSizeOrder(int mine, int other)
{
    constexpr int Normal = 2;
    const auto effective = [](int size) { return size == 0 ? Normal : size; };
    const int order = effective(mine) - effective(other);
    return order != 0 ? order : specificity(mine, other);
}

// Positive when a picture for @p mine looks better on a screen of @p wanted than one for @p other. Scaling down looks
// better than scaling up, so the smaller density has to be twice as close.
int densityOrder(int mine, int other, int wanted)
{
    const auto effective = [](int density) {
        return density == Configuration::DefaultDensity ? int(Configuration::MediumDensity) : density;
    };
    if (mine == other)
        return 0;
    if (mine == Configuration::AnyDensity || other == Configuration::AnyDensity)
        return mine == Configuration::AnyDensity ? 1 : -1;
    mine = effective(mine);
    other = effective(other);
    if (mine == other)
        return 0;
    const qint64 high = qMax(mine, other);
    const qint64 low = qMin(mine, other);
    const bool isHigherBetter =
        wanted >= high || (wanted > low && (2 * low - wanted) * high <= qint64(wanted) * wanted);
    return isHigherBetter == (mine > other) ? 1 : -1;
}

} // namespace

Configuration Configuration::read(const ByteView &record)
{
    const Fields fields(record);
    Configuration result;
    result.mcc = fields.u16(4);
    result.mnc = fields.u16(6);
    result.language = fields.code(8, 'a').toLower();
    result.region = fields.code(10, '0').toUpper();
    result.orientation = fields.u8(12);
    result.touchscreen = fields.u8(13);
    result.density = fields.u16(14);
    result.keyboard = fields.u8(16);
    result.navigation = fields.u8(17);
    result.keysHidden = fields.u8(18) & 0x03;
    result.navHidden = (fields.u8(18) & 0x0c) >> 2;
    result.grammaticalGender = fields.u8(19) & 0x03;
    result.screenWidth = fields.u16(20);
    result.screenHeight = fields.u16(22);
    result.sdkVersion = fields.u16(24);
    result.minorVersion = fields.u16(26);
    result.screenSize = fields.u8(28) & 0x0f;
    result.screenLong = (fields.u8(28) & 0x30) >> 4;
    result.layoutDirection = (fields.u8(28) & 0xc0) >> 6;
    result.uiModeType = fields.u8(29) & 0x0f;
    result.uiModeNight = (fields.u8(29) & 0x30) >> 4;
    result.smallestScreenWidthDp = fields.u16(30);
    result.screenWidthDp = fields.u16(32);
    result.screenHeightDp = fields.u16(34);
    constexpr int ScriptWasDerivedAt = 52;
    if (fields.u8(ScriptWasDerivedAt) == 0)
        result.script = fields.ascii(36, 4);
    result.variant = fields.ascii(40, 8).toLower();
    result.numberingSystem = fields.ascii(53, 8).toLower();
    result.screenRound = fields.u8(48) & 0x03;
    result.wideColorGamut = fields.u8(49) & 0x03;
    result.hdr = (fields.u8(49) & 0x0c) >> 2;
    return result;
}

Configuration Configuration::phone(int density)
{
    Configuration device;
    device.orientation = 1; // portrait
    device.touchscreen = 3; // finger
    device.density = density;
    device.keyboard = 1;   // none
    device.keysHidden = 3; // on the screen
    device.navigation = 1; // none
    device.navHidden = 2;
    device.screenWidth = 1080;
    device.screenHeight = 2400;
    device.sdkVersion = 0xffff;
    device.screenSize = 2; // normal
    device.screenLong = 2;
    device.layoutDirection = LeftToRight;
    device.uiModeType = 1;
    device.uiModeNight = Day;
    device.smallestScreenWidthDp = 411;
    device.screenWidthDp = 411;
    device.screenHeightDp = 914;
    device.screenRound = 1;
    device.wideColorGamut = 1;
    device.hdr = 1;
    return device;
}

bool Configuration::matches(const Configuration &device) const
{
    // Densities are not compared, because pictures are scaled.
    return fits(mcc, device.mcc) && fits(mnc, device.mnc) && fits(grammaticalGender, device.grammaticalGender)
           && fits(layoutDirection, device.layoutDirection)
           && isReached(smallestScreenWidthDp, device.smallestScreenWidthDp)
           && isReached(screenWidthDp, device.screenWidthDp) && isReached(screenHeightDp, device.screenHeightDp)
           && isReached(screenSize, device.screenSize) && fits(screenLong, device.screenLong)
           && fits(screenRound, device.screenRound) && fits(wideColorGamut, device.wideColorGamut)
           && fits(hdr, device.hdr) && fits(orientation, device.orientation) && fits(uiModeType, device.uiModeType)
           && fits(uiModeNight, device.uiModeNight) && fits(touchscreen, device.touchscreen)
           && fitsKeys(keysHidden, device.keysHidden) && fits(keyboard, device.keyboard)
           && fits(navHidden, device.navHidden) && fits(navigation, device.navigation)
           && isReached(screenWidth, device.screenWidth) && isReached(screenHeight, device.screenHeight)
           && isReached(sdkVersion, device.sdkVersion);
}

bool Configuration::isBetterThan(const Configuration &other, const Configuration &device) const
{
    // Values for languages usually differ in nothing else.
    if (ConfigurationNumbers::operator==(other))
        return false;
    // Both match, so every field that is set fits the device, and the larger size or version is the closer one.
    const int order[] = {
        specificity(mcc, other.mcc),
        specificity(mnc, other.mnc),
        specificity(grammaticalGender, other.grammaticalGender),
        specificity(layoutDirection, other.layoutDirection),
        smallestScreenWidthDp - other.smallestScreenWidthDp,
        screenWidthDp + screenHeightDp - other.screenWidthDp - other.screenHeightDp,
        screenSizeOrder(screenSize, other.screenSize),
        specificity(screenLong, other.screenLong),
        specificity(screenRound, other.screenRound),
        specificity(wideColorGamut, other.wideColorGamut),
        specificity(hdr, other.hdr),
        specificity(orientation, other.orientation),
        specificity(uiModeType, other.uiModeType),
        specificity(uiModeNight, other.uiModeNight),
        densityOrder(density, other.density, device.density),
        specificity(touchscreen, other.touchscreen),
        keysOrder(keysHidden, other.keysHidden, device.keysHidden),
        specificity(navHidden, other.navHidden),
        specificity(keyboard, other.keyboard),
        specificity(navigation, other.navigation),
        screenWidth + screenHeight - other.screenWidth - other.screenHeight,
        sdkVersion - other.sdkVersion,
    };
    for (const int decision : order) {
        if (decision != 0)
            return decision > 0;
    }
    return false;
}
