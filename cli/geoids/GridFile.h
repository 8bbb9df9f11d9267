#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

namespace KelStd::cli {

/// True when the file's name says that it holds a grid in the GGF layout.
bool isGgfName(const QString &name);

/// A geoid grid file in one of the two layouts that the library knows, looked at without PROJ.
class GridFile
{
public:
    enum class Format
    {
        Gtx,
        Ggf
    };

    /// Reads the header; false with the reason when there is none that makes sense.
    bool open(const QString &name, QString &reason);

    Format format() const { return m_format; }
    qint64 rows() const { return m_rows; }
    qint64 columns() const { return m_columns; }
    double latitudeSpacing() const { return m_latitudeSpacing; }   ///< [deg]
    double longitudeSpacing() const { return m_longitudeSpacing; } ///< [deg]

    /// Of a node [deg]; row 0 is the southernmost and column 0 the westernmost.
    double latitudeOf(qint64 row) const;
    double longitudeOf(qint64 column) const;

    /// Whether the file has the values that its header promises, where it is GTX nothing else, and
    /// every node a place on the earth; otherwise the reason.
    bool isComplete(QString &reason) const;

    /// Whether the last quarter of the values is nothing but bytes of zero, as in a file whose end
    /// was never written: the disk was full, or a copy was interrupted. A quarter smaller than the
    /// smallest block of a disk says nothing. Reads no further than to the first other byte.
    bool endsInZeros();

    /// One value and where it is.
    struct Node
    {
        double value;
        qint64 row;
        qint64 column;
    };

    struct Values
    {
        qint64 missing = 0;       ///< marked so, or such as PROJ takes for marked, or no number
        Node lowest{0.0, -1, -1}; ///< row -1: every value is missing
        Node highest{0.0, -1, -1};
    };

    /// Reads the values through in pieces of memory of a fixed size; false with the reason.
    bool readValues(Values &values, QString &reason);

private:
    void take(double value, qint64 index, Values &values) const;

    QFile m_file;
    Format m_format = Format::Gtx;
    qint64 m_headerSize = 0;
    bool m_isReversed = false; ///< the first row of the file is the northernmost
    qint64 m_rows = 0;
    qint64 m_columns = 0;
    double m_latitude = 0.0;
    double m_longitude = 0.0;
    double m_latitudeSpacing = 0.0;
    double m_longitudeSpacing = 0.0;
};

/// What is to be said of one that ends in zeros.
QString zerosText();

/// "GTX" or "GGF".
QString formatName(GridFile::Format format);

} // namespace KelStd::cli
