#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace KelStd {

class Coord;
class Pos;

/// Texts and units: symbols, conversions, file words, descriptions, formatted and parsed values.
///
/// Numbers never depend on the locale; descriptions and plain-text symbols are translated in the
/// context "QObject". Two kinds of exception are raised, as the contract has them:
///
/// - by value, a `std::exception` with an empty `what()`: a length unit without a factor;
/// - by pointer, a `std::exception *` to an object on the heap, which the catcher deletes: a unit
///   without a PROJ word ("Error unit for proj4"), a time where none may stand
///   ("No Time Value In Coordinate").
///
/// Every operation may be called on any thread. Those that use the display configuration want it
/// unchanged meanwhile.
class KELSTD_EXPORT CoordStringHelper
{
public:
    CoordStringHelper() = delete;

    /// \name Units
    /// \{

    /// The symbol of a unit ("m", "U.S ft", "°"), empty for a unit without one. The pascal's is
    /// "par", deliberately.
    static QString Unit_to_String(EUnit unit);

    /// The unit word that PROJ definitions are given: "m", and, deliberately, "in" for the foot and
    /// "us-in" for the US survey foot.
    /// \throws std::exception* "Error unit for proj4" for any other unit
    static QString Unit_to_Proj4String(EUnit unit);

    /// Metres per unit.
    /// \throws std::exception for a unit without a factor
    static double LengthRatio_otherToMeter(EUnit unit);

    /// Through the metre, also between equal units.
    /// \throws std::exception for a unit without a factor, even when it is converted to itself
    static double ConvertUnit_Length(double value, EUnit from, EUnit to);

    /// Degrees and arc seconds; every other pair returns `value` unchanged.
    static double ConvertUnit_Angle(double value, EUnit from, EUnit to);

    /// By a fixed matrix of factors that are not reciprocal in their last digits, deliberately; a
    /// pair outside the matrix returns `value` unchanged.
    static double ConvertUnit_Pressure(double value, EUnit from, EUnit to);

    /// Celsius, Fahrenheit and kelvin; every other pair returns `value` unchanged.
    static double ConvertUnit_Temprature(double value, EUnit from, EUnit to);

    static QString SpecialSymbol_Degree();     ///< U+00B0
    static QString SpecialSymbol_Minute();     ///< U+2032
    static QString SpecialSymbol_Second();     ///< U+2033
    static QString SpecialSymbol_Celsius();    ///< U+00B0 C
    static QString SpecialSymbol_Fahrenheit(); ///< U+00B0 F

    // The same texts, which destructors of static objects may use, too.
    static const QString s_specialSymbol_degree;     ///< U+00B0
    static const QString s_specialSymbol_Minute;     ///< U+2032
    static const QString s_specialSymbol_Second;     ///< U+2033
    static const QString s_specialSymbol_Celsius;    ///< U+00B0 C
    static const QString s_specialSymbol_Fahrenheit; ///< U+00B0 F

    /// \}
    /// \name File words
    /// To a word: empty for a number without one. From a word: exact and case-sensitive; an unknown
    /// word is the enumerator 0, without a report.
    /// \{

