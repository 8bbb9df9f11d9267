#include <KelStd/catalogue/ProjSteps.h>

namespace KelStd::catalogue {

namespace {

/// The words of a definition: a blank within quotation marks is part of a word, whose marks go.
std::vector<QByteArray> wordsOf(const QByteArray &text)
{
    std::vector<QByteArray> words;
    QByteArray word;
    bool isQuoted = false;
    for (const char c : text) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && (c == ' ' || c == '\t' || c == '\n' || c == '\r')) {
            if (!word.isEmpty())
                words.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    if (!word.isEmpty())
        words.push_back(word);
    return words;
}

} // namespace

bool ProjStep::has(const char *key) const
{
    for (const auto &parameter : parameters) {
        if (parameter.first == key)
            return true;
    }
    return false;
}

QByteArray ProjStep::text(const char *key) const
{
    for (const auto &parameter : parameters) {
        if (parameter.first == key)
            return parameter.second;
    }
    return {};
}

std::optional<double> ProjStep::number(const char *key) const
{
    bool isNumber = false;
    const double value = text(key).toDouble(&isNumber);
    return isNumber ? std::optional<double>(value) : std::nullopt;
}

std::vector<ProjStep> stepsOf(const QByteArray &text)
{
    std::vector<ProjStep> steps;
    ProjStep step;
    const auto finish = [&steps, &step] {
        if (!step.name.isEmpty() && step.name != "pipeline")
            steps.push_back(step);
        step = ProjStep();
    };
    for (QByteArray word : wordsOf(text)) {
        if (word.startsWith('+'))
            word.remove(0, 1);
        const auto sign = word.indexOf('=');
        const QByteArray key = sign < 0 ? word : word.left(sign);
        const QByteArray value = sign < 0 ? QByteArray() : word.mid(sign + 1);
        if (key == "step")
            finish();
        else if (key == "inv")
            step.isInverse = true;
        else if (key == "proj")
            step.name = value;
        else
            step.parameters.emplace_back(key, value);
    }
    finish();
    return steps;
}

namespace {

/// A value with blanks stands in quotation marks.
QByteArray quotedValue(const QByteArray &value)
{
    return value.contains(' ') ? '"' + value + '"' : value;
}

} // namespace

QByteArray pipelineText(const std::vector<ProjStep> &steps)
{
    if (steps.empty())
        return "+proj=noop";
    QByteArray text = "+proj=pipeline";
    for (const ProjStep &step : steps) {
        text += " +step ";
        if (step.isInverse)
            text += "+inv ";
        text += "+proj=" + step.name;
        for (const auto &parameter : step.parameters) {
            text += " +" + parameter.first;
            if (!parameter.second.isEmpty())
                text += "=" + quotedValue(parameter.second);
        }
    }
    return text;
}

std::vector<ProjStep> withoutBookkeeping(const std::vector<ProjStep> &steps)
{
    std::vector<ProjStep> kept;
    for (const ProjStep &step : steps) {
        if (step.name != "axisswap" && step.name != "unitconvert" && step.name != "noop")
            kept.push_back(step);
    }
    return kept;
}

} // namespace KelStd::catalogue
