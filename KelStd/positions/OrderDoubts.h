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

/// Whether the height can be one. Where neither headings nor a choice say that it is the height, a
/// height in the plane cannot be beyond `maxPlaneHeight`.
inline bool mayBeHeight(double metres, Frame frame, const FieldOrder &order)
{
    return !order.isPlain || !order.hasHeight() || frame != Frame::LocalProjected
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

/// Whether a separator may end a line behind the fields that headings name. It may where the last
/// heading names a component: the field of any other column may be empty itself. It may not where a
/// component stands first and is a whole number: that may be the number of a point whose height is
/// missing.
inline bool mayEndEmpty(std::string_view first, const FieldOrder &order)
{
    const auto isComponent = [&order](int field) {
        const auto &components = order.components;
        return std::find(components.begin(), components.end(), field) != components.end();
    };
    return order.hasHeadings && isComponent(order.fields - 1)
           && !(isComponent(0) && isWhole(first));
}

/// Whether a line whose last field is empty may have one component less than it seems: two of its
/// fields may be one number whose thousands a comma set apart. `fieldAt` gives a field.
template <typename FieldAt>
bool mayLackOne(const FieldOrder &order, FieldAt fieldAt)
{
    const ComponentFields components = order.componentFields();
    return std::any_of(components.begin(), components.end(), [&](int field) {
        const bool hasNext =
            std::find(components.begin(), components.end(), field + 1) != components.end();
        return hasNext && mayBeGroups(fieldAt(field), fieldAt(field + 1));
    });
}

/// Why a line in the usual order is refused whose letters say that its latitude stands first; empty
/// where they do not.
QString latitudeFirst(const SplitLine &line, const FieldOrder &order, const InputForm &form);

/// Why the four numbers of a later line may be two pairs, as in "5 30 52 10": its name is a whole
/// number, unlike the names before it. Empty when they are no pairs.
QString laterPairsDoubt(const SplitLine &line, const InputForm &form);

/// Whether a text begins as numbers and angles do. Quick enough for the short way.
inline bool mayBeginValue(std::string_view text)
{
    constexpr std::string_view beginnings = "+-.0123456789NSEWnsew";
    return !text.empty() && beginnings.find(text.front()) != std::string_view::npos;
}

/// Why the name of a line without a height may be a component of one that has lost its name. Empty
/// when it is certainly a name.
QString laterNameDoubt(const SplitLine &line, const FieldOrder &order, const InputForm &form);

/// Why a line is refused whose headings name no height and that has a number behind its two
/// components: it may be the height. Empty where it is not, and where the user has said that there
/// are no heights.
/// The field behind the components that `heightBehind` looks at; `FieldOrder::noField` where a
/// height is read, or none was left to be found.
int fieldOfHeightBehind(const FieldOrder &order, const InputForm &form);

QString heightBehind(const SplitLine &line, const FieldOrder &order, const InputForm &form);

/// Why a name that may be the first component is refused, and what to add.
QString nameDoubt(const QString &name, const InputForm &form);

/// Why a number beyond `maxPlaneHeight` is no height, and what to add.
QString heightDoubt(const QString &field, const InputForm &form);

/// Whether the text of a name is an angle with its signs, or with decimals and a letter: "5:15:30",
/// "W5.25". A name such as E12 is no angle.
bool mayBeAngle(const QString &name);

/// Whether the text of a name is certainly no such angle. Quick enough for the short way.
inline bool isNoAngle(std::string_view name)
{
    return name.find_first_of(".,:'") == std::string_view::npos;
}

/// Why the line that would decide the order for all others is refused: what else it may mean, and
/// what to add. Empty when it can mean nothing else. Later lines have as many fields and are not
/// asked again.
QString orderDoubt(const SplitLine &line, const FieldOrder &order, const InputForm &form);

} // namespace KelStd::positions
