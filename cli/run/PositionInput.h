#pragma once

#include <cli/run/Input.h>

#include <KelStd/positions/ColumnChoice.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/PositionParser.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <memory>
#include <optional>
#include <vector>

namespace KelStd::cli {

class CommandLine;
class Console;

/// What commands that read lists of positions share: the operands INPUT, which lines of them are
/// passed over, and which columns hold the positions.
class PositionInput
{
public:
    /// Whether the command has the option --columns.
    enum class Columns
    {
        AsHeaded,
        MayBePicked
    };

    explicit PositionInput(Columns columns) : m_columns(columns) {}

    /// The option --columns; `description` names the components.
    static void addColumnsOption(CommandLine &line, const QString &description);
    /// The option --skip.
    static void addSkipOption(CommandLine &line);

    /// Takes the options; false with the `mistake` when they cannot be followed.
    bool takeOptions(const CommandLine &line, QString &mistake);

    /// Opens the operands, standard input without one; false after a report. Numbers and angles
    /// that are no files are one position.
    bool open(const CommandLine &line, Console &console);

    /// Says what to type where a person types the positions. `components`: with their units.
    void promptFor(const QString &components, Console &console) const;

    /// The first one.
    Input &input() { return *m_inputs.front(); }

    /// All of them, one behind the other.
    std::vector<Input *> inputs() const;

    /// A parser of its lines.
    positions::PositionParser parser(const positions::InputForm &form) const;

private:
    bool openPosition(const QStringList &operands, Console &console);

    Columns m_columns;
    std::vector<std::unique_ptr<Input>> m_inputs;
    std::optional<positions::ColumnChoice> m_choice;
    qint64 m_skippedLines = 0;
};

} // namespace KelStd::cli
