#include "file_recovery.h"

#include "block_facts.h"
#include "cli.h"
#include "page_schema.h"

#include <ZemFig2Figure.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2Import.h>
#include <ZemFig2SnapshotInterface.h>
#include <ZemFig2Snippet.h>
#include <ZemFig2Template.h>
#include <ZemFig2TokenContainer.h>
#include <ZemTokenContainer.h>

#include <algorithm>
#include <sstream>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

/// A page begins with its own record and its background.
constexpr std::size_t BLOCKS_OF_PAGE = 2;
constexpr unsigned int FILE_VERSION = 1;
constexpr std::size_t MOST_BLOCKS_OF_ELEMENT = 1000;

/// The blocks that `save` writes, without the header of a file.
template <class Save>
std::string blocksOf(Save const &save)
{
    std::ostringstream bytes;
    IO::OutStream stream(&bytes, Figure::FILE_TYPE_ID, FILE_VERSION);
    save(&stream);
    stream.close();
    IO::BlockScan const scan(bytes.str());
    return scan.getBytes(0, scan.getBlocks().size());
}

std::string headerOf(QString const &type)
{
    std::ostringstream bytes;
    IO::OutStream stream(&bytes, type, FILE_VERSION);
    stream.close();
    return bytes.str();
}

/// Whether the bytes are a whole document of the kind, up to the last one.
template <class Document>
bool isWhole(std::string const &bytes, Document *document)
{
    IO::BlockScan const scan(bytes);
    std::unique_ptr<std::istream> const source = scan.openStream(0);
    try {
        IO::InStream stream(source.get());
        document->load(&stream);
        return scan.getBlock(source.get()) == scan.getBlocks().size();
    } catch (Exception const &) {
        return false;
    }
}

/// A figure loads like the other documents.
template <class Page>
struct LoadedPage
{
    Page page;
    void load(IO::InStream *stream) { page.load(stream, -1, -1); }
};

class FileRecovery
{
public:
    explicit FileRecovery(QString const &fileName) : fileName_(fileName), scan_(scanFile(fileName)) {}

    RecoveredFile recover()
    {
        QString const type = scan_.getFileType();
        if (type == Figure::FILE_TYPE_ID)
            recoverFigure();
        else if (type == FigureTemplate::TEMPLATE_FILE_TYPE_ID)
            recoverTemplate();
        else if (type == Snippet::FILE_TYPE_ID)
            recoverSnippet();
        else if (type == Import::FILE_TYPE)
            recoverOlderFigure();
        else
            fail(QStringLiteral("nothing tells what kind of file it was"));
        return {QByteArray::fromStdString(bytes_), std::move(notes_)};
    }

private:
    [[noreturn]] void fail(QString const &reason) const
    {
        throw InputError(fileName_ + QStringLiteral(": cannot be repaired: ") + reason);
    }

    std::size_t count() const { return scan_.getBlocks().size(); }

    /// Size and background of the page, as far as they can be read.
    void readPage(std::size_t first, Figure *figure)
    {
        std::size_t const end = std::min(first + BLOCKS_OF_PAGE, count());
        std::unique_ptr<std::istream> const source = scan_.openStream(std::min(first, end), end);
        try {
            IO::InStream stream(source.get());
            figure->Figure::load(&stream, -1, -1);
        } catch (Exception const &) {
            // The elements are missing here in any case.
        }
        if (end != first + BLOCKS_OF_PAGE || !scan_.isSound(first, end))
            notes_.push_back({QStringLiteral("page"), true, QStringLiteral("size and background may be wrong")});
    }

    /// The blocks of the page that begins at `first`, of the elements that are left.
    std::string pageBlocks(std::size_t first, std::size_t *next)
    {
        Figure figure;
        readPage(first, &figure);
        std::size_t const before = notes_.size();
        std::unique_ptr<Group> root;
        // The blocks of the page may be gone.
        for (std::size_t skipped = 0; !root && skipped <= BLOCKS_OF_PAGE; ++skipped) {
            notes_.resize(before);
            root = ElementRecovery(scan_, &notes_).readRoot(first + BLOCKS_OF_PAGE - skipped, next);
        }
        if (!root)
            fail(QStringLiteral("the list of its elements cannot be read"));
        for (Element const *element : figure.setLoadedRoot(root.release()))
            notes_.push_back({describe(*element), true, QStringLiteral("but not what it was connected to")});
        return blocksOf([&figure](IO::OutStream *stream) { figure.save(stream, -1, -1); });
    }

