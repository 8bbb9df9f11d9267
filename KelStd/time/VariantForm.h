#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QVariant>

#include <optional>

/// A time in a variant is a list whose first element says which scale it is in.
namespace KelStd::variantForm {

/// The list in `variant`; an empty one for what is none. Qt 6 takes texts and bytes for lists.
QVariantList listIn(const QVariant &variant);

/// The list in `variant`; nothing when there is none of exactly `size` elements that begins with
/// `code`.
std::optional<QVariantList> read(const QVariant &variant, EFormat code, int size);

} // namespace KelStd::variantForm
