// ZemObject.h: an object that is kept in a file of its own or inside the stream of another.
#pragma once

#include <QtCore/QString>

namespace Zem {

class ErrorLog;

namespace IO {
class InStream;
class OutStream;
} // namespace IO

/// A persistent object and the file it belongs to. A derived class tells its data; this class tells where they go.
/// The two numbers of each operation are handed on to loadData() and saveData() as they are; -1 means no choice.
/// Not thread-safe.
class Object
{
public:
    virtual ~Object();

    /// The file last named, saved or loaded; empty when there is none.
    QString const &getFileName() const noexcept { return fileName_; }
    void setFileName(QString const &fileName) { fileName_ = fileName; }

    /// Writes the data as a file of its own and takes over the name. False when that failed: the reason is then in
    /// `log` (which may be null), and an existing file and the name stay as they were.
    bool saveHeader(QString const &fileName, ErrorLog *log, int first, int second);
    /// Reads a file that saveHeader() wrote and takes over the name. False when that failed: the reason is then in
    /// `log` (which may be null), and the name stays as it was; the data are what loadData() left.
    bool loadHeader(QString const &fileName, ErrorLog *log, int first, int second);

    /// The same inside an open stream: a block with the file name, then the data. Throw IO::StreamException.
    void saveStreamHeader(IO::OutStream &stream, int first, int second) const;
    void loadStreamHeader(IO::InStream &stream, int first, int second);

protected:
    /// `fileType` is the type word of a file of its own: 1 to 51 printable ASCII characters.
    explicit Object(QString const &fileType);
    Object(Object const &);
    Object &operator=(Object const &);

    /// Both throw IO::StreamException.
    virtual void loadData(IO::InStream &stream, int first, int second) = 0;
    virtual void saveData(IO::OutStream &stream, int first, int second) const = 0;

private:
    QString fileType_;
    QString fileName_;
};

} // namespace Zem
