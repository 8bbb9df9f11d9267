#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/text/UnitNames.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <array>
#include <vector>

namespace KelStd::positions {

/// The fields of the components that a line has, in the order of their frame.
struct ComponentFields
{
    const int *first;
    const int *last;

    const int *begin() const { return first; }
    const int *end() const { return last; }
};

/// In which field of a line the name and the components of a frame stand.
struct FieldOrder
{
    static constexpr int noField = -1;

    int fields = 0;
    QChar separator;    ///< of the line that gave it; null where that is not known
    int name = noField; ///< `noField`: the lines have no names
    /// The last one is `noField` where the lines have no heights.
    std::array<int, componentsPerFrame> components{};
    /// The unit of a component that is not read in that of the form; null for the form's.
    std::array<const NamedUnit *, componentsPerFrame> otherUnits{};
    /// What says in our own output what the projected height is above, where one is read.
    int heightReference = noField;
    std::vector<int> carried;    ///< the fields that go into the output as they are
    QStringList carriedHeadings; ///< one for each
    QStringList notTaken;        ///< headings of fields that go nowhere
    QStringList computedAnew;    ///< those of fields that the output has, too, with its own values
    bool endsEmpty = false;      ///< a separator without a field ends each line
    bool isPlain = false;        ///< neither headings nor a choice of columns gave it
    bool hasHeadings = false;    ///< headings gave it
    bool isPicked = false;       ///< a choice of columns gave it
    std::array<bool, componentsPerFrame> hasUnit{}; ///< whether the heading names its unit
    /// Whether a line of units names the unit, and the heading does not.
    std::array<bool, componentsPerFrame> hasUnitOfLine{};
    std::vector<int> units; ///< the fields that hold a unit of the line
    /// The heading of a height that was picked, where it speaks of the geoid or the sea.
    QString geoidHeight;
    QString doubtfulFirst; ///< the first of these headings if it may be a word of a remark instead

    ListShape shape() const { return {separator, fields}; }
    bool hasHeight() const { return components.back() != noField; }
    int countComponents() const
    {
        return hasHeight() ? componentsPerFrame : componentsPerFrame - 1;
    }
    ComponentFields componentFields() const
    {
        return {components.data(), components.data() + countComponents()};
    }
};

/// The order of a line of `fields` fields where no header names them: the documented order of the
/// frame, after a point name when there is one field more than `components`, of which two are
/// without a height.
KELSTD_EXPORT FieldOrder plainOrder(int fields, int components = componentsPerFrame);

/// Reads the header `fields` for positions of `form`. Columns that are not needed may be there; a
/// needed one that is missing, there twice or in another unit is a `mistake`.
KELSTD_EXPORT bool readHeader(const QStringList &fields, const InputForm &form, FieldOrder &order,
                              QString &mistake);

/// Whether the fields are headings of positions, of this form or of another: two of them or more
/// name different components of one frame, whatever their units.
bool lookLikeHeadings(const QStringList &fields, const InputForm &form);

/// Whether the two orders find the same components in lines of as many fields, and the same name
/// and carried fields where both know of them.
bool agree(const FieldOrder &one, const FieldOrder &other);

/// How many of the fields are words of headings of any form.
int countKnown(const QStringList &fields);

/// The components that the words name, each where it is first named. In a sentence only the longer
/// words count: "E" and "north" may be anything there.
QVector<int> componentsMentioned(const QStringList &words, bool areHeadings, const InputForm &form);

/// "longitude, latitude, height": the frame's components in their order.
QString labelsOf(Frame frame);

/// As many of the headings as can be read at a glance, in quotation marks.
QString listedHeadings(const QStringList &headings);

/// Puts a unit in brackets that stands as a field of its own back to the word before it: a header
/// "longitude [deg]" that was split at blanks.
QStringList joinUnits(const QStringList &fields);

} // namespace KelStd::positions
