#include <cli/values/DisplayOptions.h>

#include <cli/terminal/CommandLine.h>

#include <algorithm>
#include <iterator>

namespace KelStd::cli {

namespace {

constexpr AngleStyle angleStyles[] = {
    {"dms", Format_DegreeMinuteSecond, "dms", 6},
    {"degree", Format_Degree, "deg", 10},
    {"second", Format_Second, "arcsec", 6},
    {"radian", Format_Radian, "rad", 12},
};

constexpr LengthUnit lengthUnits[] = {
    {"m", Unit_Meter},
    {"ft", Unit_Foot},
    {"us-ft", Unit_USFoot},
};

struct FormRow
{
    const char *option;
    DisplayOptions::Form form;
};

constexpr FormRow forms[] = {
    {"configured", DisplayOptions::Form::Configured},
    {"exact", DisplayOptions::Form::Exact},
};

const QString formatOption = QStringLiteral("format");
const QString precisionOption = QStringLiteral("precision");
const QString angleOption = QStringLiteral("angle");
const QString lengthUnitOption = QStringLiteral("length-unit");

template <typename Rows>
QString namesOf(const Rows &rows, const QString &separator)
{
    QStringList names;
    for (const auto &row : rows)
        names += QString::fromLatin1(row.option);
    return names.join(separator);
}

template <typename Rows>
auto findIn(const Rows &rows, const QString &option) -> decltype(std::begin(rows))
{
    const auto found = std::find_if(std::begin(rows), std::end(rows), [&](const auto &row) {
        return QLatin1String(row.option) == option;
    });
    return found != std::end(rows) ? found : nullptr;
}

/// The row that an option names; null when it is not given, and with a `mistake` when it names
/// none.
template <typename Rows>
auto rowFrom(const CommandLine &line, const QString &option, const Rows &rows, const char *kind,
             QString &mistake) -> decltype(std::begin(rows))
{
    if (!line.isSet(option))
        return nullptr;
    const QString name = line.value(option);
    const auto row = findIn(rows, name);
    if (row == nullptr && mistake.isEmpty()) {
        mistake =
            QStringLiteral("--%1 '%2' is no %3; there are %4")
                .arg(option, name, QString::fromLatin1(kind), namesOf(rows, QStringLiteral(", ")));
    }
    return row;
}

/// "N" or "N,M".
bool readPrecision(const QString &text, DisplayOptions &options)
{
    const QStringList numbers = text.split(QLatin1Char(','));
    if (numbers.size() > 2)
        return false;
    int decimals[2] = {};
    for (int i = 0; i < numbers.size(); ++i) {
        bool ok = false;
        decimals[i] = numbers.at(i).toInt(&ok);
        if (!ok || decimals[i] < 0 || decimals[i] > DisplayOptions::mostDecimals)
            return false;
    }
    options.lengthDecimals = decimals[0];
    options.angleDecimals = decimals[numbers.size() - 1];
    return true;
}

} // namespace

const AngleStyle *findAngleStyle(const QString &option)
{
    return findIn(angleStyles, option);
}

const AngleStyle *findAngleStyle(EFormat format)
{
    const auto found =
        std::find_if(std::begin(angleStyles), std::end(angleStyles),
                     [format](const AngleStyle &style) { return style.format == format; });
    return found != std::end(angleStyles) ? found : nullptr;
}

const LengthUnit *findLengthUnit(const QString &option)
{
    return findIn(lengthUnits, option);
}

QString unitSymbol(EUnit unit)
{
    for (const LengthUnit &row : lengthUnits) {
        if (row.unit == unit)
            return QString::fromLatin1(row.option);
    }
    // Nobody asks for it on the command line, but an application's configuration may have it.
    return unit == Unit_MilliMeter ? QStringLiteral("mm") : QString();
}

QString angleStyleNames(const QString &separator)
{
    return namesOf(angleStyles, separator);
}

const AngleStyle &defaultAngleStyle()
{
    return angleStyles[0];
}

const LengthUnit &defaultLengthUnit()
{
    return lengthUnits[0];
}

void DisplayOptions::addTo(CommandLine &line)
{
    line.addOption({formatOption,
                    QStringLiteral("How numbers are printed: configured, as the library\n"
                                   "shows values in tables, or exact, decimal degrees\n"
                                   "and metres that read back to the same numbers."),
                    namesOf(forms, QStringLiteral("|"))});
    line.addOption({precisionOption,
                    QStringLiteral("Decimals, 0 to %1; N,M when angles (M) have others\n"
                                   "than lengths.")
                        .arg(mostDecimals),
                    QStringLiteral("N[,M]")});
    line.addOption({angleOption,
                    QStringLiteral("The style of longitudes and latitudes:\n%1.")
                        .arg(angleStyleNames(QStringLiteral(", "))),
                    QStringLiteral("STYLE")});
    line.addOption({lengthUnitOption,
                    QStringLiteral("The unit of all lengths: m, ft (0.3048 m) or\n"
                                   "us-ft (1200/3937 m)."),
                    QStringLiteral("UNIT")});
}

std::optional<DisplayOptions> DisplayOptions::from(const CommandLine &line, QString &mistake)
{
    DisplayOptions options;
    if (const auto row = rowFrom(line, formatOption, forms, "format", mistake))
        options.form = row->form;
    options.angleStyle = rowFrom(line, angleOption, angleStyles, "style of angles", mistake);
    options.lengthUnit = rowFrom(line, lengthUnitOption, lengthUnits, "unit of lengths", mistake);
    const bool hasPrecision = line.isSet(precisionOption);
    const QString precision = line.value(precisionOption);
    if (hasPrecision && mistake.isEmpty() && !readPrecision(precision, options)) {
        mistake = QStringLiteral("--precision '%1' is not N or N,M with numbers from 0 to %2")
                      .arg(precision)
                      .arg(mostDecimals);
    }
    if (mistake.isEmpty() && options.form == Form::Exact
        && (hasPrecision || options.angleStyle != nullptr || options.lengthUnit != nullptr)) {
        mistake = QStringLiteral("--format exact prints all digits of decimal degrees and metres; "
                                 "it excludes --precision, --angle and --length-unit");
    }
    return mistake.isEmpty() ? std::optional(options) : std::nullopt;
}

} // namespace KelStd::cli
