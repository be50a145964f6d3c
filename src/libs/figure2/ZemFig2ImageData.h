// ZemFig2ImageData.h: ImageDataObject and ImageData, what an image element shows of one token at one stage.
// Layer: tokens. Distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2ImageDataElement.h"
#include "ZemFig2ImageDataVisualisation.h"
#include "ZemFig2PointMask.h"

#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemStream.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <map>
#include <vector>

namespace Cal {
class Camera;
} // namespace Cal

namespace Zem {

class Image;
class ImageColor;
class TokenContainer;
class TokenInterface;
class Transformation;

namespace Fig2 {

class Transformation;

/// The application's kinds of labels that can be made for a measured thing.
class LabelElementCreator
{
public:
    /// Kept and stored; the meaning of the numbers is the application's. -1 stands for none.
    enum Element_t : int {};

    LabelElementCreator() = delete;
};

/// One measured thing on a picture: marks, drawn in the order in which they were added, the place where connectors of
/// labels end, and the values that such labels show. Owns its marks and its token container.
class ImageDataObject
{
public:
    using Elements = std::vector<ImageDataElement *>;

    /// Connectors name the object by its id.
    explicit ImageDataObject(QString const &id);
    /// Copies all it owns, but deliberately not the display text. Where the values came from the other's container,
    /// those of the copy come from its own.
    ImageDataObject(ImageDataObject const &other);
    /// Shares what the other owns and forgets, without deleting it, what this one owned: for callers that see to it
    /// that only one of the two is ever changed or deleted.
    ImageDataObject &operator=(ImageDataObject const &other);
    ~ImageDataObject();

    QString const &getId() const { return values_.id; }
    /// Picture pixels.
    BaVec2d<double> const &getConnectorPoint() const { return values_.connectorPoint; }
    void setConnectorPoint(BaVec2d<double> const &point) { values_.connectorPoint = point; }
    TokenInterface const *getTokenInterface() const { return values_.tokenInterface; }
    /// Not owned, unless it is the token container.
    void setTokenInterface(TokenInterface const *tokens) { values_.tokenInterface = tokens; }
    TokenContainer const *getTokenContainer() const { return tokenContainer_; }
    TokenContainer *getTokenContainer() { return tokenContainer_; }
    /// Takes ownership and deletes the one before. Leaves the token interface as it is.
    void setTokenContainer(TokenContainer *container);
    QString const &getDisplayText() const { return values_.displayText; }
    void setDisplayText(QString const &text) { values_.displayText = text; }
    /// For the application alone.
    bool getFiltered() const { return values_.filtered; }
    void setFiltered(bool filtered) { values_.filtered = filtered; }
    bool getCanBeConnectorTarget() const { return values_.canBeConnectorTarget; }
    void setCanBeConnectorTarget(bool can) { values_.canBeConnectorTarget = can; }
    /// The object's own look; with ImageDataVisualisation::NONE that of the image element holds.
    ImageDataVisualisation const &getVisualisation() const { return values_.visualisation; }
    void setVisualisation(ImageDataVisualisation const &visualisation) { values_.visualisation = visualisation; }
    LabelElementCreator::Element_t getLabelTemplateType() const { return values_.labelTemplateType; }
    void setLabelTemplateType(LabelElementCreator::Element_t type) { values_.labelTemplateType = type; }

    /// Takes ownership.
    void addElement(ImageDataElement *element);
    /// Hands ownership back to the caller. Throws ProgError for an unknown element.
    void removeElement(ImageDataElement *element);
    /// Deletes the elements.
    void clearElements();
    Elements::const_iterator getElementBegin() const { return elements_.begin(); }
    Elements::const_iterator getElementEnd() const { return elements_.end(); }
    /// Deletes the elements and resets filter, connector target, look and label kind; all else stays.
    void clear();

    /// The most steps that one of the elements takes; 0 without elements.
    unsigned int getNumberOfDrawSteps() const;
    bool hasArrows() const;
    /// Scales the elements, not the connector point.
    void scale(double factor);
    /// Draws this step of every element; one with fewer steps is drawn again in each. Arguments as those of
    /// ImageDataElement::draw.
    void draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &clip,
              Legend2::LegendHandler const *legend, Rotation const &rotation,
              ImageDataVisualisation const &visualisation, Transformation const *transformation,
              unsigned int step) const;

    /// A block, then those of the elements, the look and the tokens. load replaces everything; it throws
    /// IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    /// What is copied by assignment.
    struct Values
    {
        QString id;
        BaVec2d<double> connectorPoint{0.0, 0.0};
        TokenInterface const *tokenInterface = nullptr;
        QString displayText;
        bool filtered = false;
        bool canBeConnectorTarget = true;
        ImageDataVisualisation visualisation = ImageDataVisualisation::NONE;
        LabelElementCreator::Element_t labelTemplateType{-1};
    };
    struct Block;

    friend class ImageData; // a file's list of ids has the last word on them