    /// The word of an `EValueType`.
    static QString ForCoordIO_ValueType_to_AsciiString(EValueType value);
    /// The `EValueType` of a word.
    static EValueType ForCoordIO_ValueType_from_AsciiString(const QString &word);
    /// The word of an `EUnit`.
    static QString ForCoordIO_Unit_to_DescriptionAsciiString(EUnit value);
    /// The `EUnit` of a word.
    static EUnit ForCoordIO_Unit_from_DescriptionAsciiString(const QString &word);
    /// The word of an `EFormat`.
    static QString ForCoordIO_Format_to_AsciiString(EFormat value);
    /// The `EFormat` of a word.
    static EFormat ForCoordIO_Format_from_AsciiString(const QString &word);
    /// The word of an `ELocationType`.
    static QString ForCoordIO_ELocationType_to_AsciiString(ELocationType value);
    /// The `ELocationType` of a word.
    static ELocationType ForCoordIO_ELocationType_from_AsciiString(const QString &word);
    /// The word of an `ELocationZeroType`.
    static QString ForCoordIO_ELocationZeroType_to_AsciiString(ELocationZeroType value);
    /// The `ELocationZeroType` of a word.
    static ELocationZeroType ForCoordIO_ELocationZeroType_from_AsciiString(const QString &word);
    /// The word of an `EWhichHalfEarth`.
    static QString ForCoordIO_EWhichHalfEarth_to_AsciiString(EWhichHalfEarth value);
    /// The `EWhichHalfEarth` of a word.
    static EWhichHalfEarth ForCoordIO_EWhichHalfEarth_from_AsciiString(const QString &word);
    /// The word of an `EEllipsoidDirection`.
    static QString ForCoordIO_EEllipsoidDirection_to_AsciiString(EEllipsoidDirection value);
    /// The `EEllipsoidDirection` of a word.
    static EEllipsoidDirection ForCoordIO_EEllipsoidDirection_from_AsciiString(const QString &word);
    /// The word of an `EEllipsoinTransformFunction`.
    static QString
    ForCoordIO_EEllipsoinTransformFunction_to_AsciiString(EEllipsoinTransformFunction value);
    /// The `EEllipsoinTransformFunction` of a word.
    static EEllipsoinTransformFunction
    ForCoordIO_EEllipsoinTransformFunction_from_AsciiString(const QString &word);
    /// The word of an `EEllipsoinTransition`.
    static QString ForCoordIO_EEllipsoinTransition_to_AsciiString(EEllipsoinTransition value);
    /// The `EEllipsoinTransition` of a word.
    static EEllipsoinTransition
    ForCoordIO_EEllipsoinTransition_from_AsciiString(const QString &word);
    /// The word of an `EPlaneTransformFunction`.
    static QString ForCoordIO_EPlaneTransformFunction_to_AsciiString(EPlaneTransformFunction value);
    /// The `EPlaneTransformFunction` of a word.
    static EPlaneTransformFunction
    ForCoordIO_EPlaneTransformFunction_from_AsciiString(const QString &word);
    /// The word of an `EElevationFittingFunction`.
    static QString
    ForCoordIO_EElevationFittingFunction_to_AsciiString(EElevationFittingFunction value);
    /// The `EElevationFittingFunction` of a word.
    static EElevationFittingFunction
    ForCoordIO_EElevationFittingFunction_from_AsciiString(const QString &word);

    /// "true" or "false".
    static QString ForCoordIO_Boolean_to_AsciiString(bool value);
    /// "true" in any mixture of cases is true, everything else false: looser than the words above,
    /// deliberately.
    static bool ForCoordIO_Boolean_from_AsciiString(const QString &word);

    /// Enumerator to file word, filled before any operation can run and never changed.
    static const QMap<EValueType, QString> s_forCoordIO_valTypeAsciiStrings;
    /// The words of `EUnit`.
    static const QMap<EUnit, QString> s_forCoordIO_unitDescriptionAsciiStrings;
    /// The words of `EFormat`.
    static const QMap<EFormat, QString> s_forCoordIO_formatAsciiStrings;
    /// The words of `ELocationType`.
    static const QMap<ELocationType, QString> s_forCoordIO_ELocationType_asciiStrings;
    /// The words of `ELocationZeroType`.
    static const QMap<ELocationZeroType, QString> s_forCoordIO_ELocationZeroType_asciiStrings;
    /// The words of `EWhichHalfEarth`.
    static const QMap<EWhichHalfEarth, QString> s_forCoordIO_EWhichHalfEarth_asciiStrings;
    /// The words of `EEllipsoidDirection`.
    static const QMap<EEllipsoidDirection, QString> s_forCoordIO_EEllipsoidDirection_asciiStrings;
    /// The words of `EEllipsoinTransformFunction`.
    static const QMap<EEllipsoinTransformFunction, QString>
        s_forCoordIO_EEllipsoinTransformFunction_asciiStrings;
    /// The words of `EEllipsoinTransition`.
    static const QMap<EEllipsoinTransition, QString> s_forCoordIO_EEllipsoinTransition_asciiStrings;
    /// The words of `EPlaneTransformFunction`.
    static const QMap<EPlaneTransformFunction, QString>
        s_forCoordIO_EPlaneTransformFunction_asciiStrings;
    /// The words of `EElevationFittingFunction`.
    static const QMap<EElevationFittingFunction, QString>
        s_forCoordIO_EElevationFittingFunction_asciiStrings;

