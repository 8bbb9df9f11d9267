#include <KelStd/text/RaisedException.h>

#include <exception>

namespace KelStd {

namespace {

class RaisedException : public std::exception
{
public:
    explicit RaisedException(const char *message) : m_message(message) {}

    const char *what() const noexcept override { return m_message; }

private:
    const char *m_message;
};

} // namespace

void raiseByPointer(const char *message)
{
    throw static_cast<std::exception *>(new RaisedException(message));
}

void raiseByValue()
{
    throw RaisedException("");
}

} // namespace KelStd
