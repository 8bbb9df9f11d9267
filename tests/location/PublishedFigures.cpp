#include "location/PublishedFigures.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>

namespace KelStd::test {

namespace {

constexpr const char *frameWords[] = {"wgs84-llh", "wgs84-xyz", "local-llh", "local-neh"};

double halfUnitOfLastDigit(const QString &number)
{
    const int point = number.indexOf(QLatin1Char('.'));
    const int decimals = point < 0 ? 0 : number.size() - point - 1;
    return 0.5 * std::pow(10.0, -decimals);
}

/// A decimal number or degrees:minutes:seconds, the sign in front of all three.
std::optional<Figure> parseFigure(const QString &text)
{
    static const QRegularExpression decimal(QStringLiteral("\\A[+-]?\\d+(\\.\\d+)?\\z"));
    static const QRegularExpression sexagesimal(
        QStringLiteral("\\A([+-]?)(\\d+):([0-5]?\\d):([0-5]?\\d(?:\\.\\d+)?)\\z"));
    if (decimal.match(text).hasMatch())
        return Figure{text.toDouble(), halfUnitOfLastDigit(text)};
    const QRegularExpressionMatch match = sexagesimal.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const double sign = match.captured(1) == QLatin1String("-") ? -1.0 : 1.0;
    const double degrees = match.captured(2).toDouble() + match.captured(3).toDouble() / 60.0
                           + match.captured(4).toDouble() / 3600.0;
    return Figure{sign * degrees, halfUnitOfLastDigit(match.captured(4)) / 3600.0};
}

class Reader
{
public:
    PublishedFigures read(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            complain(path + QLatin1String(": ") + file.errorString());
        while (!file.atEnd()) {
            ++m_line;
            readLine(QString::fromUtf8(file.readLine()).trimmed());
        }
        closeCase();
        return m_result;
    }

private:
    void readLine(const QString &line)
    {
        if (line.startsWith(QLatin1Char('#')))
            return;
        if (line.isEmpty())
            return closeCase();
        const int gap = line.indexOf(QRegularExpression(QStringLiteral("\\s")));
        const QString keyword = line.left(gap);
        const QString rest = gap < 0 ? QString() : line.mid(gap).trimmed();
        if (!m_open) {
            m_open = true;
            m_case = {};
            m_case.line = m_line;
            m_unit = {1.0, 1.0, 1.0};
        }
        if (keyword == QLatin1String("system"))
            m_case.system = rest;
        else if (keyword == QLatin1String("source"))
            m_case.source = rest;
        else if (keyword == QLatin1String("from"))
            readFrom(rest);
        else if (keyword == QLatin1String("expect"))
            readExpect(rest);
        else if (keyword == QLatin1String("unit"))
            readUnit(rest);
        else if (keyword == QLatin1String("allow"))
            readAllow(rest);
        else
            complain(QLatin1String("unknown word ") + keyword);
    }

    void closeCase()
    {
        if (!m_open)
            return;
        m_open = false;
        if (m_case.system.isEmpty() || m_case.source.isEmpty() || m_case.expected.empty())
            complain(QStringLiteral("incomplete case"));
        m_result.cases.push_back(m_case);
    }

    QStringList wordsOf(const QString &text)
    {
        return text.section(QLatin1Char('#'), 0, 0)
            .split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    }

    std::optional<Frame> readFrame(const QStringList &words)
    {
        const auto found =
            std::find(std::begin(frameWords), std::end(frameWords), words.value(0).toStdString());
        if (found == std::end(frameWords) || words.size() != 4) {
            complain(QStringLiteral("a frame and three components are wanted"));
            return std::nullopt;
        }
        return static_cast<Frame>(found - std::begin(frameWords));
    }

    void readFrom(const QString &text)
    {
        const QStringList words = wordsOf(text);
        const auto frame = readFrame(words);
        std::array<double, 3> components{};
        for (int i = 0; frame && i < 3; ++i) {
            const auto figure = parseFigure(words.at(i + 1));
            if (!figure)
                complain(QLatin1String("no number: ") + words.at(i + 1));
            else
                components[static_cast<std::size_t>(i)] = figure->value;
        }
        m_case.from = frame.value_or(Frame{});
        m_case.start = Pos::fromXYZ(components[0], components[1], components[2]);
    }

    void readExpect(const QString &text)
    {
        const QStringList words = wordsOf(text);
        const auto frame = readFrame(words);
        if (!frame)
            return;
        ExpectedFrame expected{*frame, {}, m_unit};
        for (int i = 0; i < 3; ++i) {
            const QString &word = words.at(i + 1);
            if (word == QLatin1String("-"))
                continue;
            const auto figure = parseFigure(word);
            if (!figure)
                complain(QLatin1String("no number: ") + word);
            expected.figures[static_cast<std::size_t>(i)] = figure;
        }
        if (std::none_of(expected.figures.begin(), expected.figures.end(),
                         [](const auto &figure) { return figure.has_value(); }))
            complain(QStringLiteral("nothing is expected"));
        m_case.expected.push_back(expected);
    }

    void readUnit(const QString &text)
    {
        const QStringList words = wordsOf(text);
        if (words.size() != 3)
            return complain(QStringLiteral("three factors are wanted"));
        for (int i = 0; i < 3; ++i) {
            const double factor = words.at(i).toDouble();
            if (!(factor > 0.0))
                complain(QLatin1String("no factor: ") + words.at(i));
            m_unit[static_cast<std::size_t>(i)] = factor;
        }
    }

    void readAllow(const QString &text)
    {
        const QStringList words = wordsOf(text);
        const int component = words.value(0).toInt();
        const double amount = words.value(1).toDouble();
        if (component < 0 || component > 2 || !(amount > 0.0) || words.size() < 6)
            return complain(QStringLiteral("a component, an amount and a reason are wanted"));
        m_case.allowed[static_cast<std::size_t>(component)] = amount;
    }

    void complain(const QString &text)
    {
        m_result.errors.push_back(std::to_string(m_line) + ": " + text.toStdString());
    }

    PublishedFigures m_result;
    PublishedCase m_case;
    std::array<double, 3> m_unit{};
    int m_line = 0;
    bool m_open = false;
};

} // namespace

const Pos &frameOf(const Location &location, Frame frame)
{
    switch (frame) {
    case Frame::Wgs84LLH: return location.wgs84LLH;
    case Frame::Wgs84XYZ: return location.wgs84XYZ;
    case Frame::LocalLLH: return location.localLLH;
    case Frame::LocalNEH: break;
    }
    return location.localNEH;
}

PublishedFigures readPublishedFigures(const QString &path)
{
    return Reader().read(path);
}

const PublishedFigures &publishedFigures()
{
    static const PublishedFigures figures =
        readPublishedFigures(QStringLiteral(KELSTD_TEST_DATA_DIR "/published_figures.txt"));
    return figures;
}

std::vector<std::string> publishedSystems()
{
    std::vector<std::string> systems;
    for (const PublishedCase &published : publishedFigures().cases)
        systems.push_back(published.system.toStdString());
    std::sort(systems.begin(), systems.end());
    systems.erase(std::unique(systems.begin(), systems.end()), systems.end());
    return systems;
}

QString systemPath(const QString &fileName)
{
    return QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/") + fileName;
}

std::string testName(const QString &text)
{
    QString name = text;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")), QStringLiteral("_"));
    return name.toStdString();
}

} // namespace KelStd::test
