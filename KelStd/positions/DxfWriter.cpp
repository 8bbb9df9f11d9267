#include <KelStd/positions/DxfWriter.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PlainNumbers.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr int pieceBytes = 200;    // a string has at most 255
constexpr int maxLabelBytes = 250; // of a TEXT that readers of release 12 take

void appendGroup(QByteArray &bytes, int code, const QByteArray &value)
{
    bytes += QByteArray::number(code).rightJustified(3) + '\n' + value + '\n';
}

constexpr ushort lastAscii = 0x7E;
constexpr ushort lastLatin = 0xFF; ///< in the code page that the drawing names

QByteArray escaped(ushort unit)
{
    return QByteArray("\\") + "U+" + QByteArray::number(unit, 16).toUpper().rightJustified(4, '0');
}

/// In a TEXT "^" and "%%" begin characters of their own.
bool isSpecial(const QString &text, int place)
{
    const auto isPercent = [&text](int i) {
        return i >= 0 && i < text.size() && text.at(i) == QLatin1Char('%');
    };
    const QChar c = text.at(place);
    return c == QLatin1Char('\\') || c == QLatin1Char('^')
           || (isPercent(place) && (isPercent(place - 1) || isPercent(place + 1)));
}

/// Pieces of some `pieceBytes` that no escape is divided by. A blank at an end would be lost.
QList<QByteArray> pieces(const QString &text, ushort lastPlain)
{
    QList<QByteArray> all;
    QByteArray piece;
    for (int i = 0; i < text.size(); ++i) {
        const ushort unit = text.at(i).unicode();
        const bool isAtEnd = piece.isEmpty() || i == text.size() - 1;
        const bool isPlain =
            (unit >= 0x20 && unit <= lastAscii) || (unit >= 0xA0 && unit <= lastPlain);
        const bool isEscaped = !isPlain || isSpecial(text, i) || (isAtEnd && unit == ' ');
        piece += isEscaped ? escaped(unit) : QByteArray(1, static_cast<char>(unit));
        if (piece.size() >= pieceBytes && i + 1 < text.size() && unit != ' ') {
            all += piece;
            piece.clear();
        }
    }
    all += piece;
    return all;
}

QString stringOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

void appendAttribute(QByteArray &bytes, const QString &name, std::string_view value, bool isNumber)
{
    if (value.empty())
        return;
    // The first such sign ends the name.
    const QByteArray key = pieces(name, lastAscii).join().replace("=", escaped('=')) + '=';
    if (isNumber) {
        appendGroup(bytes, 1000, key);
        appendGroup(bytes, 1040, QByteArray(value.data(), static_cast<int>(value.size())));
        return;
    }
    const QList<QByteArray> parts = pieces(stringOf(value), lastAscii);
    for (int i = 0; i < parts.size(); ++i) {
        const bool isLast = i + 1 == parts.size();
        appendGroup(bytes, 1000, (i == 0 ? key : QByteArray()) + parts[i] + (isLast ? "" : "\\"));
    }
}

/// The points are drawn as crosses, half a unit large; the layers and the application are declared.
const QByteArray tables = "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n"
                          "  9\n$DWGCODEPAGE\n  3\nANSI_1252\n"
                          "  9\n$PDMODE\n 70\n     2\n  9\n$PDSIZE\n 40\n0.5\n  0\nENDSEC\n"
                          "  0\nSECTION\n  2\nTABLES\n"
                          "  0\nTABLE\n  2\nLTYPE\n 70\n     1\n  0\nLTYPE\n  2\nCONTINUOUS\n"
                          " 70\n     0\n  3\nSolid line\n 72\n    65\n 73\n     0\n 40\n0.0\n"
                          "  0\nENDTAB\n"
                          "  0\nTABLE\n  2\nLAYER\n 70\n     2\n"
                          "  0\nLAYER\n  2\nPOINTS\n 70\n     0\n 62\n     7\n  6\nCONTINUOUS\n"
                          "  0\nLAYER\n  2\nNAMES\n 70\n     0\n 62\n     7\n  6\nCONTINUOUS\n"
                          "  0\nENDTAB\n"
                          "  0\nTABLE\n  2\nAPPID\n 70\n     1\n  0\nAPPID\n  2\nKELSTD\n"
                          " 70\n     0\n  0\nENDTAB\n"
                          "  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";

} // namespace

QByteArray DxfWriter::begin(const InputColumns &columns)
{
    m_columns.take(printedColumns(columns));
    m_hasNames = columns.hasNames;
    QByteArray heading;
    const auto appendComment = [&heading](const QString &comment) {
        for (const QByteArray &piece : pieces(comment, lastAscii))
            appendGroup(heading, 999, piece);
    };
    appendComment(m_comment);
    appendGroup(heading, 999, "1 unit = " + QByteArray::number(m_metresPerUnit, 'g', 15) + " m");
    if (!m_definition.isEmpty())
        appendComment(m_definition);
    return heading + tables;
}

QByteArray DxfWriter::ending() const
{
    return "  0\nENDSEC\n  0\nEOF\n";
}

void DxfWriter::appendPoint(QByteArray &bytes, const char *layer, const Location &location) const
{
    appendGroup(bytes, 8, layer);
    const double values[] = {location.get_NEH_E() / m_metresPerUnit,
                             location.get_NEH_N() / m_metresPerUnit,
                             location.get_NEH_H() / m_metresPerUnit};
    int code = 10;
    for (const double value : values) {
        QByteArray number;
        appendNumber(number, value, csvLengthDecimals);
        appendGroup(bytes, code, number);
        code += 10;
    }
}

void DxfWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    appendGroup(bytes, 0, "POINT");
    appendPoint(bytes, "POINTS", position.location);
    appendGroup(bytes, 1001, "KELSTD");
    appendAttribute(bytes, QStringLiteral("point"), position.name, false);
    QByteArray buffer;
    for (const PrintedColumn &column : m_columns.all()) {
        const std::string_view text = AttributeColumns::text(printer(), column, position, buffer);
        appendAttribute(bytes, column.name, text, column.isNumber);
    }
    if (position.name.empty())
        return;
    const QByteArray label = pieces(stringOf(position.name), lastLatin).join();
    if (label.size() > maxLabelBytes)
        return; // the extended data has it
    appendGroup(bytes, 0, "TEXT");
    appendPoint(bytes, "NAMES", position.location);
    appendGroup(bytes, 40, "0.5");
    appendGroup(bytes, 1, label);
}

} // namespace KelStd::positions
