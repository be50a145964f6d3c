// ZemStreamBase.h: what reading and writing a block stream have in common, and the error of both.
// The bytes are told in docs/formats/block-stream.md.
#pragma once

#include <ZemError.h>

#include <QtCore/QString>

#include <vector>

namespace Zem::IO {

/// Bad stream data, or a medium that does not take or give the bytes. The text names the file and what was wrong.
class StreamException : public Exception
{
public:
    explicit StreamException(QString const &text);
    ~StreamException() override;
};

/// The header of a block stream: a type word that tells what kind of document follows, and the document's version.
/// Different streams may be used on different threads at once; one stream is used from one thread at a time.
class Stream
{
public:
    Stream(Stream const &) = delete;
    Stream &operator=(Stream const &) = delete;

    /// Whether opening worked. If not, getError() says why, and each use but destruction throws StreamException.
    bool isInit() const noexcept { return error_.isEmpty(); }
    /// Names the file and the reason; empty when opening worked.
    QString const &getError() const noexcept { return error_; }

    /// Upper and lower case differ.
    bool isOfType(QString const &fileType) const { return isInit() && fileType_ == fileType; }
    QString const &getFileType() const noexcept { return fileType_; }
    unsigned int getVersion() const noexcept { return version_; }

    /// Whether these first bytes of a file (64 or more; fewer are no stream) start a block stream of this type.
    static bool isOfFileType(std::vector<char> const &head, QString const &fileType);

    /// The number of bytes that OutStream::writeString() writes for the text. Throws ProgError above 4 GiB.
    static unsigned int sizeOf(QString const &text);

protected:
    /// `name` is the file's name for messages.
    explicit Stream(QString const &name);
    ~Stream();

    void setHeader(QString const &fileType, unsigned int version);
    void setError(QString const &error) { error_ = error; }
    QString const &getName() const noexcept { return name_; }
    [[noreturn]] void fail(QString const &what) const;
    void requireInit() const;

private:
    QString name_;
    QString fileType_;
    QString error_;
    unsigned int version_ = 0;
};

} // namespace Zem::IO
