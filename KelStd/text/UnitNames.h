#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QString>

namespace KelStd {

/// What a unit measures.
enum class UnitKind
{
    Length,
    Angle,      ///< of an angle in one number
    TypedAngle, ///< degrees with minutes and seconds
};

/// A unit by the words that people use for it, in headings above all.
struct NamedUnit
{
    const char16_t *words;       ///< with blanks between them: small letters, "_" within a word
    const char *symbol;          ///< as it is printed and typed in options
    EUnit unit;                  ///< Unit_None: nothing is read or printed in it
    UnitKind kind;               ///< what it measures
    bool isPartOfDegree = false; ///< minutes and seconds, which stand beside degrees
};

/// Every unit that has a word. The lengths that can be read and printed stand in the order in which
/// they are offered.
inline constexpr NamedUnit unitNames[] = {
    {u"m meter meters metre metres", "m", Unit_Meter, UnitKind::Length},
    {u"ft feet foot intl_ft intl_feet international_feet international_foot int_ft int_feet "
     u"int_foot ft_int ft_intl feet_int foot_int feet_intl foot_intl",
     "ft", Unit_Foot, UnitKind::Length},
    {u"us_ft us_feet us_foot us_survey_ft us_survey_feet us_survey_foot us_sft usft ussft ftus "
     u"usfeet ft_us feet_us foot_us sft survey_ft survey_feet survey_foot",
     "us-ft", Unit_USFoot, UnitKind::Length},
    {u"mm millimeter millimeters millimetre millimetres", "mm", Unit_MilliMeter, UnitKind::Length},
    {u"cm centimeter centimeters centimetre centimetres", "cm", Unit_None, UnitKind::Length},
    {u"dm decimeter decimeters decimetre decimetres", "dm", Unit_None, UnitKind::Length},
    {u"km kilometer kilometers kilometre kilometres", "km", Unit_None, UnitKind::Length},
    {u"in inch inches", "in", Unit_None, UnitKind::Length},
    {u"yd yard yards", "yd", Unit_None, UnitKind::Length},
    {u"mi mile miles", "mi", Unit_None, UnitKind::Length},
    {u"link links lk", "links", Unit_None, UnitKind::Length},
    {u"chain chains ch", "chains", Unit_None, UnitKind::Length},
    {u"fathom fathoms", "fathoms", Unit_None, UnitKind::Length},
    {u"clarke_ft clarke_feet clarke_foot clarkes_foot clarkes_feet", "clarke-ft", Unit_None,
     UnitKind::Length},
    {u"gold_coast_ft gold_coast_feet gold_coast_foot", "gold-coast-ft", Unit_None,
     UnitKind::Length},
    {u"sears_ft sears_feet sears_foot", "sears-ft", Unit_None, UnitKind::Length},
    {u"indian_yd indian_yard indian_yards", "indian-yd", Unit_None, UnitKind::Length},
    {u"sears_yd sears_yard sears_yards", "sears-yd", Unit_None, UnitKind::Length},
    {u"clarke_yd clarke_yard clarke_yards clarkes_yard clarkes_yards", "clarke-yd", Unit_None,
     UnitKind::Length},
    {u"clarke_link clarke_links clarkes_link clarkes_links", "clarke-link", Unit_None,
     UnitKind::Length},
    {u"sears_chain sears_chains", "sears-chain", Unit_None, UnitKind::Length},
    {u"truncated_sears_chain truncated_sears_chains", "truncated-sears-chain", Unit_None,
     UnitKind::Length},
    {u"german_m german_legal_meter german_legal_metre", "german-m", Unit_None, UnitKind::Length},
    {u"deg degree degrees dd decimal_degree decimal_degrees degree_north degree_east degrees_north "
     u"degrees_east",
     "deg", Unit_Degree, UnitKind::Angle},
    {u"rad radian radians", "rad", Unit_None, UnitKind::Angle},
    {u"gon gons grad grads grade grades", "gon", Unit_None, UnitKind::Angle},
    {u"dms deg_min_sec ddmmss", "dms", Unit_None, UnitKind::TypedAngle},
    {u"dm_m ddmm ddm", "degrees and minutes", Unit_None, UnitKind::TypedAngle},
    {u"min minute minutes arcmin arcminute arcminutes", "minutes", Unit_None, UnitKind::TypedAngle,
     true},
    {u"sec second seconds arcsec arcsecond arcseconds", "seconds", Unit_None, UnitKind::TypedAngle,
     true},
    {u"mas", "mas", Unit_None, UnitKind::TypedAngle, true},
    {u"' \u2032 \u2019", "minutes or feet", Unit_None, UnitKind::TypedAngle, true},
    {u"'' \" \u2033 \u201D \u2032\u2032 \u2019\u2019", "seconds or inches", Unit_None,
     UnitKind::TypedAngle, true},
};

/// The row of a word, as `unitNames` spells it; null when there is none. May be called on any
/// thread.
const NamedUnit *unitNamed(const QString &word);

} // namespace KelStd