    /// \}
    /// \name Descriptions
    /// Translated display texts, empty for a number without one.
    /// \{

    /// \throws std::exception* "No Time Value In Coordinate" for the two time kinds
    static QString ValueType_to_DescriptionString(EValueType value);
    /// The description of an `EUnit`.
    static QString Unit_to_DescriptionString(EUnit value);
    /// The description of an `EFormat`.
    static QString Format_to_DescriptionString(EFormat value);
    /// The description of an `ELocationType`.
    static QString ELocationType_to_DescriptionString(ELocationType value);
    /// The description of an `ELocationZeroType`.
    static QString ELocationZeroType_to_DescriptionString(ELocationZeroType value);
    /// The description of an `EWhichHalfEarth`.
    static QString EWhichHalfEarth_to_DescriptionString(EWhichHalfEarth value);
    /// The description of an `EEllipsoidDirection`.
    static QString EEllipsoidDirection_to_DescriptionString(EEllipsoidDirection value);
    /// The description of an `EEllipsoinTransformFunction`.
    static QString
    EEllipsoinTransformFunction_to_DescriptionString(EEllipsoinTransformFunction value);
    /// The description of an `EEllipsoinTransition`.
    static QString EEllipsoinTransition_to_DescriptionString(EEllipsoinTransition value);
    /// The description of an `EPlaneTransformFunction`.
    static QString EPlaneTransformFunction_to_DescriptionString(EPlaneTransformFunction value);
    /// The description of an `EElevationFittingFunction`.
    static QString EElevationFittingFunction_to_DescriptionString(EElevationFittingFunction value);

    /// \}
    /// \name Formatted values
    /// \{

    /// The text of `value`, of kind `type` and in `fromUnit`, shown in `toUnit`.
    ///
    /// \param format the style of angles
    /// \param precision decimals
    /// \param eraseTailZero whether trailing zeros of the decimals are removed
    /// \param unitText (when given) receives the symbol of `toUnit` for every kind of value, also
    ///        when the call raises
    /// \throws std::exception* "No Time Value In Coordinate" for a time
    /// \throws std::exception for a length between two different units of which one has no factor
    static QString GetFormatString(EValueType type, const QVariant &value, EUnit fromUnit,
                                   EUnit toUnit, EFormat format, unsigned char precision,
                                   bool eraseTailZero, QString *unitText = nullptr);

    /// The same for the kind, value and unit of `param`.
    static QString GetFormatString(const Param &param, EUnit toUnit, EFormat format,
                                   unsigned char precision, bool eraseTailZero,
                                   QString *unitText = nullptr);

    /// The same with unit, style, decimals and trailing-zero rule of the display configuration
    /// (`StandardLibrary::getShowConfig`). A kind that the configuration does not know gives the
    /// empty text and leaves `unitText` alone.
    static QString GetFormatString(EValueType type, const QVariant &value, EUnit unit,
                                   QString *unitText = nullptr);
    /// The same for the kind, value and unit of `param`.
    static QString GetFormatString(const Param &param, QString *unitText = nullptr);

    /// The three components of `pos`, a position in the user's coordinates of `coord`, with the
    /// settings of the display configuration. Longitude, latitude and ellipsoidal height where the
    /// projection's `locationType` is geographic; Y, X and elevation where it is plane, in the
    /// projection's units. Any other `locationType` leaves all outputs untouched. The unit texts
    /// may be null.
    ///
    /// \throws std::exception for a height unit without a factor; all outputs are then untouched
    static void GetFormatString(const Pos &pos, const Coord &coord, QString &north, QString &east,
                                QString &height, QString *northUnit, QString *eastUnit,
                                QString *heightUnit);

