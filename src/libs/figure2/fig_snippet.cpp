#include "ZemFig2Snippet.h"

#include "fig_losses.h"

#include <ZemTranslate.h>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int SNIPPET_STREAM_VERSION = 1;

} // namespace

Snippet::Snippet(StageIdentifier const &stage, Figure const *source, SnapshotElementFilter const &filter)
    : SnapshotData(stage, source, filter)
{
}

bool Snippet::canOpenFile(std::vector<char> const &head)
{
    return IO::Stream::isOfFileType(head, FILE_TYPE_ID);
}

bool Snippet::saveFile(QString const &fileName, Snippet const *snippet, ErrorLog *log)
{
    try {
        IO::OutStream stream(fileName, FILE_TYPE_ID, SNIPPET_STREAM_VERSION);
        if (!stream.isInit())
            throw IO::StreamException(translate("Figure_err", "snippt output stream initialization failed"));
        snippet->save(&stream);
        stream.close();
    } catch (IO::StreamException const &error) {
        *log << error.getText() << END_LOG;
        return false;
    }
    if (Figure const *figure = snippet->getPresentFigure())
        logLosses(*figure, log);
    return true;
}

Snippet *Snippet::loadFile(QString const &fileName, ErrorLog *log)
{
    try {
        IO::InStream stream(fileName);
        if (!stream.isInit())
            throw IO::StreamException(translate("Figure_err", "snippet input stream initialization failed"));
        if (!stream.isOfType(FILE_TYPE_ID))
            throw IO::StreamException(translate("Figure_err", "file is no valid snippet file"));
        auto snippet = std::make_unique<Snippet>();
        snippet->load(&stream);
        return snippet.release();
    } catch (IO::StreamException const &error) {
        *log << error.getText() << END_LOG;
        return nullptr;
    }
}

} // namespace Zem::Fig2
