// How a Figure is kept in files.
#include "ZemFig2Figure.h"

#include "ZemFig2Connector.h"
#include "ZemFig2Import.h"
#include "ZemFig2ImportHook.h"
#include "ZemFig2Template.h"
#include "fig_block.h"
#include "fig_losses.h"

#include <ZemScriptObject.h>

#include <memory>
#include <unordered_map>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 5; // 3, 4: a text; 2, 3: a flag; both gone
constexpr unsigned int STREAM_VERSION = 1;

} // namespace

void Figure::save(IO::OutStream *stream, int a, int b) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { archive.field(size_); });
    background_.save(stream);
    root_->save(stream, a, b);
}

void Figure::loadPage(IO::InStream *stream)
{
    loadBlock(stream, BLOCK_VERSION, [this](BlockReader &archive) {
        archive.field(size_);
        if (archive.version() == 2 || archive.version() == 3)
            archive.drop<bool>();
        if (archive.version() == 3 || archive.version() == 4)
            archive.drop<QString>();
    });
    background_.load(stream);
}

void Figure::loadElements(IO::InStream *stream, int a, int b)
{
    auto group = std::make_unique<Group>();
    group->setFigure(this);
    group->load(stream, a, b);
    group->getScriptObject()->setParent(nullptr);
    delete root_;
    root_ = group.release();
}

/// `dangling` is called for each connector that has no target in the figure, or one that cannot be, with that target.
template <class Dangling>
void Figure::connectLoadedElements(Dangling const &dangling)
{
    std::unordered_map<int, Element *> elements;
    for (auto it = getElementBegin(); it != getElementEnd(); ++it)
        elements[it->getId()] = *it;
    auto const connect = [&](Element *element) {
        std::vector<Connector *> const connectors(element->getConnectorBegin(), element->getConnectorEnd());
        for (Connector *connector : connectors) {
            if (connector->getSource() != element)
                continue;
            auto const found = elements.find(connector->getTargetId());
            Element *const target = found == elements.end() || found->second == element ? nullptr : found->second;
            if (dangling(connector, target))
                continue;
            connector->setTarget(target);
            target->addConnector(connector);
        }
    };
    connect(root_);
    for (auto it = getElementBegin(); it != getElementEnd(); ++it)
        connect(*it);
}

void Figure::connectLoadedElements()
{
    connectLoadedElements([](Connector const *, Element const *target) {
        if (!target)
            throw IO::StreamException(translate("Figure_err", "dangling connector, report corrupted"));
        return false;
    });
}

std::vector<Element *> Figure::setLoadedRoot(Group *root)
{
    setRoot(root);
    std::vector<Element *> sources;
    connectLoadedElements([&sources](Connector *connector, Element *target) {
        Element *const source = connector->getSource();
        if (target && source->canConnectTo(target, connector->getTargetName()))
            return false;
        source->removeConnector(connector);
        delete connector;
        sources.push_back(source);
        return true;
    });
    return sources;
}

void Figure::load(IO::InStream *stream, int a, int b)
{
    // A failure below leaves an empty page instead of elements that are half connected.
    setRoot(new Group);
    try {
        loadPage(stream);
        loadElements(stream, a, b);
        connectLoadedElements();
    } catch (IO::StreamException const &) {
        setRoot(new Group);
        throw;
    }
    elementsLoaded();
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        it->updateId();
        it->setFigure(this);
    }
    ImportHook::callConvertFigure(this);
}

bool Figure::canOpenFile(std::vector<char> const &head)
{
    return IO::Stream::isOfFileType(head, FILE_TYPE_ID) || Import::canImportFile(head);
}

Figure *Figure::loadFigure(QString const &fileName, ErrorLog *log)
{
    IO::InStream stream(fileName);
    if (!stream.isInit()) {
        *log << translate("Figure_err", "stream initialisation failed") << END_LOG;
        return nullptr;
    }
    try {
        if (Import::canImportFile(&stream))
            return Import::importTemplate(&stream);
        if (!stream.isOfType(FILE_TYPE_ID))
            throw IO::StreamException(translate("Figure_err", "file is no valid figure file"));
        auto figure = std::make_unique<Figure>();
        figure->load(&stream, -1, -1);
        return figure.release();
    } catch (IO::StreamException const &error) {
        *log << error.getText() << END_LOG;
        return nullptr;
    }
}

bool Figure::saveFigure(QString const &fileName, Figure const *figure, ErrorLog *log)
{
    try {
        IO::OutStream stream(fileName, FILE_TYPE_ID, STREAM_VERSION);
        if (!stream.isInit()) {
            // The result stays true: callers of old look into the log.
            *log << translate("Figure_err", "stream initialisation failed") << END_LOG;
            return true;
        }
        figure->save(&stream, -1, -1);
        stream.close();
    } catch (IO::StreamException const &error) {
        *log << error.getText() << END_LOG;
        return false;
    }
    logLosses(*figure, log);
    return true;
}

} // namespace Zem::Fig2
