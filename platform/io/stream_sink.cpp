#include "stream_sink.h"

#include <ZemStreamBase.h>
#include <ZemTranslate.h>

#include <ostream>

namespace Zem::IO {

namespace {

QString text(char const *message)
{
    return translate("IO_Stream_err", message);
}

/// Readers and writers of streams know one kind of failure.
template <class Step>
void asStreamException(Step const &step)
{
    try {
        step();
    } catch (FileError const &error) {
        throw StreamException(error.getText());
    }
}

} // namespace

FileSink::FileSink(QString const &fileName)
{
    asStreamException([&] { file_.emplace(fileName); });
}

void FileSink::write(char const *bytes, std::size_t size)
{
    asStreamException([&] { file_->write({bytes, size}); });
}

void FileSink::commit()
{
    asStreamException([this] { file_->commit(); });
}

void ForeignSink::write(char const *bytes, std::size_t size)
{
    try {
        stream_->write(bytes, static_cast<std::streamsize>(size));
    } catch (std::ios_base::failure const &) {
        // The stream may be set to throw; its state says the same.
    }
    check();
}

void ForeignSink::commit()
{
    try {
        stream_->flush();
    } catch (std::ios_base::failure const &) {
        // As above.
    }
    check();
}

void ForeignSink::check() const
{
    if (!*stream_) {
        throw StreamException(text("%1: cannot save, step \"%2\" failed").arg(name_, text("write")));
    }
}

} // namespace Zem::IO
