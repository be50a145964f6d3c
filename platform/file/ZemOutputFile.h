// ZemOutputFile.h: OutputFile, a file that is there completely or not at all.
// Different files may be written on different threads at once; one object belongs to one thread.
#pragma once

#include <ZemError.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <string_view>

namespace Zem {

/// A file cannot be written. The text names the file and the reason.
class FileError : public Exception
{
public:
    using Exception::Exception;
};

/// Takes bytes into a temporary file beside the target, which replaces the target in commit(). Destruction without it
/// leaves the target as it was. Every operation throws FileError with file, step and reason; afterwards only the
/// destructor may follow.
class OutputFile
{
public:
    /// A symbolic link is followed. A file that is replaced keeps its permissions, and is refused when it is
    /// write-protected or no ordinary file.
    explicit OutputFile(QString const &fileName);
    ~OutputFile();
    OutputFile(OutputFile const &) = delete;
    OutputFile &operator=(OutputFile const &) = delete;

    QString const &getName() const { return name_; }
    /// The bytes written so far.
    std::size_t getSize() const { return size_; }
    void write(std::string_view bytes);
    /// All bytes are on the medium, under the name of the target, when this returns. Only once.
    void commit();

private:
    unsigned int checkTarget(bool *exists) const;
    void createTemporary(unsigned int mode);
    void abandon();
    void syncFolder() const;
    [[noreturn]] void fail(char const *step) const;

    QString name_;
    QByteArray target_;
    QByteArray folder_;
    QByteArray temporary_; // empty when there is none to remove
    std::size_t size_ = 0;
    int file_ = -1;
};

} // namespace Zem
