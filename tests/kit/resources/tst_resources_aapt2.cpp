// SPDX-License-Identifier: LGPL-2.1-or-later

// Compares the kit's answers about the resources of packages with the output of `aapt2 dump resources`. Answers are
// written in the form of aapt2 and compared as texts. The comparison accepts these differences of spelling:
//
// - aapt2 prints dimensions, fractions and floats with six decimals, the kit with as many as needed; aapt2 prints 1 for
//   a fraction of 100%, and prints negative dimensions and fractions as large positive ones;
// - aapt2 prints hexadecimal numbers with eight digits, the kit with as many as needed;
// - aapt2 sorts values by their configurations, and items by their names; the kit keeps the order of the table;
// - aapt2 prints the placeholders that optimizers write instead of names; the kit treats them as missing names;
// - aapt2 indents the lines of a text that has several, and does not print the bounds of an attribute;
// - aapt2 marks files and styled texts, prints a file's type, and prints the styles of a text.

#include "ResourcesFixture.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <utility>

using namespace fixture;
using namespace SorrelKit;

namespace {

/// A resource in the output of aapt2: its name, and the lines of each value, by configuration.
struct Printed {
    QString name;
    QMap<QString, QString> values;
};

using PrintedTable = QMap<quint32, Printed>;

PrintedTable dump(const QString &file, QString *error)
{
    QProcess aapt2;
    aapt2.start(QStringLiteral(SORREL_AAPT2), {latin("dump"), latin("resources"), file});
    if (!aapt2.waitForFinished(60000) || aapt2.exitCode() != 0) {
        *error = QStringLiteral(SORREL_AAPT2) + latin(": ") + aapt2.errorString();
        return {};
    }
    const QRegularExpression nameLine(latin("^    resource 0x([0-9a-f]{8}) (\\S+)(?: PUBLIC)?$"));
    const QRegularExpression valueLine(latin("^      \\(([^() ]*)\\) (.*)$"));
    const QRegularExpression typeLine(latin("^  type \\S+ id=[0-9a-f]{2}.* entryCount=[0-9]+$"));
    PrintedTable table;
    Printed *resource = nullptr;
    QString *value = nullptr;
    QString output = QString::fromUtf8(aapt2.readAllStandardOutput());
    output.chop(1); // the newline of the last line
    // aapt2 prints no newline after an empty array.
    output.replace(latin("size=0\n        [resource 0x"), latin("size=0\n    resource 0x"));
    output.replace(latin("size=0\n        [type "), latin("size=0\n  type "));
    output.replace(latin("size=0\n        [("), latin("size=0\n      ("));
    for (const QString &line : output.split(QLatin1Char('\n'))) {
        if (const auto name = nameLine.match(line); name.hasMatch()) {
            resource = &table[name.captured(1).toUInt(nullptr, 16)];
            resource->name = name.captured(2);
            value = nullptr;
        } else if (const auto start = valueLine.match(line); start.hasMatch() && resource != nullptr) {
            value = &resource->values[start.captured(1)];
            *value = start.captured(2);
        } else if (typeLine.match(line).hasMatch()) {
            value = nullptr;
        } else if (value != nullptr) {
            // A further line of a text or of a map.
            *value += QLatin1Char('\n') + line;
        }
    }
    return table;
}

bool areNear(const QString &mine, const QString &theirs, double factor)
{
    constexpr double signs[] = {1 << 24, 1 << 17, 1 << 9, 1 << 1};
    bool isNumber = false;
    bool isTheirs = false;
    const double left = mine.toDouble(&isNumber);
    const double right = theirs.toDouble(&isTheirs) * factor;
    // A step of the sixth decimal, or of the sixth digit.
    const auto isNear = [&](double other) { return qAbs(left - other) <= qMax(1e-6 * factor, 1e-5 * qAbs(other)); };
    // The weight of the sign bit depends on the position of the point.
    const bool isNegative = left < 0 && std::any_of(std::begin(signs), std::end(signs), [&](double sign) {
                                return isNear(right - sign * factor);
                            });
    return isNumber && isTheirs && (isNear(right) || isNegative);
}

/// Compares texts of values without items. Texts of items have the same form.
bool isSame(const QString &type, QString mine, QString theirs)
{
    static const QRegularExpression indent(latin("\n +"));
    static const QRegularExpression number(latin("^(-?[0-9.e+-]+|-?inf|nan)(.*)$"));
    static const QRegularExpression styled(latin("^\\(styled string\\) (\".*\")(?: .*)?$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression file(latin("^\\(file\\) (.*?)(?: type=[A-Za-z]+)?$"));
    static const QRegularExpression hidden(latin("^([@?][a-z]+/)0_resource_name_obfuscated$"));
    static const QRegularExpression byNumber(latin("^([@?][a-z]+/)[0-9]+$"));
    if (type == QLatin1String("string")) {
        theirs.replace(indent, latin("\n"));
        mine.replace(indent, latin("\n"));
        const QString quoted = QLatin1Char('"') + mine + QLatin1Char('"');
        if (const auto match = file.match(theirs); match.hasMatch())
            return match.captured(1) == mine;
        if (theirs.startsWith(latin("(styled string) ")))
            return theirs.startsWith(latin("(styled string) ") + quoted);
        return theirs == quoted;
    }
    if (type == QLatin1String("dimension") || type == QLatin1String("fraction") || type == QLatin1String("float")) {
        const auto left = number.match(mine);
        const auto right = number.match(theirs);
        return left.captured(2) == right.captured(2)
               && areNear(left.captured(1), right.captured(1), type == QLatin1String("fraction") ? 100 : 1);
    }
    if (type == QLatin1String("integer") && mine.startsWith(latin("0x")))
        return theirs.startsWith(latin("0x")) && theirs.toUInt(nullptr, 16) == mine.toUInt(nullptr, 16);
    if (const auto match = hidden.match(theirs); match.hasMatch())
        return byNumber.match(mine).captured(1) == match.captured(1);
    return mine == theirs;
}

QString hexadecimal(quint32 id)
{
    return QStringLiteral("0x%1").arg(id, 8, 16, QLatin1Char('0'));
}

/// Compares the values of one package. Returns their number, and lists the differences in `differences`.
class Comparison
{
public:
    Comparison(const Resources &resources, const PrintedTable &printed) : m_resources(resources), m_printed(printed) {}

    int compare()
    {
        int count = 0;
        const QList<quint32> ids = m_resources.ids();
        if (ids != valued())
            differences.append(QStringLiteral("%1 resources, and %2").arg(ids.size()).arg(valued().size()));
        for (const quint32 id : ids) {
            const Printed &theirs = m_printed[id];
            const QList<SorrelKit::ResourceValue> values = m_resources.values(id);
            compareNames(id, theirs.name);
            if (values.size() != theirs.values.size())
                tell(id, QString::number(values.size()), QString::number(theirs.values.size()));
            for (const SorrelKit::ResourceValue &value : values) {
                ++count;
                const auto match = theirs.values.constFind(value.configuration());
                if (match == theirs.values.cend())
                    tell(id, value.configuration(), latin("no such configuration"));
                else if (value.type() == SorrelKit::ResourceValue::Type::Map)
                    compareMap(id, value, *match);
                else if (!isSameValue(id, value, *match))
                    tell(id, value.text(), *match);
            }
        }
        return count;
    }

    QStringList differences;

private:
    // aapt2 lists resources without values, too.
    QList<quint32> valued() const
    {
        QList<quint32> ids;
        for (auto resource = m_printed.cbegin(); resource != m_printed.cend(); ++resource) {
            if (!resource->values.isEmpty())
                ids.append(resource.key());
        }
        return ids;
    }

    void tell(quint32 id, const QString &mine, const QString &theirs)
    {
        differences.append(hexadecimal(id) + latin(": ") + mine + latin(" and ") + theirs);
    }

    void compareNames(quint32 id, QString theirs)
    {
        theirs.replace(latin("/0_resource_name_obfuscated"), QStringLiteral("/%1").arg(id & 0xffff));
        if (m_resources.name(id) != theirs)
            tell(id, m_resources.name(id), theirs);
    }

    // aapt2 prints an id only as such. The type that stores it does not matter.
    bool isSameValue(quint32 id, const SorrelKit::ResourceValue &value, const QString &theirs) const
    {
        const bool isId = m_resources.name(id).startsWith(latin("id/")) && theirs == latin("(id)");
        return isId || isSame(value.typeName(), value.text(), theirs);
    }

    void compareMap(quint32 id, const SorrelKit::ResourceValue &value, const QString &theirs)
    {
        const QString kind = theirs.section(QLatin1Char(')'), 0, 0).mid(1);
        bool isEqual = false;
        if (kind == QLatin1String("array"))
            isEqual = isSameArray(value, theirs);
        else if (kind == QLatin1String("plurals"))
            isEqual = isSameList(value, theirs,
                                 [](const SorrelKit::ResourceItem &item) { return item.name() + QLatin1Char('='); });
        else if (kind == QLatin1String("style"))
            isEqual = theirs.section(QLatin1Char('\n'), 0, 0) == styleLine(value)
                      && isSameList(value, theirs,
                                    [this](const SorrelKit::ResourceItem &item) { return attributeName(item); });
        else if (kind == QLatin1String("attr"))
            isEqual = isSameAttribute(value, theirs);
        if (!isEqual)
            tell(id, value.configuration() + QStringLiteral(" with %1 items").arg(value.items().size()), theirs);
    }

    // "name(0xid)=", or "0xid=" for an attribute that is missing in the table.
    QString attributeName(const SorrelKit::ResourceItem &item) const
    {
        const quint32 id = m_resources.find(item.name());
        return id == 0 ? item.name() + QLatin1Char('=')
                       : QStringLiteral("%1(%2)=").arg(item.name().section(QLatin1Char('/'), 1), hexadecimal(id));
    }

    QString styleLine(const SorrelKit::ResourceValue &value) const
    {
        QString line = QStringLiteral("(style) size=%1").arg(value.items().size());
        const QString parent = value.text().mid(1);
        const quint32 id = m_resources.find(parent);
        if (id != 0 && !parent.startsWith(latin("0x")))
            line += QStringLiteral(" parent=%1 (%2)").arg(parent, hexadecimal(id));
        else if (!parent.isEmpty())
            line += latin(" parent=") + parent;
        return line;
    }

    // One item a line, in any order. A text of several lines ends where the next item begins.
    template <typename Prefix>
    bool isSameList(const SorrelKit::ResourceValue &value, const QString &theirs, Prefix prefix) const
    {
        const QString indent = QStringLiteral("\n        ");
        const int start = int(theirs.indexOf(indent));
        QStringList lines = start < 0 ? QStringList() : theirs.mid(start + indent.size()).split(indent);
        for (const SorrelKit::ResourceItem &item : value.items()) {
            const QString begin = prefix(item);
            const auto found = std::find_if(lines.cbegin(), lines.cend(), [&](const QString &line) {
                return line.startsWith(begin) && isSame(item.typeName(), item.text(), line.mid(begin.size()));
            });
            if (found == lines.cend())
                return false;
            lines.removeAt(int(found - lines.cbegin()));
        }
        return lines.isEmpty();
    }

    static bool isSameArray(const SorrelKit::ResourceValue &value, const QString &theirs)
    {
        QString rest = theirs;
        const auto skip = [&rest](const QString &text) {
            const bool isThere = rest.startsWith(text);
            rest.remove(0, isThere ? text.size() : 0);
            return isThere;
        };
        bool isEqual = skip(QStringLiteral("(array) size=%1").arg(value.items().size()));
        if (value.items().isEmpty())
            return isEqual && rest.isEmpty();
        isEqual = isEqual && skip(latin("\n        ["));
        for (int i = 0; i < value.items().size() && isEqual; ++i) {
            const SorrelKit::ResourceItem &item = value.items().at(i);
            const bool isString = item.type() == SorrelKit::ResourceValue::Type::String;
            // Only the text itself shows where it ends.
            const int end =
                isString ? int(item.text().size()) + 2 : int(rest.indexOf(QRegularExpression(latin("[],]"))));
            isEqual = item.name() == QString::number(i) && isSame(item.typeName(), item.text(), rest.left(end));
            rest.remove(0, end);
            skip(latin(", "));
            skip(latin("\n         "));
        }
        return isEqual && rest == latin("]");
    }

    bool isSameAttribute(const SorrelKit::ResourceValue &value, const QString &theirs) const
    {
        static const char *const words[] = {"reference", "string", "integer",   "boolean",
                                            "color",     "float",  "dimension", "fraction"};
        QStringList types;
        QString line = latin("(attr) type=");
        QStringList symbols;
        for (const SorrelKit::ResourceItem &item : value.items()) {
            const quint32 bits = item.text().toUInt();
            if (item.name() == latin("type")) {
                for (int i = 0; i < 8; ++i) {
                    if ((bits >> i & 1) != 0)
                        types.append(latin(words[i]));
                }
                if ((bits & 0x10000) != 0)
                    types.append(latin("enum"));
                if ((bits & 0x20000) != 0)
                    types.append(latin("flags"));
                if ((bits & 0xff) == 0xff)
                    types = QStringList{latin("any")} + types.mid(8);
            } else if (item.name().startsWith(latin("id/"))) {
                symbols.append(QStringLiteral("%1(%2)=%3")
                                   .arg(item.name().mid(3), hexadecimal(m_resources.find(item.name())),
                                        hexadecimal(quint32(item.text().toLongLong(nullptr, 0)))));
            }
        }
        QStringList lines = theirs.split(latin("\n        "));
        const QString size = symbols.isEmpty() ? QString() : QStringLiteral(" size=%1").arg(symbols.size());
        const QString first = lines.takeFirst();
        lines.sort();
        symbols.sort();
        return first == line + types.join(QLatin1Char('|')) + size && lines == symbols;
    }

    const Resources &m_resources;
    const PrintedTable m_printed;
};

} // namespace

class TestResourcesAapt2 : public QObject
{
    Q_OBJECT

private slots:
    void packagesAreToldTheSame_data();
    void packagesAreToldTheSame();
    void qualifiersAreSpelledTheSame();
};

void TestResourcesAapt2::packagesAreToldTheSame_data()
{
    QTest::addColumn<QString>("file");
    const QDir samples(QStringLiteral(SORREL_SAMPLES_DIR));
    const QStringList files = samples.entryList({latin("*.apk")});
    QVERIFY(files.size() > 8);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << samples.filePath(file);
    QTest::newRow("the platform's own") << QStringLiteral(SORREL_FRAMEWORK_RES);
}

void TestResourcesAapt2::packagesAreToldTheSame()
{
    QFETCH(QString, file);
    QString error;
    const PrintedTable printed = dump(file, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    const Resources resources{Package(file)};
    Comparison comparison(resources, printed);
    QVERIFY(comparison.compare() > 1);
    const QString told = QStringList(comparison.differences.mid(0, 10)).join(QLatin1Char('\n'));
    QVERIFY2(comparison.differences.isEmpty(),
             qPrintable(QStringLiteral("%1 differences\n").arg(comparison.differences.size()) + told));
    QVERIFY(resources.isComplete());
}

void TestResourcesAapt2::qualifiersAreSpelledTheSame()
{
    // Each field by itself, with every number that has a name, and one more.
    QVector<QByteArray> records;
    const auto fields = [&records](int at, int shift, int count) {
        for (int number = 1; number <= count; ++number)
            records.append(ConfigBuilder().u8(at, number << shift).build());
    };
    fields(12, 0, 3);
    fields(13, 0, 3);
    fields(16, 0, 3);
    fields(17, 0, 4);
    fields(18, 0, 3);
    fields(18, 2, 2);
    fields(28, 0, 4);
    fields(28, 4, 2);
    fields(28, 6, 2);
    fields(29, 4, 2);
    fields(48, 0, 2);
    fields(49, 0, 2);
    fields(49, 2, 2);
    for (const int type : {2, 3, 4, 5, 6, 7})
        records.append(ConfigBuilder().u8(29, type).build());
    for (const int density : {1, 120, 160, 213, 240, 320, 480, 640, 700, 0xfffe, 0xffff})
        records.append(ConfigBuilder().density(density).build());
    for (const int at : {30, 32, 34})
        records.append(ConfigBuilder().u16(at, 480).build());
    records.append(ConfigBuilder().mcc(310).mnc(4).build());
    records.append(ConfigBuilder().locale("de", "AT").orientation(2).density(240).sdkVersion(21).build());
    records.append(ConfigBuilder().u16(20, 1280).u16(22, 720).build());
    records.append(ConfigBuilder().sdkVersion(21).u16(26, 3).build());
    records.append(ConfigBuilder().locale("\xad\x05").build());
    records.append(ConfigBuilder().locale("es", "\xa4\x24").build());

    PackageBuilder builder;
    builder.types(names({"integer"})).keys(names({"it"}));
    for (const QByteArray &record : std::as_const(records))
        builder.type(TypeBuilder(1, record).value(0, Integer, 1));
    const QTemporaryDir directory;
    const QString file = directory.filePath(latin("qualifiers.apk"));
    QFile out(file);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(package(TableBuilder().strings({}).package(builder).build(), smallManifest()));
    out.close();

    QString error;
    const PrintedTable printed = dump(file, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    const QStringList theirs = printed.value(0x7f010000).values.keys();
    QStringList mine;
    for (const SorrelKit::ResourceValue &value : Resources(Package(file)).values(0x7f010000))
        mine.append(value.configuration());
    QCOMPARE(mine.size(), records.size());
    mine.sort();
    QCOMPARE(mine, theirs);
}

QTEST_GUILESS_MAIN(TestResourcesAapt2)
#include "tst_resources_aapt2.moc"
