// A run over the records of a source: order, messages, rejects and statuses are those of a run over
// lines.

#include <cli/run/RecordRun.h>

#include <cli/run/Input.h>
#include <cli/terminal/Console.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace KelStd {
namespace {

using cli::ExitStatus;

/// Doubles the easting; refuses negative ones and warns of zero.
class DoublingTaker : public cli::PositionTaker
{
public:
    bool take(const positions::ReadPosition &read, QByteArray &bytes, QString &reason) override
    {
        const double easting = read.position.getENU().e;
        if (easting < 0) {
            reason = QStringLiteral("it is negative");
            return false;
        }
        if (easting == 0)
            reason = QStringLiteral("warning: it is zero");
        bytes += QByteArray(read.name.data(), static_cast<int>(read.name.size())) + ' '
                 + QByteArray::number(2 * easting) + ' ' + QByteArray(read.extras.front().data())
                 + '\n';
        return true;
    }
};

class DoublingJob : public cli::PositionJob
{
public:
    QByteArray begin(const positions::InputColumns &columns) override
    {
        return columns.extras.front().name.toUtf8() + '\n';
    }
    QByteArray ending() const override { return "end\n"; }
    std::unique_ptr<cli::PositionTaker> makeTaker() const override
    {
        return std::make_unique<DoublingTaker>();
    }
};

/// Eastings from a list; a record whose `failure` is set for a missing one.
class ListSource : public cli::RecordSource
{
public:
    explicit ListSource(std::vector<std::optional<double>> eastings, bool breaks = false)
        : m_eastings(std::move(eastings)), m_breaks(breaks)
    {}

    QString displayName() const override { return QStringLiteral("list"); }
    QString item() const override { return QStringLiteral("entry"); }
    positions::InputColumns columns() const override
    {
        positions::InputColumns columns;
        columns.extras = {{QStringLiteral("note"), positions::ExtraColumn::Kind::Text}};
        return columns;
    }
    QByteArray headerLine() const override { return "entries"; }
    void endAt(const cli::streams::StopRequests *) override {}
    bool isStopped() const override { return false; }
    bool isReady() override { return true; }
    Result next(cli::SourceRecord &record) override
    {
        if (m_next == m_eastings.size())
            return m_breaks ? Result::Error : Result::End;
        const auto &easting = m_eastings[m_next++];
        record.number = static_cast<qint64>(m_next);
        record.name = 'P' + QByteArray::number(record.number);
        record.extras = {"x"};
        record.source = "entry " + QByteArray::number(record.number);
        if (easting)
            record.position = Pos::fromENU(*easting, 0, 0);
        else
            record.failure = QStringLiteral("there is none");
        return Result::Record;
    }
    QString errorText() const override { return QStringLiteral("it broke"); }
    QStringList remarks() const override { return {QStringLiteral("that was all")}; }

private:
    std::vector<std::optional<double>> m_eastings;
    bool m_breaks;
    std::size_t m_next = 0;
};

struct Ran
{
    ExitStatus status;
    std::string output;
    std::string reports;
};

Ran runOf(ListSource source, cli::RejectsFile *rejects = nullptr, std::size_t threads = 2)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    DoublingJob job;
    ExitStatus status = ExitStatus::Success;
    {
        cli::Console console;
        cli::RecordRun run(source, job, console);
        run.setThreads(threads);
        if (rejects != nullptr)
            run.setRejects(*rejects);
        status = run.run();
    }
    return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

TEST(RecordRun, PrintsWhatSucceedsAndReportsTheRest)
{
    const Ran ran = runOf(ListSource({1.5, {}, 0.0, -1.0, 2.0}));
    EXPECT_EQ(ran.status, ExitStatus::SomeFailed);
    EXPECT_EQ(ran.output, "note\nP1 3 x\nP3 0 x\nP5 4 x\nend\n");
    EXPECT_EQ(ran.reports, "kelstd: list:2: there is none\n"
                           "kelstd: list:3: warning: it is zero\n"
                           "kelstd: list:4: it is negative\n"
                           "kelstd: that was all\n"
                           "kelstd: 2 of 5 positions failed\n");
}

TEST(RecordRun, KeepsTheOrderOnSeveralThreads)
{
    std::vector<std::optional<double>> eastings(20'000, 1.0);
    for (std::size_t i = 0; i < eastings.size(); ++i)
        eastings[i] = static_cast<double>(i + 1);
    std::string expected = "note\n";
    for (int i = 1; i <= 20'000; ++i)
        expected += "P" + std::to_string(i) + " " + std::to_string(2 * i) + " x\n";
    const Ran ran = runOf(ListSource(std::move(eastings)), nullptr, 4);
    EXPECT_EQ(ran.status, ExitStatus::Success);
    EXPECT_TRUE(ran.output == expected + "end\n");
}

TEST(RecordRun, SaysWhyASourceEndedAndKeepsWhatCameBefore)
{
    const Ran ran = runOf(ListSource({1.0}, true));
    EXPECT_EQ(ran.status, ExitStatus::Environment);
    EXPECT_EQ(ran.output, "note\nP1 2 x\nend\n");
    EXPECT_EQ(ran.reports, "kelstd: cannot read list: it broke\n");
}

TEST(RecordRun, KeepsWhatFailedBelowTheHeaderOfTheSource)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("rejects"));
    cli::RejectsFile rejects;
    QString error;
    ASSERT_TRUE(rejects.open(file, cli::Input(), QString(), error));
    EXPECT_EQ(runOf(ListSource({{}, 1.0, -1.0}), &rejects).status, ExitStatus::SomeFailed);
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), "entries\nentry 1\nentry 3\n");
}

} // namespace
} // namespace KelStd
