#include "support/LogCapture.h"
#include "support/Printers.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>

#include <QtCore/QList>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct Message
{
    QtMsgType type;
    QString category;
    QString text;
};

/// Collects what goes to Qt's message handler while it lives.
class MessageCapture
{
public:
    MessageCapture()
    {
        s_messages.clear();
        m_previous = qInstallMessageHandler(collect);
    }
    ~MessageCapture() { qInstallMessageHandler(m_previous); }
    MessageCapture(const MessageCapture &) = delete;
    MessageCapture &operator=(const MessageCapture &) = delete;

    static const QList<Message> &messages() { return s_messages; }

private:
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        s_messages.append({type, QString::fromLatin1(context.category), text});
    }

    static inline QList<Message> s_messages;
    QtMessageHandler m_previous = nullptr;
};

LogLibrary &log()
{
    return *AppConfig::getInstance().module_logLib();
}

TEST(LogLibrary, LevelsAre32BitNumbersAmongThemOneAndTwo)
{
    EXPECT_EQ(sizeof(ELogType), 4U);
    EXPECT_EQ(static_cast<int>(LogType_Warning), 1);
    EXPECT_EQ(static_cast<int>(LogType_Error), 2);
}

TEST(LogLibrary, SinkReceivesEveryArgument)
{
    const test::LogCapture captured;
    log().addLog(QStringLiteral("app_log"), QStringLiteral("a point failed"), LogType_Error, true);
    log().addLog(QStringLiteral("other"), QString(), LogType_Warning, false);

    ASSERT_EQ(captured.entries().size(), 2);
    const auto &first = captured.entries().at(0);
    EXPECT_EQ(first.module, QStringLiteral("app_log"));
    EXPECT_EQ(first.text, QStringLiteral("a point failed"));
    EXPECT_EQ(first.type, LogType_Error);
    EXPECT_TRUE(first.flag);
    const auto &second = captured.entries().at(1);
    EXPECT_EQ(second.module, QStringLiteral("other"));
    EXPECT_EQ(second.text, QString());
    EXPECT_EQ(second.type, LogType_Warning);
    EXPECT_FALSE(second.flag);
}

TEST(LogLibrary, TheLastSinkAloneReceives)
{
    int first = 0;
    int second = 0;
    const auto countInto = [](int *count) {
        return [count](const QString &, const QString &, ELogType, bool) { ++*count; };
    };
    LogLibrary::setSink(countInto(&first));
    log().addLog(QStringLiteral("m"), QStringLiteral("t"), LogType_Error, false);
    LogLibrary::setSink(countInto(&second));
    log().addLog(QStringLiteral("m"), QStringLiteral("t"), LogType_Error, false);
    log().addLog(QStringLiteral("m"), QStringLiteral("t"), LogType_Error, false);
    LogLibrary::setSink({});

    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST(LogLibrary, AnEmptyFunctionRestoresQtsMessageHandler)
{
    {
        const test::LogCapture captured;
        const MessageCapture messages;
        log().addLog(QStringLiteral("app_log"), QStringLiteral("seen"), LogType_Error, false);
        EXPECT_TRUE(MessageCapture::messages().isEmpty());
        EXPECT_EQ(captured.entries().size(), 1);
    }
    const MessageCapture messages;
    LogLibrary::setSink({});
    log().addLog(QStringLiteral("app_log"), QStringLiteral("seen"), LogType_Error, false);
    EXPECT_EQ(MessageCapture::messages().size(), 1);
}

TEST(LogLibrary, DefaultSinkKeepsTheLevelTheModuleAndTheText)
{
    struct Row
    {
        ELogType level;
        QtMsgType expected;
    };
    const Row rows[] = {{LogType_Message, QtInfoMsg},
                        {LogType_Warning, QtWarningMsg},
                        {LogType_Error, QtCriticalMsg}};
    for (const Row &row : rows) {
        SCOPED_TRACE(static_cast<int>(row.level));
        const MessageCapture messages;
        log().addLog(QStringLiteral("app_log"), QString::fromUtf8("100% schief: \"ü\""), row.level,
                     false);
        ASSERT_EQ(MessageCapture::messages().size(), 1);
        const Message &message = MessageCapture::messages().first();
        EXPECT_EQ(message.type, row.expected);
        EXPECT_EQ(message.category, QStringLiteral("kelstd"));
        EXPECT_TRUE(message.text.contains(QStringLiteral("app_log")));
        EXPECT_TRUE(message.text.contains(QString::fromUtf8("100% schief: \"ü\"")));
    }
}

} // namespace
} // namespace KelStd