    /// The exact text of `param`: no conversion, no display settings. Numbers have up to 20
    /// decimals without trailing zeros; pressures and temperatures up to 2.
    ///
    /// \param unitText (when given) receives the symbol of the unit of `param`, also when the call
    ///        raises
    /// \throws std::exception* "No Time Value In Coordinate" for a time
    static QString GetNoFormatString(const Param &param, QString *unitText = nullptr);

    /// \}
    /// \name Parsed values
    /// Numbers are read as in the C locale, by `QString::toDouble` and its like, which take "nan"
    /// and "inf" and blanks around a number. Nothing is raised.
    /// \{

    /// The pattern of an input field for values of a kind, empty for a kind without one. Two
    /// peculiarities are deliberate: the integers' pattern has no single digit from 1 to 9, and the
    /// real numbers' takes every text that begins with a digit or ends in digits, a point and
    /// digits.
    static QString GetRegExp_by_ValueType(EValueType type);

    /// Reads `text` into a variant of the type that `type` calls for.
    ///
    /// Numbers stand in the value's own unit. Angles are decimal degrees without a symbol,
    /// otherwise any of degrees, minutes and seconds, each before its symbol; `value` is then in
    /// `unit`, which must be `Unit_Degree` or `Unit_Second`. The parts are added with their own
    /// signs, deliberately: "-30°15′" is -29.75 degrees. Their ranges are not checked, and what
    /// follows the last symbol is ignored.
    ///
    /// \return false, with `value` untouched, for a text that is no such value and for a kind that
    /// cannot be typed (flags, times, enumerations).
    static bool GetValueFromString(EValueType type, EUnit unit, const QString &text,
                                   QVariant &value);

    /// Reads an angle written in `format` into decimal `degrees`.
    ///
    /// A plain number is degrees, arc seconds or radians, as `format` says. With symbols,
    /// `Format_DegreeMinuteSecond` takes all three (minutes and seconds from 0 to below 60; the
    /// minus before the degrees does not reach them, as above), `Format_Degree` and `Format_Second`
    /// their own one; what follows it is ignored.
    ///
    /// \return false, with `degrees` untouched, for anything else. With `Format_Degree` a text that
    /// has the symbol always sets `degrees`, deliberately, to what `QString::toDouble` makes of
    /// what stands before it: 0 where that is no number, an infinity where no double is so large.
    static bool GetAngleValue(const QString &text, EFormat format, double &degrees);

    /// \}

private:
    static QMap<EValueType, QString> _Make_ForCoordIO_ValType_AsciiStrings();
    static QMap<EUnit, QString> _Make_ForCoordIO_UnitDescription_AsciiStrings();
    static QMap<EFormat, QString> _Make_ForCoordIO_Format_AsciiStrings();
    static QMap<ELocationType, QString> _Make_ForCoordIO_ELocationType_AsciiStrings();
    static QMap<ELocationZeroType, QString> _Make_ForCoordIO_ELocationZeroType_AsciiStrings();
    static QMap<EWhichHalfEarth, QString> _Make_ForCoordIO_EWhichHalfEarth_AsciiStrings();
    static QMap<EEllipsoidDirection, QString> _Make_ForCoordIO_EEllipsoidDirection_AsciiStrings();
    static QMap<EEllipsoinTransformFunction, QString>
    _Make_ForCoordIO_EEllipsoinTransformFunction_AsciiStrings();
    static QMap<EEllipsoinTransition, QString> _Make_ForCoordIO_EEllipsoinTransition_AsciiStrings();
    static QMap<EPlaneTransformFunction, QString>
    _Make_ForCoordIO_EPlaneTransformFunction_AsciiStrings();
    static QMap<EElevationFittingFunction, QString>
    _Make_ForCoordIO_EElevationFittingFunction_AsciiStrings();
};

} // namespace KelStd
