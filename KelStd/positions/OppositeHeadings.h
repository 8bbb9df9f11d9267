#pragma once

#include <KelStd/positions/Heading.h>
#include <KelStd/positions/InputForm.h>

#include <QtCore/QString>

/// Headings of columns whose numbers count the other way than a component is read: with their
/// signs as they stand they would be read as places elsewhere.
namespace KelStd::positions {

/// Why a column with this heading holds no numbers of the component: "its heading says \"West\",
/// but longitude is read eastwards". So say south, west and depth with their words in other
/// languages, and the letters S and W alone, in brackets, at the end or in front of the component's
/// word. Empty where the heading says nothing of the kind, names both directions ("E/W"), or says
/// that the other one is negative ("W-").
QString otherWayIn(const Heading &heading, const InputForm &form, int component);

} // namespace KelStd::positions
