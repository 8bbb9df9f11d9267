#pragma once

#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PositionHeader.h>

#include <QtCore/QString>

#include <algorithm>
#include <array>
#include <string_view>

/// Whether the fields of lines without headings may stand in another order than the documented one.
namespace KelStd::positions {

/// Higher than any height of the plane [m]: a northing or an easting can be such a number.
inline constexpr double maxPlaneHeight = 20000.0;

/// Whether the height can be one. Where neither headings nor a choice say that it is the height,
/// one of the plane cannot be higher than `maxPlaneHeight`.
inline bool mayBeHeight(double metres, Frame frame, const FieldOrder &order)
{
    return !order.isPlain || frame != Frame::LocalProjected
           || (metres <= maxPlaneHeight && metres >= -maxPlaneHeight);
}

/// A number that is not whole: with a sign or decimals.
bool isOtherNumber(const QString &field);

/// Whether the name may be the first component instead: a number with decimals. Seen in the text
/// alone, so that the short way may ask.
inline bool mayBeDecimalNumber(std::string_view name)
{
    return name.find('.') != std::string_view::npos
           && name.find_first_not_of("+-.0123456789") == std::string_view::npos;
}

/// Whether the text is a whole number without a sign.
inline bool isWhole(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// "465" and "682.96": one number whose thousands were set apart.
inline bool mayBeGroups(std::string_view first, std::string_view second)
{
    constexpr std::size_t groupSize = 3;
    const std::size_t point = std::min(second.find('.'), second.size());
    const std::string_view decimals = second.substr(std::min(point + 1, second.size()));
    return isWhole(first) && first.size() <= groupSize && first.front() != '0' && point == groupSize
           && isWhole(second.substr(0, point)) && (decimals.empty() || isWhole(decimals));
}

/// Whether an empty field behind the fields that headings name is none that was lost: the last one
/// named is a component, and no other column that may be empty itself. A whole number in front,
/// where a component stands, may be that of a point without its height.
inline bool mayEndEmpty(std::string_view first, const FieldOrder &order)
{
    const auto isComponent = [&order](int field) {
        const auto &components = order.components;
        return std::find(components.begin(), components.end(), field) != components.end();
    };
    return order.hasHeadings && isComponent(order.fields - 1)
           && !(isComponent(0) && isWhole(first));
}

/// Whether the components of a line whose last field is empty may be one less: a comma may have set
/// thousands apart, and the empty field would be the last component's. `fieldAt` gives a field.
template <typename FieldAt>
bool mayLackOne(const FieldOrder &order, FieldAt fieldAt)
{
    const auto &components = order.components;
    return std::any_of(components.begin(), components.end(), [&](int field) {
        const bool hasNext =
            std::find(components.begin(), components.end(), field + 1) != components.end();
        return hasNext && mayBeGroups(fieldAt(field), fieldAt(field + 1));
    });
}

/// Why a line in the usual order is refused whose letters say that its latitude stands first; empty
/// where they do not.
QString latitudeFirst(const SplitLine &line, const FieldOrder &order, const InputForm &form);

/// Of a later line whose name is a whole number behind other names: empty, or why its four numbers
/// may be two pairs.
QString laterPairsDoubt(const SplitLine &line, const InputForm &form);

/// Why that name is refused, and what to add.
QString nameDoubt(const QString &name, const InputForm &form);

/// Why that height is none, and what to add.
QString heightDoubt(const QString &field, const InputForm &form);

/// Whether the text of a name is an angle with its signs, or with decimals and a letter: "5:15:30",
/// "W5.25". Names such as E12 are none.
bool mayBeAngle(const QString &name);

/// The same, for sure not: seen in the text alone, so that the short way may ask.
inline bool isNoAngle(std::string_view name)
{
    return name.find_first_of(".,:'") == std::string_view::npos;
}

/// Of a line that would decide the order for all others: empty, or what else it may mean and what
/// to add. The later lines have as many fields as it, so that the doubt does not come back.
QString orderDoubt(const SplitLine &line, const FieldOrder &order, const InputForm &form);

} // namespace KelStd::positions
