#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/positions/ColumnChoice.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/QuotedBreaks.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace KelStd::positions {

/// Longer than any position; of a longer line nothing is read. Lines that a quoted field goes over
/// count as one.
inline constexpr int maxLineBytes = 4096;

/// Reads positions of one frame, one a line.
///
///     PositionParser parser(Frame::LocalProjected);
///     for (qint64 number = 1; reader.next(line); ++number) {
///         switch (parser.parse(line, number)) {
///         case PositionParser::Result::Position: use(parser.position(), parser.name()); break;
///         case PositionParser::Result::Nothing: break;
///         case PositionParser::Result::BadLine: report(number, parser.reason()); break;
///         case PositionParser::Result::BadHeader: throw Refused(parser.reason());
///         }
///     }
///     if (!parser.finish())
///         throw Refused(parser.reason());
///
/// Blank lines and lines that begin with # are skipped, but a line of headings counts also behind a
/// #, and a title or a remark that names another unit, or columns in other words, ends the run.
/// Headings say in which field each component stands; they may follow on lines of a title. Without
/// any the components stand in the order of the frame's columns, after a point name when the first
/// line has four fields. Every later line must have as many: a line that lost its height must not
/// be read as one that lost its name. A separator may end a line behind its last field. A choice of
/// columns goes before both. Headings further down must say the same: other headings end the run,
/// and so does a first line that is neither headings nor a position. A line that can be read in two
/// ways is refused with what removes the doubt.
///
/// Longitudes and latitudes [deg] may be typed in any form of `readTypedAngle`; lengths are plain
/// numbers in the unit of the form. Headings and a line of units below them may name other units,
/// which go before that of the form. Positions come out in degrees and metres. Two components
/// without a height are a position where the form has a `missingHeight`.
///
/// Headings that are not read are carried through, but those of the other frames in the program's
/// own output.
///
/// A parser is used by one thread at a time. Once the order is known, a copy reads any other line
/// of the input as this would, on another thread, too. Nothing is raised but `std::bad_alloc`.
class KELSTD_EXPORT PositionParser
{
public:
    /// What became of a line.
    enum class Result
    {
        Nothing,  ///< no position was to be expected: a header, a comment, a blank line
        Position, ///< `position`, `name` and `carried` have it
        BadLine,  ///< `reason` says what is wrong with this line; the next one may be right
        BadHeader ///< no further line can be read; `reason` says why, `reasonLine` where
    };

    /// Of an input of this form; `choice` says in which columns the components stand.
    explicit PositionParser(const InputForm &form,
                            std::optional<ColumnChoice> choice = std::nullopt);
    /// Of an input in metres and degrees.
    explicit PositionParser(Frame frame, InputHeight height = InputHeight::OfFrame,
                            std::optional<ColumnChoice> choice = std::nullopt);
    ~PositionParser();

    /// A copy reads on from where the other one is.
    PositionParser(const PositionParser &other);
    /// As the copy constructor.
    PositionParser &operator=(const PositionParser &other);

    /// One that was moved from can only be assigned to or destroyed.
    PositionParser(PositionParser &&other) noexcept;
    /// As the move constructor.
    PositionParser &operator=(PositionParser &&other) noexcept;

    /// Passes over so many lines at the beginning of the input, whatever they hold. To be set
    /// before the first line.
    void setSkippedLines(qint64 count);
    /// How many lines are passed over.
    qint64 skippedLines() const;

    /// Reads a line without its end. Where a field in quotation marks goes on to the next line, the
    /// lines are to be given as one, with the line breaks in it (`quotationMarksOf` tells it).
    ///
    /// \param line bytes in UTF-8, or else in Windows-1252; `name` and `carried` may look into them
    /// \param lineNumber its number in the input, from 1, for the messages
    Result parse(std::string_view line, qint64 lineNumber);

    /// The same with the same results, without the short way that most lines take.
    Result parseWithCare(std::string_view line, qint64 lineNumber);

    /// At the end of an input of which no line decided the order: false with the reason when it
    /// had lines that are neither headings nor positions.
    bool finish();

    /// How the lines are separated, as far as the lines until now have shown it.
    ListShape shape() const;

    /// The first line inside the quotation marks of the last position that looks like a position
    /// itself; 0 for none.
    qint64 enclosedLine() const;

    /// Why the last line was refused; empty when it was not.
    QString reason() const;

    /// The line that the reason is about.
    qint64 reasonLine() const;

    /// The position of the last line that was one, until the next is read: longitude, latitude
    /// [deg], height [m], or X, Y, Z [m], or of the plane easting, northing, height [m].
    const Pos &position() const;

    /// The point's name in UTF-8, empty when it has none; valid as long as the line's bytes and
    /// until the next line is read.
    std::string_view name() const;

    /// The fields besides those of the position that are carried through, in UTF-8;
    /// valid as `name`.
    const std::vector<std::string_view> &carried() const;

    /// What the projected height is above, in the words of `heightReference`, where a column of the
    /// input says so; otherwise empty. In UTF-8, valid as `name`.
    std::string_view heightReference() const;

    /// Whether a line has decided the order of the fields: below headings the first position, since
    /// a line of units may stand between them.
    bool knowsOrder() const;

    /// The line that decided it: the headings, or the first position where there are none. 0 before
    /// the order is known.
    qint64 orderLine() const;

    /// Whether the lines have names. False before the order is known.
    bool hasNames() const;

    /// A heading for each carried field. Empty before the order is known.
    QStringList carriedHeadings() const;

    /// Gives the carried fields in another order, that of the inputs before: nothing changes where
    /// the headings are not those of `carriedHeadings`, each once. To be called once the order is
    /// known.
    void arrangeCarried(const QStringList &headings);

    /// Whether there is a column of heights beside a height for the positions that have none, which
    /// is taken where a field is empty.
    bool fillsHeights() const;

    /// Whether it was taken for the last position.
    bool isHeightTaken() const;

    /// What is to be said once the order is known, a text each: which columns the headings name
    /// that go nowhere, what is not read in the unit of the form, what height positions without one
    /// have.
    QStringList notes() const;

    /// Whether the last line was text, but no UTF-8, and was taken for Windows-1252. Remarks do not
    /// count.
    bool isInWindows1252() const;

    /// The mark before decimals that the numbers of the last position show; nothing where they are
    /// whole ones. Where the first position has decimal commas, points are refused further down.
    std::optional<DecimalMark> decimalMark() const;

    /// The header line, behind lines of units that belong to it; empty when there is none.
    QByteArray headerLine() const;

private:
    class Reading;
    std::unique_ptr<Reading> m_reading;
};

} // namespace KelStd::positions
