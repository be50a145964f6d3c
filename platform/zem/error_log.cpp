#include <ZemErrorLog.h>

#include <cstdio>

namespace Zem {

ErrorLog::ErrorLog(bool echo) : echo_(echo)
{
}

ErrorLog &ErrorLog::operator<<(QString const &text)
{
    text_ += text;
    return *this;
}

ErrorLog &ErrorLog::operator<<(char character)
{
    text_ += QLatin1Char(character);
    if (character == END_LOG) {
        finishMessage();
    }
    return *this;
}

void ErrorLog::finishMessage()
{
    if (echo_) {
        QByteArray const message = text_.mid(messageBegin_).toUtf8();
        std::fwrite(message.constData(), 1, static_cast<std::size_t>(message.size()), stderr);
    }
    messageBegin_ = text_.size();
}

} // namespace Zem
