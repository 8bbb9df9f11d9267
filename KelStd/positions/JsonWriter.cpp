#include <KelStd/positions/JsonWriter.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/PlainNumbers.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// In quotation marks, with what has to be escaped.
void appendText(QByteArray &bytes, std::string_view text)
{
    const auto isPlain = [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; };
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        bytes += '"';
        bytes.append(text.data(), static_cast<int>(text.size()));
        bytes += '"';
        return;
    }
    const QJsonArray array{QString::fromUtf8(text.data(), static_cast<int>(text.size()))};
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    bytes += json.mid(1, json.size() - 2); // without the array's brackets
}

void appendText(QByteArray &bytes, const QByteArray &text)
{
    appendText(bytes, std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
}

} // namespace

QString JsonWriter::mistakeIn(const InputColumns &columns) const
{
    return PrintedColumns(m_printer, columns, m_selection).mistake();
}

QByteArray JsonWriter::begin(const InputColumns &columns)
{
    const PrintedColumns printed(m_printer, columns, m_selection);
    m_columns.clear();
    for (const PrintedColumn &column : printed.all()) {
        if (column.kind == PrintedColumn::Kind::Name && !columns.hasNames && !printed.areNamed())
            continue;
        QByteArray key;
        appendText(key, column.name.toUtf8());
        m_columns.push_back({column, key + ':'});
    }
    return {};
}

void JsonWriter::append(QByteArray &bytes, const PrintedPosition &position) const
{
    QByteArray buffer;
    bytes += '{';
    for (const auto &[column, key] : m_columns) {
        bytes += key;
        appendValue(bytes, column, position, buffer);
        bytes += ',';
    }
    if (m_columns.empty())
        bytes += '}';
    else
        bytes.back() = '}'; // in place of the last comma
}

/// A number and a truth value as they stand, a missing value as null.
void JsonWriter::appendValue(QByteArray &bytes, const PrintedColumn &column,
                             const PrintedPosition &position, QByteArray &buffer) const
{
    const Location *const location = column.locationIn(position);
    if (location != nullptr && column.isNumber) {
        m_printer.append(bytes, *column.component(), *location);
        return;
    }
    if (location != nullptr) {
        buffer.clear();
        m_printer.append(buffer, *column.component(), *location);
        appendText(bytes, buffer);
        return;
    }
    const std::string_view text = PrintedColumns::text(column, position, buffer);
    const bool isExtra = column.kind == PrintedColumn::Kind::Extra;
    const bool isText =
        !column.isNumber && (!isExtra || column.extraKind != ExtraColumn::Kind::Boolean);
    if (isText ? isExtra && text.data() == nullptr : text.empty())
        bytes += "null";
    else if (isText)
        appendText(bytes, text);
    else
        bytes.append(text.data(), static_cast<int>(text.size()));
}

void JsonWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    append(bytes, position);
    bytes += '\n';
}

QByteArray GeoJsonWriter::begin(const InputColumns &columns)
{
    JsonWriter::begin(columns);
    return "{\"type\":\"FeatureCollection\",\"features\":[\n";
}

QByteArray GeoJsonWriter::separator() const
{
    return ",";
}

QByteArray GeoJsonWriter::ending() const
{
    return "]}\n";
}

void GeoJsonWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    const Location &location = position.location;
    bytes += "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":[";
    appendNumber(bytes, within180(location.get_WGS84_LLH_Long()), csvAngleDecimals);
    bytes += ',';
    appendNumber(bytes, location.get_WGS84_LLH_Lat(), csvAngleDecimals);
    bytes += ',';
    appendNumber(bytes, location.get_WGS84_LLH_Height(), csvLengthDecimals);
    bytes += "]},\"properties\":";
    append(bytes, position);
    bytes += "}\n";
}

} // namespace KelStd::positions
