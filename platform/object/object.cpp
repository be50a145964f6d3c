#include <ZemErrorLog.h>
#include <ZemObject.h>
#include <ZemStream.h>
#include <ZemTranslate.h>

namespace Zem {

namespace {

constexpr unsigned int FILE_VERSION = 1;
constexpr unsigned int BLOCK_VERSION = 1; // the file name

void requireInit(IO::Stream const &stream)
{
    if (!stream.isInit()) {
        throw IO::StreamException(stream.getError());
    }
}

void requireKnownFile(IO::InStream const &stream, QString const &fileName, QString const &fileType)
{
    requireInit(stream);
    if (!stream.isOfType(fileType)) {
        throw IO::StreamException(translate("Object_err", "file '%1' is not of type '%2'").arg(fileName, fileType));
    }
    if (stream.getVersion() > FILE_VERSION) {
        throw IO::StreamException(translate("Object_err", "file '%1' is of a newer version").arg(fileName));
    }
}

/// Runs an operation on a file; false, with the reason in the log, when the stream failed.
template <class Operation>
bool reportFailure(ErrorLog *log, Operation operation)
{
    try {
        operation();
        return true;
    } catch (IO::StreamException const &error) {
        if (log) {
            *log << error.getText() << END_LOG;
        }
        return false;
    }
}

} // namespace

Object::Object(QString const &fileType) : fileType_(fileType)
{
}

Object::Object(Object const &) = default;

Object &Object::operator=(Object const &) = default;

Object::~Object() = default;

bool Object::saveHeader(QString const &fileName, ErrorLog *log, int first, int second)
{
    return reportFailure(log, [&] {
        IO::OutStream stream(fileName, fileType_, FILE_VERSION);
        requireInit(stream);
        saveData(stream, first, second);
        stream.close();
        fileName_ = fileName;
    });
}

bool Object::loadHeader(QString const &fileName, ErrorLog *log, int first, int second)
{
    return reportFailure(log, [&] {
        IO::InStream stream(fileName);
        requireKnownFile(stream, fileName, fileType_);
        loadData(stream, first, second);
        fileName_ = fileName;
    });
}

void Object::saveStreamHeader(IO::OutStream &stream, int first, int second) const
{
    stream.beginBlock(IO::Stream::sizeOf(fileName_), BLOCK_VERSION);
    stream.writeString(fileName_);
    stream.endBlock();
    saveData(stream, first, second);
}

void Object::loadStreamHeader(IO::InStream &stream, int first, int second)
{
    stream.openBlock();
    if (stream.getBlockVersion() > BLOCK_VERSION) {
        throw IO::StreamException(translate("Fig_BlockVersion_Error", "wrong block version"));
    }
    QString fileName;
    stream.readString(&fileName);
    stream.closeBlock();
    loadData(stream, first, second);
    fileName_ = fileName;
}

} // namespace Zem
