#pragma once

#include <cli/conversion/ConvertOptions.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Whether the inputs of a conversion go with its options. A mistake is empty where there is none.
namespace KelStd::cli {

class CommandLine;
class PositionInput;

/// A last operand that is there to be written, and no input.
QString mistakeInOperands(const QStringList &operands);

/// Whether the input is a layer of a vector file.
bool isLayer(const QStringList &operands, const ConvertOptions &options);

/// Options that have no meaning for a layer.
QString mistakeForLayer(const CommandLine &line);

/// Options that have no meaning for text.
QString mistakeForList(const CommandLine &line, const ConvertOptions &options);

/// Options that are for one input.
QString mistakeInInputs(const ConvertOptions &options, const PositionInput &input);

} // namespace KelStd::cli