    void recoverFigure()
    {
        std::size_t next = 0;
        bytes_ = headerOf(Figure::FILE_TYPE_ID) + pageBlocks(0, &next);
        LoadedPage<Figure> figure;
        if (!isWhole(bytes_, &figure))
            fail(QStringLiteral("its elements do not fit together"));
    }

    void recoverTemplate()
    {
        std::size_t next = 0;
        std::string const page = headerOf(FigureTemplate::TEMPLATE_FILE_TYPE_ID) + pageBlocks(0, &next);
        LoadedPage<FigureTemplate> pattern;
        // The hints are the last block.
        if (count() > 0 && next < count() && scan_.isSound(count() - 1, count())) {
            bytes_ = page + scan_.getBytes(count() - 1, count());
            if (isWhole(bytes_, &pattern))
                return;
        }
        notes_.push_back({QStringLiteral("type hints"), false, QStringLiteral("cannot be read")});
        std::string const all = blocksOf([](IO::OutStream *stream) { FigureTemplate().save(stream, -1, -1); });
        std::string const none = blocksOf([](IO::OutStream *stream) { Figure().save(stream, -1, -1); });
        bytes_ = page + all.substr(none.size());
        if (!isWhole(bytes_, &pattern))
            fail(QStringLiteral("its elements do not fit together"));
    }

    void recoverSnippet()
    {
        if (count() == 0)
            fail(QStringLiteral("it has no block left"));
        if (!scan_.isSound(0, 1))
            notes_.push_back({QStringLiteral("snippet"), true, QStringLiteral("its stage may be wrong")});
        std::size_t next = 0;
        std::string const head = headerOf(Snippet::FILE_TYPE_ID) + scan_.getBytes(0, 1) + pageBlocks(1, &next);
        Snippet snippet;
        // All that follows, when it is as it was.
        bytes_ = head + scan_.getBytes(next, count());
        if (scan_.isSound(next, count()) && isWhole(bytes_, &snippet)) {
            noteTokens(snippet.getTokenContainer());
            return;
        }
        std::size_t behind = count();
        std::string const tokens = tokenBlocks(findTokens(next), &behind);
        if (scan_.isSound(behind, count())) {
            bytes_ = head + tokens + scan_.getBytes(behind, count());
            if (isWhole(bytes_, &snippet))
                return;
        }
        replaceTail(head + tokens);
    }

    /// Where the tokens begin: behind a last element that could not be read that is not known. An empty list could be
    /// anything.
    std::size_t findTokens(std::size_t first) const
    {
        for (std::size_t block = first; block < std::min(count(), first + MOST_BLOCKS_OF_ELEMENT); ++block) {
            FigureTokenContainer tokens;
            readTokens(block, count(), &tokens);
            std::vector<TokenInfo> infos;
            tokens.getTokens(&infos);
            if (!infos.empty() && hasData(tokens, infos.front()))
                return block;
        }
        return first;
    }

    /// The tokens before the first damage, and where those of the damaged file end, when that can be told.
    std::string tokenBlocks(std::size_t first, std::size_t *behind)
    {
        std::size_t damaged = first;
        while (damaged < count() && scan_.isSound(first, damaged + 1))
            ++damaged;
        FigureTokenContainer tokens;
        bool const isComplete = readTokens(first, damaged, &tokens);
        FigureTokenContainer all;
        std::unique_ptr<std::istream> const source = scan_.openStream(first);
        try {
            IO::InStream stream(source.get());
            all.load(&stream);
            *behind = scan_.getBlock(source.get());
        } catch (Exception const &) {
            *behind = count();
        }
        noteTokens(&tokens);
        // The pictures and overlays stand behind all tokens, and a picture does not tell that it had an overlay.
        if (!isComplete && offersPictures(tokens))
            notes_.push_back(
                {QStringLiteral("pictures and overlays"), false, QStringLiteral("those behind the damage")});
        return blocksOf([&tokens](IO::OutStream *stream) { tokens.save(stream); });
    }

