#include <cli/run/OutputForm.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

namespace KelStd::cli {

void addFormOptions(CommandLine &line, const OutputForms &forms)
{
    for (const OutputForm &form : forms)
        line.addOption({QString::fromLatin1(form.option), QString::fromLatin1(form.description)});
}

std::optional<std::size_t> chosenForm(const CommandLine &line, const OutputForms &forms,
                                      const Console &console, QString &mistake)
{
    std::optional<std::size_t> chosen;
    for (std::size_t i = 0; i < forms.size(); ++i) {
        if (!line.isSet(QString::fromLatin1(forms[i].option)))
            continue;
        if (chosen) {
            mistake =
                QStringLiteral("--%1 and --%2 exclude each other")
                    .arg(QLatin1String(forms[*chosen].option), QLatin1String(forms[i].option));
            return std::nullopt;
        }
        chosen = i;
    }
    constexpr std::size_t ofTerminals = 0;
    constexpr std::size_t ofOthers = 1;
    return chosen.value_or(console.isTerminal() ? ofTerminals : ofOthers);
}

} // namespace KelStd::cli
