// ZemFig2TokenContainer.h: FigureTokenContainer, the frozen data of a figure.
// Layer: tokens. No locks: a container is used by one thread at a time.
#pragma once

#include "ZemFig2TokenInterface.h"

#include <ZemStream.h>

#include <map>
#include <memory>
#include <vector>

namespace Zem::Fig2 {

class ImageBase;
struct Variable;

/// A token interface that holds values, images, charts and snapshots itself, each under its bare name, so that a figure
/// is drawn with no application behind it. Owns all of them. Pixels are held once: the image data only point at them.
class FigureTokenContainer : public FigureTokenInterface
{
public:
    class Entry;

    /// How scaleImage makes smaller pictures.
    class ImageScaler
    {
    public:
        virtual ~ImageScaler();
        /// A new picture of the same kind, `ratio` times as wide and high. Owned by the caller.
        virtual Zem::Image *scale(Zem::Image const *image, double ratio) const = 0;
    };

    FigureTokenContainer() = default;
    /// A copy of what `source` has at the stage and the filter lets pass.
    FigureTokenContainer(StageIdentifier const &stage, FigureTokenInterface const *source, TokenFilter const &filter);
    /// Of the own tokens of the registry, those that the figure makes use of. Neither is kept.
    FigureTokenContainer(Figure const *figure, DataInterface const *dataInterface);
    /// Copies everything deeply.
    FigureTokenContainer(FigureTokenContainer const &other);
    /// Deliberately shares what the other owns and forgets, without deleting it, what this one owned. Copy construction
    /// is the way to a container of its own.
    FigureTokenContainer &operator=(FigureTokenContainer const &other) = default;
    ~FigureTokenContainer() override;

    void getTokens(std::vector<TokenInfo> *tokens) const override;
    /// The same at every stage; Value::INVALID with an index.
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    ImageData const *getImage(QString const &token) const override;
    ImageData *getImage(QString const &token);
    ChartData const *getChart(QString const &token) const override;
    ChartData *getChart(QString const &token);
    SnapshotData const *getSnapshot(QString const &token) const override;
    SnapshotData *getSnapshot(QString const &token);
    /// Nothing has to be given back.
    void releaseImage(QString const &token) const override;
    void releaseChart(QString const &token) const override;
    void releaseSnapshot(QString const &token) const override;

    /// Adds or replaces the token that `info` names; a replaced one keeps the description that it came with. Values
    /// with a name that is no token are ignored; for the others it throws ProgError, and the data stay the caller's.
    void setValue(TokenInfo const &info, Value const &value);
    /// Take ownership of the data. Picture and overlay of the image data are copied and stay the caller's; the flag is
    /// not used. Image data and chart data are detached from live token interfaces: their values are copied.
    void setValue(TokenInfo const &info, ImageData *data, bool flag);
    void setValue(TokenInfo const &info, ChartData *data);
    void setValue(TokenInfo const &info, SnapshotData *data);
    /// Plain values of all that the source offers and the filter lets pass.
    void addTokens(StageIdentifier const &stage, TokenInterface const *source, TokenFilter const &filter);
    /// Copies of values, images, charts and snapshots.
    void merge(StageIdentifier const &stage, FigureTokenInterface const *source, TokenFilter const &filter);
    /// The pictures under that name stay.
    void deleteToken(QString const &name);

    /// Makes the stored picture of the element smaller when it has more than `maxDpi` dots per inch of the element, and
    /// fits the element to it. Throws ProgError, and changes nothing, when the scaler makes no picture, or no colour
    /// picture of the overlay, and for a picture whose token is no image any more.
    void scaleImage(ImageBase *element, ImageScaler const &scaler, double maxDpi);

    /// Several blocks. save leaves out tokens that lack the data of their type. load replaces everything; it throws
    /// IO::StreamException, and ProgError for a picture under the name of something else; what was read so far stays.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    void clear();
    void setEntry(QString const &name, std::unique_ptr<Entry> entry);
    void setImageCopy(TokenInfo const &info, ImageData const *data, Zem::Image const *image,
                      Zem::ImageColor const *overlay);
    template <class Data>
    void setCopy(TokenInfo const &info, Data const *data);
    void mergeImage(TokenInfo const &info, QString const &name, FigureTokenInterface const *source);
    template <class DataLoan>
    void mergeCopy(TokenInfo const &info, QString const &name, FigureTokenInterface const *source);
    void takeVariable(DataInterface const &registry, Token_t const &token, Variable const &variable);
    void takeImageReference(DataInterface const &registry, Token_t const &token, TokenInfo const &info);
    template <class Data>
    void takeReference(DataInterface const &registry, Token_t const &token, TokenInfo const &info,
                       bool (DataInterface::*fetch)(QString const &, Data const **) const);
    void loadImage(IO::InStream *stream, QString const &name, bool isOlder);
    void loadOverlay(IO::InStream *stream, QString const &name);

    std::vector<TokenInfo> tokenInfos_; // in the order of first entry
    // All by bare name, all owned.
    std::map<QString, Entry *> entries_;
    std::map<QString, Zem::Image *> images_;
    std::map<QString, Zem::ImageColor *> overlays_;
};

} // namespace Zem::Fig2
