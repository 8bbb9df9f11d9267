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

QByteArray JsonWriter::begin(const InputColumns &columns)
{
    m_hasNames = columns.hasNames;
    m_keys.clear();
    for (const QString &name : columnNames(m_printer, columns)) {
        QByteArray key;
        appendText(key, name.toUtf8());
        m_keys.push_back(key + ':');
    }
    return {};
}

void JsonWriter::append(QByteArray &bytes, const PrintedPosition &position) const
{
    auto key = m_keys.begin();
    bytes += '{';
    if (m_hasNames) {
        bytes += *key;
        appendText(bytes, position.name);
        bytes += ',';
    }
    for (const Column &column : columns()) {
        bytes += *++key;
        if (m_printer.printsNumbers(column)) {
            m_printer.append(bytes, column, position.location);
        } else {
            QByteArray text;
            m_printer.append(text, column, position.location);
            appendText(bytes, text);
        }
        bytes += ',';
    }
    bytes += *++key;
    appendText(bytes, heightReference(position.geoidModel).toUtf8());
    for (const std::string_view field : position.carried) {
        bytes += ',';
        bytes += *++key;
        appendText(bytes, field);
    }
    bytes += '}';
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
