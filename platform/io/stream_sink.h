// stream_sink.h: where the bytes of an OutStream go.
#pragma once

#include <ZemOutputFile.h>

#include <QtCore/QString>

#include <cstddef>
#include <iosfwd>
#include <optional>

namespace Zem::IO {

/// Takes bytes and completes them in commit(); destruction without it gives them up. Both operations throw
/// StreamException with file, step and reason.
class StreamSink
{
public:
    virtual ~StreamSink() = default;
    virtual void write(char const *bytes, std::size_t size) = 0;
    virtual void commit() = 0;
};

/// A temporary file beside the target, which it replaces in commit().
class FileSink : public StreamSink
{
public:
    /// Throws StreamException when the target cannot be replaced.
    explicit FileSink(QString const &fileName);

    void write(char const *bytes, std::size_t size) override;
    void commit() override;

private:
    std::optional<OutputFile> file_;
};

/// A standard stream that belongs to someone else.
class ForeignSink : public StreamSink
{
public:
    ForeignSink(std::ostream *stream, QString const &name) : stream_(stream), name_(name) {}

    void write(char const *bytes, std::size_t size) override;
    void commit() override;

private:
    void check() const;

    std::ostream *stream_;
    QString name_;
};

} // namespace Zem::IO