    /// False when not all of them could be read.
    bool readTokens(std::size_t first, std::size_t end, FigureTokenContainer *tokens) const
    {
        std::unique_ptr<std::istream> const source = scan_.openStream(first, end);
        try {
            IO::InStream stream(source.get());
            tokens->load(&stream);
        } catch (Exception const &) {
            // What was read before stays.
            return false;
        }
        return true;
    }

    static bool offersPictures(FigureTokenContainer const &tokens)
    {
        std::vector<TokenInfo> infos;
        tokens.getTokens(&infos);
        return std::any_of(infos.begin(), infos.end(),
                           [](TokenInfo const &info) { return info.getType() == TokenInfo::TYPE_IMAGE; });
    }

    static bool hasData(FigureTokenContainer const &tokens, TokenInfo const &info)
    {
        switch (info.getType()) {
        case TokenInfo::TYPE_GROUP:
        case TokenInfo::TYPE_SEPARATOR:
        case TokenInfo::TYPE_HEADLINE:
        case TokenInfo::TYPE_PLACEHOLDER:
            return true;
        case TokenInfo::TYPE_IMAGE: {
            ImageData const *data = tokens.getImage(info.getName());
            return data && data->getImage();
        }
        case TokenInfo::TYPE_CHART:
            return tokens.getChart(info.getName()) != nullptr;
        case TokenInfo::TYPE_SNAPSHOT:
            return tokens.getSnapshot(info.getName()) != nullptr;
        default: {
            Value const value = tokens.getValue(info.getName(), IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE);
            return !(value == Value::INVALID) && !(value == Value::UNKNOWN);
        }
        }
    }

    /// Takes those out whose data are gone.
    void noteTokens(FigureTokenContainer *tokens)
    {
        std::vector<TokenInfo> infos;
        if (tokens)
            tokens->getTokens(&infos);
        for (TokenInfo const &info : infos) {
            bool const isKept = hasData(*tokens, info);
            notes_.push_back({QStringLiteral("data '%1'").arg(info.getName()), isKept,
                              isKept ? QString() : QStringLiteral("behind the damage")});
            if (!isKept)
                tokens->deleteToken(info.getName());
        }
    }

    /// Nothing but the head tells what else was in the snippet: the one that reads it to its end is right.
    void replaceTail(std::string const &begin)
    {
        std::string const project = blocksOf([](IO::OutStream *stream) { TokenContainer().save(stream); });
        std::string const charts = blocksOf([](IO::OutStream *stream) { SnapshotChartInterface().save(stream); });
        std::string const scale = blocksOf([](IO::OutStream *stream) {
            Legend2::Legend(uLength).save(stream);
            Legend2::Data().save(stream);
            Legend2::ToleranceParams().save(stream);
            Legend2::HistogramData().save(stream);
        });
        for (std::string const &middle : {std::string(), project, charts, project + charts}) {
            Snippet snippet;
            if (!isWhole(begin + middle + scale, &snippet))
                continue;
            snippet.copyLegendData(SnapshotData());
            bytes_ =
                headerOf(Snippet::FILE_TYPE_ID) + blocksOf([&snippet](IO::OutStream *stream) { snippet.save(stream); });
            notes_.push_back(
                {QStringLiteral("colour scale and texts of charts"), false, QStringLiteral("behind the damage")});
            return;
        }
        fail(QStringLiteral("its parts do not fit together"));
    }

    /// Nothing writes such files: what can be had is the old one with right checksums.
    void recoverOlderFigure()
    {
        std::unique_ptr<std::istream> const source = scan_.openStream(0);
        try {
            IO::InStream stream(source.get());
            std::unique_ptr<FigureTemplate> const page(Import::importTemplate(&stream));
        } catch (Exception const &error) {
            fail(error.getText());
        }
        for (std::size_t i = 0; i < count(); ++i) {
            if (!scan_.isSound(i, i + 1))
                notes_.push_back({QStringLiteral("record %1").arg(i + 1), true, QStringLiteral("may be wrong")});
        }
        bytes_ = headerOf(Import::FILE_TYPE) + scan_.getBytes(0, count());
    }

    QString fileName_;
    IO::BlockScan scan_;
    std::string bytes_;
    std::vector<RecoveryNote> notes_;
};

} // namespace

RecoveredFile recoverFile(QString const &fileName)
{
    return FileRecovery(fileName).recover();
}

} // namespace Zem::Zemfig
