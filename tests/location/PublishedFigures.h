#pragma once

#include "support/Components.h"

#include <KelStd/coord/Location.h>
#include <KelStd/coord/Pos.h>

#include <QtCore/QString>

#include <array>
#include <optional>
#include <string>
#include <vector>

/// The vector file of published worked examples (tests/data/published_figures.txt says how it is
/// written). It is read strictly: an unknown word or a number that does not parse is an error, so
/// that a slip of the pen cannot switch a check off.
namespace KelStd::test {

/// The four frames of a Location, in its order.
enum class Frame
{
    Wgs84LLH,
    Wgs84XYZ,
    LocalLLH,
    LocalNEH
};

/// The position of a frame of `location`.
const Pos &frameOf(const Location &location, Frame frame);

/// One component as published: its value, and half a unit of its last digit.
struct Figure
{
    double value;
    double halfUnit;
};

struct ExpectedFrame
{
    Frame frame;
    std::array<std::optional<Figure>, 3> figures;
    std::array<double, 3> metresPerUnit{1.0, 1.0, 1.0};
};

struct PublishedCase
{
    int line = 0;
    QString system; ///< the document's file name
    QString source;
    Frame from{};
    Pos start;
    std::vector<ExpectedFrame> expected;
    std::array<double, 3> allowed{}; ///< where a publication is known to differ, else 0
};

struct PublishedFigures
{
    std::vector<PublishedCase> cases;
    std::vector<std::string> errors; ///< with line numbers
};

PublishedFigures readPublishedFigures(const QString &path);

/// The file published_figures.txt, read once.
const PublishedFigures &publishedFigures();

/// The file names of the systems of the cases, each once.
std::vector<std::string> publishedSystems();

QString systemPath(const QString &fileName);

/// A name for a parameterised test: letters, digits and underscores.
std::string testName(const QString &text);

} // namespace KelStd::test
