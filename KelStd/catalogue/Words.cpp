#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/FoundSystem.h>

namespace KelStd::catalogue {

namespace {

template <typename Enumeration>
struct WordRow
{
    Enumeration value;
    const char *word;
};

template <typename Enumeration, std::size_t size>
QString wordOf(const WordRow<Enumeration> (&rows)[size], Enumeration value)
{
    for (const WordRow<Enumeration> &row : rows) {
        if (row.value == value)
            return QString::fromLatin1(row.word);
    }
    return {};
}

using Kind = CatalogueFailureKind;

constexpr WordRow<Kind> refusalRows[] = {
    {Kind::NotUnderstood, "not-understood"}, {Kind::NotProjected, "not-projected"},
    {Kind::NoProjection, "no-projection"},   {Kind::NoShift, "no-shift"},
    {Kind::GridOnly, "grid-only"},           {Kind::TimeSpecific, "time-specific"},
    {Kind::OwnCheck, "own-check"},           {Kind::NoSuchShift, "not-understood"},
    {Kind::NotExportable, "not-exportable"},
};

constexpr WordRow<SystemKind> kindRows[] = {
    {SystemKind::Projected, "projected"},   {SystemKind::Compound, "compound"},
    {SystemKind::Geographic, "geographic"}, {SystemKind::Geocentric, "geocentric"},
    {SystemKind::Vertical, "vertical"},     {SystemKind::Other, "other"},
};

constexpr WordRow<ShiftKind> shiftRows[] = {
    {ShiftKind::None, "none"}, {ShiftKind::Three, "three"}, {ShiftKind::Seven, "seven"},
    {ShiftKind::Grid, "grid"}, {ShiftKind::Other, "other"},
};

} // namespace

QString refusalWord(CatalogueFailureKind kind)
{
    return wordOf(refusalRows, kind);
}

QString kindWord(SystemKind kind)
{
    return wordOf(kindRows, kind);
}

QString shiftWord(ShiftKind kind)
{
    return wordOf(shiftRows, kind);
}

} // namespace KelStd::catalogue