    void loadElements(IO::InStream *stream, std::vector<ImageDataElement::Type_t> const &types);
    void loadTokens(IO::InStream *stream, Block const &block, unsigned int version);
    void swap(ImageDataObject &other) noexcept;

    Values values_;
    Elements elements_;
    TokenContainer *tokenContainer_ = nullptr;
};

/// The picture, its overlay, the way from space into the picture, the colour scale, and the measured things on it by
/// id. Owns the transformation and the objects; picture and overlay are the caller's, outlive their use here, and are
/// neither copied nor stored. All other coordinates are picture pixels.
class ImageData
{
public:
    using Objects = std::map<QString, ImageDataObject *>;

    /// Empty: no picture, no transformation, no objects, a colour scale of lengths that does not count.
    ImageData();
    /// With the transformation of a camera; `transformation` takes points of space into it.
    ImageData(Cal::Camera const &camera, Zem::Transformation const &transformation);
    /// Copies all it owns; picture and overlay stay null.
    ImageData(ImageData const &other);
    /// Copies the pointers too. It shares what the other owns and forgets, without deleting it, what this one owned:
    /// for callers that see to it that only one of the two is ever changed or deleted.
    ImageData &operator=(ImageData const &other);
    ~ImageData();

    /// Null for none; not owned.
    Zem::Image const *getImage() const { return values_.image; }
    void setImage(Zem::Image const *image) { values_.image = image; }
    ImageColor const *getOverlay() const { return values_.overlay; }
    void setOverlay(ImageColor const *overlay) { values_.overlay = overlay; }
    Transformation const *getTransformation() const { return transformation_; }
    /// Takes ownership and deletes the one before. May be null.
    void setTransformation(Transformation *transformation);
    /// Whether the axes of space may be drawn into the picture.
    bool getHasCoordinateSystem() const { return values_.hasCoordinateSystem; }
    void setHasCoordinateSystem(bool has) { values_.hasCoordinateSystem = has; }
    /// Whether the image labels are coloured by the scale, so that it must span their values.
    bool getCanDrawLegendColors() const { return values_.canDrawLegendColors; }
    void setCanDrawLegendColors(bool can) { values_.canDrawLegendColors = can; }

    /// The colour scale; without a histogram the present one is cleared.
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data);
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data,
                       Legend2::HistogramData const &histogram);
    /// Copies the colour scale out. False, and nothing is copied, when there is none. No argument is null.
    bool getLegendData(Legend2::Legend *legend, Legend2::Data *data) const;
    bool getLegendData(Legend2::Legend *legend, Legend2::Data *data, Legend2::HistogramData *histogram) const;

    /// Takes ownership, unless it throws ProgError: for an id that is there already.
    void addObject(ImageDataObject *object);
    /// Deletes the object. Throws ProgError for an unknown id.
    void removeObject(QString const &id);
    bool objectExists(QString const &id) const { return objects_.contains(id); }
    /// Null for an unknown id. The data keeps ownership.
    ImageDataObject const *getObject(QString const &id) const;
    ImageDataObject *getObject(QString const &id);
    /// In the order of the ids.
    Objects::const_iterator getObjectBegin() const { return objects_.begin(); }
    Objects::iterator getObjectBegin() { return objects_.begin(); }
    Objects::const_iterator getObjectEnd() const { return objects_.end(); }
    Objects::iterator getObjectEnd() { return objects_.end(); }

    /// The names of the bits by which the points are masked.
    std::vector<PointMask> const &getPointMasks() const { return pointMasks_; }
    void addPointMask(PointMask const &mask) { pointMasks_.push_back(mask); }

    /// For a picture of `factor` times the size: scales the objects with their connector points and the transformation.
    void scale(double factor);
    /// Deletes the objects, drops picture, overlay, point masks and colour scale; the transformation stays.
    void clear();

    /// A block, then the parts. load replaces everything; it throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    /// What is copied by assignment and by the copy constructor alike, but for the two pictures.
    struct Values
    {
        Zem::Image const *image = nullptr;
        ImageColor const *overlay = nullptr;
        bool hasCoordinateSystem = true;
        bool canDrawLegendColors = false;
        bool hasLegendData = false;
        Legend2::Legend legend{uLength};
        Legend2::Data legendData;
        Legend2::HistogramData histogramData;
    };

    void loadAll(IO::InStream *stream);
    void loadObject(IO::InStream *stream, QString const &id);
    void loadTransformation(IO::InStream *stream);
    void loadCamera(IO::InStream *stream);
    void loadPointMasks(IO::InStream *stream);
    void loadLegend(IO::InStream *stream, unsigned int version);
    void saveTransformation(IO::OutStream *stream) const;
    void savePointMasks(IO::OutStream *stream) const;
    void saveLegend(IO::OutStream *stream) const;
    void swap(ImageData &other) noexcept;

    Values values_;
    Transformation *transformation_ = nullptr;
    Objects objects_;
    std::vector<PointMask> pointMasks_;
};

} // namespace Fig2
} // namespace Zem
