#include "ZemFig2Template.h"

#include "ZemFig2Chart.h"
#include "ZemFig2DataInterface.h"
#include "ZemFig2Import.h"
#include "fig_block.h"
#include "fig_losses.h"

#include <ZemOS.h>

#include <memory>
#include <optional>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int HINTS_BLOCK_VERSION = 2;
constexpr unsigned int TEMPLATE_STREAM_VERSION = 1;

/// Calls `act` for each chart that shows a token.
template <class Act>
void forEachChart(Figure const &figure, Act const &act)
{
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        auto const *chart = dynamic_cast<Chart const *>(*it);
        if (chart && !chart->getToken().isEmpty())
            act(chart);
    }
}

/// The hint that the registry has for the data of a chart; nothing when it has no such token.
std::optional<QString> hintOf(DataInterface const &dataInterface, QString const &token)
{
    for (Variable_t const type : {VARIABLE_CHART, VARIABLE_CHART_REFERENCE}) {
        Token_t const key(token, type);
        if (dataInterface.tokenExists(key))
            return dataInterface.getTypeHint(key);
    }
    return std::nullopt;
}

} // namespace

FigureTemplate::FigureTemplate(Figure const &figure) : Figure(figure)
{
}

FigureTemplate::FigureTemplate(FigureTemplate const &other) : Figure(other)
{
}

FigureTemplate &FigureTemplate::operator=(FigureTemplate const &other)
{
    Figure::operator=(other);
    loadedElements_ = other.loadedElements_;
    typeHints_ = other.typeHints_;
    return *this;
}

QString FigureTemplate::getTypeHint(Element const *element) const
{
    auto const found = typeHints_.find(element);
    return found == typeHints_.end() ? QString() : found->second;
}

void FigureTemplate::setTypeHint(Element const *element, QString const &hint)
{
    typeHints_.insert_or_assign(element, hint);
}

void FigureTemplate::clearImportedData()
{
    typeHints_.clear();
}

void FigureTemplate::elementsLoaded()
{
    loadedElements_.clear();
    for (auto it = getElementBegin(); it != getElementEnd(); ++it)
        loadedElements_.insert_or_assign(it->getId(), *it);
}

/// In the order of the elements, and of those alone: a hint may have outlived its element.
std::vector<std::pair<int, QString>> FigureTemplate::collectHints() const
{
    std::vector<std::pair<int, QString>> hints;
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (auto const hint = typeHints_.find(*it); hint != typeHints_.end())
            hints.emplace_back(it->getId(), hint->second);
    }
    return hints;
}

void FigureTemplate::save(IO::OutStream *stream, int, int) const
{
    Figure::save(stream, -1, -1);
    auto const hints = collectHints();
    saveBlock(stream, HINTS_BLOCK_VERSION, [&hints](auto &archive) {
        archive.field(static_cast<unsigned int>(hints.size()));
        for (auto const &[id, hint] : hints) {
            archive.field(id);
            archive.field(hint);
        }
    });
}

void FigureTemplate::load(IO::InStream *stream, int, int)
{
    clearImportedData();
    Figure::load(stream, -1, -1);
    loadBlock(stream, HINTS_BLOCK_VERSION, [this](BlockReader &archive) {
        unsigned int count = 0;
        archive.field(count);
        for (; count > 0; --count) {
            int id = 0;
            QString hint;
            archive.field(id);
            archive.field(hint);
            if (auto const element = loadedElements_.find(id); element != loadedElements_.end())
                setTypeHint(element->second, hint);
        }
    });
}

bool FigureTemplate::canOpenFile(std::vector<char> const &head)
{
    return IO::Stream::isOfFileType(head, TEMPLATE_FILE_TYPE_ID);
}

bool FigureTemplate::save(QString const &fileName, ErrorLog *log) const
{
    try {
        IO::OutStream stream(fileName, TEMPLATE_FILE_TYPE_ID, TEMPLATE_STREAM_VERSION);
        if (!stream.isInit()) {
            *log << translate("Figure_Template_err", "could not open output file '%1'")
                        .arg(OS::convertSeparators(fileName))
                 << END_LOG;
            return false;
        }
        save(&stream, -1, -1);
        stream.close();
    } catch (IO::StreamException const &error) {
        *log << error.getText() << END_LOG;
        return false;
    }
    logLosses(*this, log);
    return true;
}

bool FigureTemplate::load(QString const &fileName, ErrorLog *log)
{
    IO::InStream stream(fileName);
    if (!stream.isInit()) {
        *log << translate("Figure_err", "stream initialisation failed") << END_LOG;
        return false;
    }
    try {
        if (stream.isOfType(TEMPLATE_FILE_TYPE_ID))
            load(&stream, -1, -1);
        else
            import(&stream, -1, -1);
    } catch (IO::StreamException const &error) {
        *log << error.getText() << END_LOG;
        return false;
    }
    return true;
}

void FigureTemplate::import(IO::InStream *stream, int a, int b)
{
    if (Import::canImportFile(stream))
        importOldFigure(stream);
    else
        importFigureWithTokens(stream, a, b);
}

void FigureTemplate::importFigureWithTokens(IO::InStream *stream, int a, int b)
{
    DataInterface dataInterface;
    dataInterface.load(stream, a, b);
    clearImportedData();
    Figure::load(stream, a, b);
    forEachChart(*this, [&](Chart const *chart) {
        if (auto const hint = hintOf(dataInterface, chart->getToken()))
            setTypeHint(chart, *hint);
    });
}

/// The elements are taken over as copies, so the hints come by way of the names of the tokens.
void FigureTemplate::importOldFigure(IO::InStream *stream)
{
    std::unique_ptr<FigureTemplate> const imported(Import::importTemplate(stream));
    std::map<QString, QString> hints;
    forEachChart(*imported, [&](Chart const *chart) {
        QString const hint = imported->getTypeHint(chart);
        if (!hint.isEmpty())
            hints.insert_or_assign(chart->getToken(), hint);
    });
    clearImportedData();
    setRoot(imported->getRoot()->clone(nullptr));
    setSize(imported->getSize());
    setBackground(imported->getBackground());
    forEachChart(*this, [&](Chart const *chart) {
        if (auto const hint = hints.find(chart->getToken()); hint != hints.end())
            setTypeHint(chart, hint->second);
    });
    invalidate();
}

} // namespace Zem::Fig2
