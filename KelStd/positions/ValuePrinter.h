#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Location.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PrintOptions.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <array>

namespace KelStd::positions {

/// Prints the numbers of locations as the options say, with a display configuration of its own: the
/// registry's reaches the PROJ definitions, and what is computed must not depend on how it is
/// shown. The configuration of the user's library is copied into it where an output is a configured
/// one; plain numbers for other programs never follow it.
///
/// A printer may be used on several threads at the same time. Columns are those that `columns` has.
class KELSTD_EXPORT ValuePrinter
{
public:
    /// What is printed for.
    enum class Output
    {
        Table, ///< configured when no option says otherwise
        Csv    ///< plain numbers, unless a format or a style of angles is asked for
    };

    /// The rows that the options point to must live as long as the printer. Decimals beyond 0 to
    /// `PrintOptions::maxDecimals` are taken for the nearest number that is not.
    ValuePrinter(const PrintOptions &options, Output output);

    /// The number of a column, in its unit.
    QString text(const Column &column, const Location &location) const;

    /// Appends the same in UTF-8.
    void append(QByteArray &bytes, const Column &column, const Location &location) const;

    /// Whether the texts of a column are plain decimals, without signs of degrees or letters of
    /// hemispheres.
    bool printsNumbers(const Column &column) const
    {
        return m_form != Form::Configured || !isAngle(column)
               || m_angleStyle->format == Format_Radian;
    }

    /// The same for a column of text, filled with blanks behind where trailing zeros are missing:
    /// aligned on the right, decimal points stand below each other.
    QString cell(const Column &column, const Location &location) const;

    /// "deg", "dms", "m"
    QString unit(const Column &column) const;

    /// "wgs84_longitude_deg"
    QString csvName(const Column &column) const;

    /// Characters that hold every number on and near the earth.
    int width(const Column &column) const;

private:
    enum class Form
    {
        Numbers,
        Configured,
        Exact
    };

    /// How a column is printed as plain numbers.
    struct NumberPlan
    {
        EUnit unit;
        int decimals;
    };

    void take(const PrintOptions &options, bool isNumbers);
    unsigned char followingDecimals(int lengthDecimals) const;
    void planNumbers();
    const NumberPlan &planOf(const Column &column) const;
    double plainNumber(const Column &column, const Location &location) const;
    QString configuredText(const Column &column, double value) const;
    QString radianText(double degrees) const;
    EUnit lengthUnitOf(const Column &column) const;
    int decimalsOf(const Column &column) const;
    int angleWidth(const Column &column) const;

    Form m_form;
    EEllipsoidDirection m_localAxes;
    const AngleStyle *m_angleStyle = &defaultAngleStyle();
    stShowConfig m_config; ///< units and decimals of every form but the exact one
    std::array<NumberPlan, columnCount> m_plans{}; ///< for each column what `m_config` says
};

/// The same meridian between -180 and 180 degrees, which is all that the library shows.
KELSTD_EXPORT double within180(double longitude);

} // namespace KelStd::positions
