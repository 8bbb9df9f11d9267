#pragma once

#include <cli/vector/VectorFiles.h>

#include <ogr_api.h>

#include <string>

namespace KelStd::cli::vector {

/// The field of KML that says what a height is above.
inline constexpr char altitudeMode[] = "altitudeMode";

/// Whether a driver adds a field of this name to every feature, whatever the file says.
bool isMadeUp(const std::string &driver, const std::string &field);

/// Whether a driver's layers have all the fields that the format knows, used or not.
bool hasUnusedFields(const std::string &driver);

FieldType typeOf(OGRFieldDefnH field);

/// Whether a driver guesses the types of fields from their texts: "007" is a number to it.
bool guessesTypes(const std::string &driver);

/// Whether a text is that of a number, digit by digit, as programs print them.
bool isPlainNumber(const std::string &text);

/// Whether a driver's dates are texts.
bool hasDatesAsTexts(const std::string &driver);

/// Whether a driver takes texts for times, and a field is one of such texts.
bool isGuessedTime(const std::string &driver, OGRFieldDefnH field);

/// Whether a text is a day of the calendar as "2024-05-01".
bool isDate(const std::string &text);

/// The value of a field of the layer: a number, or a text. Times are those of ISO 8601.
Value valueOf(OGRFeatureH feature, int field);

} // namespace KelStd::cli::vector
