// ZemFig2TokenInterface.h: how live data reaches the elements of a figure.
// Layer: tokens. The interfaces hold no locks; an object is used from the thread that owns the figure.
#pragma once

#include <ZemTokenFilter.h>
#include <ZemTokenInterface.h>

#include <QtCore/QString>

#include <vector>

namespace Zem {
class Image;
class ImageColor;
} // namespace Zem

namespace Zem::Fig2 {

class ChartData;
class DataInterface;
class Element;
class Figure;
class ImageData;
class SnapshotData;
class Token_t;

/// The data behind a figure: values by token name, and images, charts and snapshots that are borrowed by name.
/// The application derives from it.
///
/// A missing value is Value::UNKNOWN when no token of that name exists here, Value::INVALID when it exists, but not
/// with this index or at this stage; callers go on to their next source in both cases.
///
/// getImage, getChart and getSnapshot borrow: a null result borrows nothing; any other must be given back with the
/// matching release... and the same name. Figures and elements borrow within a call of theirs only, often and nested.
/// Between calls the data may change in place, together with the getModifiedCounter of their name.
///
/// Figures ask for tokens by the names that stand in their elements; getTokens is for the lists of the application.
class FigureTokenInterface : public TokenInterface
{
public:
    virtual ImageData const *getImage(QString const &token) const = 0;
    virtual void releaseImage(QString const &token) const = 0;
    virtual ChartData const *getChart(QString const &token) const = 0;
    virtual void releaseChart(QString const &token) const = 0;
    virtual SnapshotData const *getSnapshot(QString const &token) const = 0;
    virtual void releaseSnapshot(QString const &token) const = 0;

    /// The names of the groups above a token, outermost first; none here.
    virtual std::vector<QString> getTokenGrouping(QString const &token) const;
    /// The display name of a group. Throws ProgError here: who offers groups must name them.
    virtual QString getTokenGroupName(QString const &group) const;
    /// The icon of a group; empty here.
    virtual QString getTokenGroupIconId(QString const &group) const;
};

/// A token interface that holds nothing. It never lends, so every release throws ProgError. Also a base for those that
/// hold some kinds of data only: what a get... lends, its release... must then take back.
class EmptyFigureTokenInterface : public FigureTokenInterface
{
public:
    /// Empties `tokens`.
    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    ImageData const *getImage(QString const &token) const override;
    void releaseImage(QString const &token) const override;
    ChartData const *getChart(QString const &token) const override;
    void releaseChart(QString const &token) const override;
    SnapshotData const *getSnapshot(QString const &token) const override;
    void releaseSnapshot(QString const &token) const override;
};

/// What an element tells scripts about itself: whether it is selected.
class ElementTokenInterface : public TokenInterface
{
public:
    /// `element` is not owned and outlives the interface.
    explicit ElementTokenInterface(Element const *element) : element_(element) {}

    /// Appends to `tokens`.
    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;

private:
    Element const *element_;
};

/// Lets the tokens pass that a figure makes use of.
class UsedTokenFilter : public TokenFilter
{
public:
    /// `figure` is not owned and outlives the filter.
    explicit UsedTokenFilter(Figure const *figure) : figure_(figure) {}

    bool isFilteredOut(TokenInfo const &info) const override;

private:
    Figure const *figure_;
};

/// Serves the data behind the reference tokens of a DataInterface. A provider overrides what it can serve; here nothing
/// is served. Registering with the DataInterface and leaving it is the owner's business.
class DataReferenceInterface
{
public:
    /// `dataInterface` is not owned.
    explicit DataReferenceInterface(DataInterface *dataInterface) : dataInterface_(dataInterface) {}
    virtual ~DataReferenceInterface();

    /// Each gives true when it serves the name; what it hands out stays its own until releaseReferenceData.
    virtual bool getImageReference(QString const &name, Zem::Image const **image, ImageData const **data) const;
    virtual bool getImageReference(QString const &name, Zem::Image const **image, Zem::ImageColor const **overlay,
                                   ImageData const **data) const;
    virtual bool getChartReference(QString const &name, ChartData const **data) const;
    virtual bool getSnapshotReference(QString const &name, SnapshotData const **data) const;
    virtual void releaseReferenceData(Token_t const &token) const;
    virtual void tokenNoMoreUsed(Token_t const &token) const;

protected:
    DataReferenceInterface(DataReferenceInterface const &) = default;
    DataReferenceInterface &operator=(DataReferenceInterface const &) = default;

    DataInterface *getDataInterface() const { return dataInterface_; }

private:
    DataInterface *dataInterface_;
};

} // namespace Zem::Fig2
