#include <cli/vector/LayerRow.h>

#include <cstring>

namespace KelStd::cli::vector {

namespace {

template <typename Number>
void appendRaw(QByteArray &bytes, Number number)
{
    bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

/// The bytes are those of `appendRaw`.
template <typename Number>
Number takeRaw(std::string_view &bytes)
{
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    bytes.remove_prefix(sizeof number);
    return number;
}

constexpr qint64 noValue = -1; ///< in place of a text's size

Value valueOf(std::string_view text, FieldType type)
{
    const QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    bool ok = false;
    switch (type) {
    case FieldType::Text: break;
    case FieldType::Date: return text.empty() ? Value() : Value(std::string(text));
    case FieldType::Boolean: return text.empty() ? Value() : Value(text == "true" ? 1LL : 0LL);
    case FieldType::Integer: {
        const long long whole = bytes.toLongLong(&ok);
        return ok ? Value(whole) : Value();
    }
    case FieldType::Real: {
        const double number = bytes.toDouble(&ok);
        return ok ? Value(number) : Value();
    }
    }
    return std::string(text);
}

} // namespace

void appendRow(QByteArray &bytes, const double (&place)[3], const std::vector<QByteArray> &texts)
{
    for (const double number : place)
        appendRaw(bytes, number);
    for (const QByteArray &text : texts) {
        appendRaw<qint64>(bytes, text.isNull() ? noValue : text.size());
        bytes += text;
    }
}

bool takeRow(std::string_view &bytes, const std::vector<Field> &fields, Feature &feature)
{
    if (bytes.empty())
        return false;
    feature.x = takeRaw<double>(bytes);
    feature.y = takeRaw<double>(bytes);
    feature.z = takeRaw<double>(bytes);
    feature.hasZ = true;
    feature.values.clear();
    for (const Field &field : fields) {
        const auto size = takeRaw<qint64>(bytes);
        if (size == noValue) {
            feature.values.emplace_back();
            continue;
        }
        const auto length = static_cast<std::size_t>(size);
        feature.values.push_back(valueOf(bytes.substr(0, length), field.type));
        bytes.remove_prefix(length);
    }
    return true;
}

} // namespace KelStd::cli::vector
