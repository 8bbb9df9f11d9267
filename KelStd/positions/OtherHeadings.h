#pragma once

#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PositionHeader.h>

#include <QtCore/QString>

/// Lines that may be headings in words that the program does not read, such as those of another
/// language: they may give another order than the one in which the positions are read.
namespace KelStd::positions {

/// Whether different words, and no digit, stand where the positions have their components. Does not
/// hold for one mark such as "n/a" in all of these places, which stands for missing values.
bool standInPlaceOfComponents(const SplitLine &line, const FieldOrder &order);

/// Whether the line holds nothing but single words, two of which head coordinates in some language:
/// "Punkt;Rechtswert;Hochwert". Between blanks, where a sentence has its words, three.
bool areHeadingsOfAnyLanguage(const SplitLine &line);

/// Whether a remark behind the first positions may be headings: in words of any language, or in as
/// many as the positions have fields, with separators and no blank.
bool isRemarkOfOtherHeadings(const QString &remark, const SplitLine &line, const FieldOrder &order);

} // namespace KelStd::positions
