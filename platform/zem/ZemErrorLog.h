// ZemErrorLog.h: where operations on files report what went wrong.
#pragma once

#include <QtCore/QString>

namespace Zem {

/// Ends a message of an ErrorLog.
inline constexpr char END_LOG = '\n';

/// A message sink: write the pieces of a message, then END_LOG. One log is used from one thread at a time.
class ErrorLog
{
public:
    /// With `echo` each finished message is also written to the standard error output, as UTF-8.
    explicit ErrorLog(bool echo);
    ErrorLog(ErrorLog const &) = delete;
    ErrorLog &operator=(ErrorLog const &) = delete;

    ErrorLog &operator<<(QString const &text);
    ErrorLog &operator<<(char character);

    /// Everything written so far: each finished message with its line end, then what stands of an unfinished one.
    QString const &getLog() const noexcept { return text_; }

private:
    void finishMessage();

    QString text_;
    qsizetype messageBegin_ = 0;
    bool echo_;
};

} // namespace Zem
