#include <cli/vector/gdal/DxfAttributes.h>

#include <cstdlib>

namespace KelStd::cli::vector {

namespace {

const std::string beginning = "1001 ";
const std::string application = "1001 KELSTD";
const std::string text = "1000 ";
const std::string number = "1040 ";
const std::string escape = std::string("\\") + "U+";
constexpr std::size_t escapeSize = 7; ///< with four digits

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

/// The UTF-16 unit that an escape at the place stands for; -1 for none.
int escapedUnit(const std::string &written, std::size_t place)
{
    if (written.compare(place, escape.size(), escape) != 0 || place + escapeSize > written.size())
        return -1;
    int unit = 0;
    for (std::size_t i = place + escape.size(); i < place + escapeSize; ++i) {
        const int digit = hexDigit(written[i]);
        if (digit < 0)
            return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

void appendUtf8(std::string &result, unsigned code)
{
    const auto byte = [](unsigned value) { return static_cast<char>(value); };
    if (code < 0x80) {
        result += byte(code);
    } else if (code < 0x800) {
        result += byte(0xC0U | (code >> 6U));
        result += byte(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        result += byte(0xE0U | (code >> 12U));
        result += byte(0x80U | ((code >> 6U) & 0x3FU));
        result += byte(0x80U | (code & 0x3FU));
    } else {
        result += byte(0xF0U | (code >> 18U));
        result += byte(0x80U | ((code >> 12U) & 0x3FU));
        result += byte(0x80U | ((code >> 6U) & 0x3FU));
        result += byte(0x80U | (code & 0x3FU));
    }
}

/// Without escapes.
std::string plain(const std::string &written)
{
    constexpr unsigned replacement = 0xFFFD;
    std::string result;
    for (std::size_t i = 0; i < written.size();) {
        const int unit = escapedUnit(written, i);
        if (unit < 0) {
            result += written[i++];
            continue;
        }
        i += escapeSize;
        auto code = static_cast<unsigned>(unit);
        if (code >= 0xD800 && code < 0xE000) {
            const int second = escapedUnit(written, i);
            const bool isPair = code < 0xDC00 && second >= 0xDC00 && second < 0xE000;
            code = isPair ? 0x10000U + ((code - 0xD800U) << 10U)
                                + (static_cast<unsigned>(second) - 0xDC00U)
                          : replacement;
            i += isPair ? escapeSize : 0;
        }
        appendUtf8(result, code);
    }
    return result;
}

bool begins(const std::string &group, const std::string &code)
{
    return group.compare(0, code.size(), code) == 0;
}

} // namespace

std::vector<DxfAttribute> dxfAttributes(const char *const *groups)
{
    std::vector<DxfAttribute> attributes;
    bool isOurs = false;
    std::string pending; // pieces of a text that goes on
    for (; groups != nullptr && *groups != nullptr; ++groups) {
        const std::string group = *groups;
        if (begins(group, beginning)) {
            isOurs = group == application;
        } else if (isOurs && begins(group, text)) {
            pending += group.substr(text.size());
            if (!pending.empty() && pending.back() == '\\') {
                pending.pop_back();
                continue;
            }
            const std::size_t sign = pending.find('=');
            if (sign != std::string::npos) {
                attributes.push_back(
                    {plain(pending.substr(0, sign)), plain(pending.substr(sign + 1))});
            }
            pending.clear();
        } else if (isOurs && begins(group, number) && !attributes.empty()) {
            attributes.back().value = std::strtod(group.c_str() + number.size(), nullptr);
        }
    }
    return attributes;
}

} // namespace KelStd::cli::vector
