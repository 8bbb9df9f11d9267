#pragma once

#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PlainLine.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QString>

#include <array>

namespace KelStd::positions {

/// Three components in degrees and metres, in the order of their frame.
using Components = std::array<double, componentsPerFrame>;

/// Reads the components of a position from the fields of a line.
class ComponentReader
{
public:
    explicit ComponentReader(const InputForm &form) : m_form(form) {}

    /// Prepares the short way for lines of that order.
    void follow(const FieldOrder &order);

    /// Whether all lengths of that order are in metres.
    bool isInMetres() const { return m_isInMetres; }

    /// The short way through lines of the order that is followed; false where the line needs more
    /// care.
    bool readPlain(const PlainLine &line, const FieldOrder &order, Components &components) const;

    /// Empty, or why the line, which has as many fields as the order, is refused: it can be read in
    /// two ways, or a field is no value.
    QString read(const SplitLine &line, const FieldOrder &order, Components &components) const;

private:
    QString doubtOf(const SplitLine &line, const FieldOrder &order) const;
    bool isMissingHeight(int component, const QString &field) const;
    QString readComponent(int component, const QString &field, DecimalMark mark,
                          const FieldOrder &order, double &value) const;

    InputForm m_form;
    Components m_measures{1.0, 1.0, 1.0}; ///< of one in the unit of each component [m], [deg]
    bool m_isInMetres = false;
    bool m_hasOtherAngles = false; ///< whether angles are not degrees
};

} // namespace KelStd::positions
