// ZemError.h: the base of all exceptions of the system, and the one for program errors.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <exception>

namespace Zem {

/// Base of everything the system throws. An immutable value: may be copied and passed between threads.
class Exception : public std::exception
{
public:
    explicit Exception(QString const &text);
    ~Exception() override;

    QString const &getText() const noexcept { return text_; }
    /// The text as UTF-8; valid as long as this object.
    char const *what() const noexcept override { return utf8_.constData(); }

private:
    QString text_;
    QByteArray utf8_;
};

/// A mistake in the calling program, never one of the user. Fatal for the operation that throws it.
class ProgError : public Exception
{
public:
    /// `function` is the qualified name of the throwing function, `file` and `line` its place, `text` what is wrong.
    /// The text becomes "function (file:line): text".
    ProgError(char const *function, char const *file, unsigned int line, char const *text);
    /// For a place that has no name. `fatal` tells the host that it should not go on.
    ProgError(char const *text, bool fatal);
    ~ProgError() override;

    bool isFatal() const noexcept { return fatal_; }

private:
    bool fatal_ = true;
};

} // namespace Zem
