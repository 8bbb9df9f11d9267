#pragma once

#include <KelStd/positions/InputForm.h>

/// How the components of an input are read.
namespace KelStd::positions {

/// A copy of the column that a component is read as, with the words of the height that is meant.
Column inputColumn(const InputForm &form, int component);

/// "a line of headings or a choice of columns": how the user says in which order the fields stand.
QString waysToSayOrder(const InputForm &form);

} // namespace KelStd::positions
