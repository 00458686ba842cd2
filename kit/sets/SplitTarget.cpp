// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/SplitTarget.h"

#include "format/Configuration.h"

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

struct AbiSuffix {
    const char *suffix;
    const char *abi;
};
// A name goes before those that it begins with.
constexpr AbiSuffix AbiSuffixes[] = {
    {"armeabi_v7a", "armeabi-v7a"},
    {"armeabi", "armeabi"},
    {"arm64_v8a", "arm64-v8a"},
    {"x86_64", "x86_64"},
    {"x86", "x86"},
    {"mips64", "mips64"},
    {"mips", "mips"},
    {"riscv64", "riscv64"},
};

struct DensityName {
    const char *name;
    int density;
};
constexpr DensityName DensityNames[] = {
    {"ldpi", 120},
    {"mdpi", 160},
    {"tvdpi", 213},
    {"hdpi", 240},
    {"xhdpi", 320},
    {"xxhdpi", 480},
    {"xxxhdpi", 640},
    {"anydpi", Configuration::AnyDensity},
    {"nodpi", Configuration::NoDensity},
};

const QLatin1String FallbackName("other_lang");

// Whether the parts of @p text begin with the part @p name.
bool startsWithPart(const QString &text, const QString &name)
{
    return text.startsWith(name) && (text.size() == name.size() || text.at(name.size()) == QLatin1Char('_'));
}

// The density that @p part names; 0 when it names none.
int densityOf(const QString &part)
{
    const auto *const found = std::find_if(std::begin(DensityNames), std::end(DensityNames),
                                           [&](const DensityName &each) { return part == QLatin1String(each.name); });
    if (found != std::end(DensityNames))
        return found->density;
    const int number = part.endsWith(QLatin1String("dpi")) ? part.chopped(3).toInt() : 0;
    return number > 0 && number < Configuration::AnyDensity ? number : 0;
}

// The language in @p part ("de", "zh-rTW", "b+sr+Latn"); empty when it is none.
QString languageOf(QString part)
{
    if (part.startsWith(QLatin1String("b+")))
        part.remove(0, 2);
    int letters = 0;
    while (letters < part.size() && part.at(letters) >= QLatin1Char('a') && part.at(letters) <= QLatin1Char('z'))
        ++letters;
    const bool isWhole =
        letters == part.size() || part.at(letters) == QLatin1Char('-') || part.at(letters) == QLatin1Char('+');
    return (letters == 2 || letters == 3) && isWhole ? part.left(letters) : QString();
}

} // namespace

SplitTarget SplitTarget::of(const QString &splitName, const QString &path)
{
    SplitTarget target;
    QString file = path.section(QLatin1Char('/'), -1);
    file.chop(int(QLatin1String(".apk").size()));
    const int dash = int(file.indexOf(QLatin1Char('-')));
    const QString name = !splitName.isEmpty()                       ? splitName
                         : file.startsWith(QLatin1String("split_")) ? file.mid(6)
                                                                    : file;
    const int config = int(name.lastIndexOf(QLatin1String("config.")));
    if (config == 0 || (config > 0 && name.at(config - 1) == QLatin1Char('.'))) {
        target.module = config > 0 ? name.left(config - 1) : QStringLiteral("base");
        target.isConfiguration = true;
        target.readQualifiers(name.mid(config + 7));
    } else if (!splitName.isEmpty()) {
        target.module = splitName;
    }
    if (file == QLatin1String("universal") || file == QLatin1String("standalone")
        || file.startsWith(QLatin1String("standalone-")))
        target.isStandalone = splitName.isEmpty();
    if (dash > 0 && (!splitName.isEmpty() || !target.isConfiguration)) {
        SplitTarget ofFile;
        ofFile.readQualifiers(file.mid(dash + 1));
        target.variant = ofFile.variant;
        const bool isMaster = startsWithPart(file.mid(dash + 1), QStringLiteral("master"));
        if (splitName.isEmpty()) {
            ofFile.module = file.left(dash);
            ofFile.isStandalone = target.isStandalone;
            ofFile.isConfiguration = !target.isStandalone && !isMaster;
            target = ofFile;
        }
    } else if (splitName.isEmpty() && file.compare(QLatin1String("base"), Qt::CaseInsensitive) == 0) {
        target.module = QStringLiteral("base");
    }
    return target;
}

void SplitTarget::readQualifiers(QString text)
{
    while (!text.isEmpty()) {
        const auto *const abi =
            std::find_if(std::begin(AbiSuffixes), std::end(AbiSuffixes),
                         [&](const AbiSuffix &each) { return startsWithPart(text, QString::fromLatin1(each.suffix)); });
        QString part = text.section(QLatin1Char('_'), 0, 0);
        bool isNumber = false;
        const int number = part.toInt(&isNumber);
        if (abi != std::end(AbiSuffixes)) {
            part = QString::fromLatin1(abi->suffix);
            abis.append(QString::fromLatin1(abi->abi));
        } else if (startsWithPart(text, FallbackName)) {
            part = FallbackName;
            isFallback = true;
        } else if (isNumber) {
            variant = qMax(1, number);
        } else if (densityOf(part) != 0) {
            densities.append(densityOf(part));
        } else if (!languageOf(part).isEmpty() && !languages.contains(languageOf(part))) {
            languages.append(languageOf(part));
        }
        text.remove(0, part.size() + 1);
    }
}

} // namespace SorrelKit
