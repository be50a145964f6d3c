// cli.h: what all verbs of the command share: exit codes, messages, progress and safe output.
#pragma once

#include <ZemError.h>

#include <QtCore/QString>

#include <cstdio>
#include <functional>

namespace Zem::Zemfig {

/// Exit codes, as `zemfig --help` tells them.
enum ExitCode { EXIT_DONE = 0, EXIT_USAGE = 1, EXIT_INPUT = 2, EXIT_OUTPUT = 3, EXIT_DIFFERENT = 4 };

/// Input that cannot be used. The text names file, place and reason; several lines are several reasons.
class InputError : public Exception
{
public:
    using Exception::Exception;
};

/// Output that could not be written. What stood at its place before still stands there.
class OutputFailure : public Exception
{
public:
    using Exception::Exception;
};

/// A wrong use of the command that its options alone cannot tell.
class UsageError : public Exception
{
public:
    using Exception::Exception;
};

/// What was compared is not equal, as has been told already: an answer, not an error.
class PagesDiffer : public Exception
{
public:
    PagesDiffer() : Exception(QString()) {}
};

/// Writes a line to standard error.
void message(QString const &text);
/// Writes to standard output, as it stands.
void print(QString const &text);

/// Writes a file as a whole: beside its place first, then renamed. Throws OutputFailure.
void writeFile(QString const &fileName, QByteArray const &content);

/// A bar on standard error, and only when that is a terminal.
class Progress
{
public:
    explicit Progress(int total);
    ~Progress();
    Progress(Progress const &) = delete;
    Progress &operator=(Progress const &) = delete;

    void advance();

private:
    void show() const;

    int total_;
    int done_ = 0;
    bool visible_;
};

/// Runs a verb and turns what it throws into a message and an exit code.
int runVerb(std::function<void()> const &verb);

} // namespace Zem::Zemfig
