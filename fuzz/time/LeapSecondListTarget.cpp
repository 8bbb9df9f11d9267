// A list of leap seconds in the form of the tz database.

#include "FuzzTarget.h"

#include <KelStd/time/LeapSecondList.h>

#include <string_view>
#include <vector>

namespace {

using namespace KelStd;
using fuzz::require;

constexpr std::string_view blanks = " \t\r\v\f";

/// The words of a line as the file has them, read by a few lines of their own.
std::vector<std::string_view> wordsOf(std::string_view line)
{
    std::vector<std::string_view> words;
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
        if (line.empty())
            return words;
        const std::size_t end = std::min(line.find_first_of(blanks), line.size());
        words.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
}

bool isNumber(std::string_view word, long long value)
{
    word.remove_prefix(std::min(word.find_first_not_of('0'), word.size()));
    return value >= 0 && (value == 0 ? word.empty() : word == std::to_string(value));
}

/// Every line of the file that is not empty and no comment.
std::vector<std::vector<std::string_view>> rowsOf(std::string_view text)
{
    std::vector<std::vector<std::string_view>> rows;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        auto words = wordsOf(text.substr(0, end));
        if (!words.empty() && words.front().front() != '#')
            rows.push_back(std::move(words));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return rows;
}

void checkRows(const QList<LeapSecondRow> &rows, std::string_view text)
{
    constexpr long long secondsFrom1900 = 2208988800;
    const auto lines = rowsOf(text);
    require(lines.size() == static_cast<std::size_t>(rows.size()), "every line is a row");
    for (int i = 0; i < rows.size(); ++i) {
        const auto &words = lines[static_cast<std::size_t>(i)];
        const long long ms = rows.at(i).from.toValueTime();
        require(words.size() >= 2, "a row has a time and a count");
        require(isNumber(words[0], ms / 1000 + secondsFrom1900) && ms % 1000 == 0,
                "its time is the one that is written");
        require(isNumber(words[1], rows.at(i).gpsMinusUtc + 19), "so is its count");
        require(words.size() == 2 || words[2].front() == '#', "and nothing else stands there");
        require(i == 0 || rows.at(i - 1).from.toValueTime() < ms, "rows are in order");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    LeapSecondListFailure failure;
    const auto list = LeapSecondList::parse(bytes, &failure);
    require(list.has_value() == !failure, "there is a list or a failure");
    require(list || !failure.text.isEmpty(), "a failure has a text");
    require(failure.line >= 0 && failure.line <= bytes.count('\n') + 1, "it is about a line");
    if (!list)
        return 0;
    require(!list->rows.isEmpty(), "a list has leap seconds");
    checkRows(list->rows, {reinterpret_cast<const char *>(data), size});
    require(leapSecondDifferences(list->rows, list->rows).isEmpty(), "a list agrees with itself");
    static const auto table = leapSecondTable();
    for (const auto &difference : leapSecondDifferences(table, list->rows))
        require(difference.firstCount != difference.otherCount, "a difference is one");
    return 0;
}
