// ZemFig2ImageInterface.h: ImageInterface, through which image labels reach live measurements.
// Layer: tokens. Holds no locks; an object is used from the thread that owns the figures.
#pragma once

#include "ZemFig2ImageDataVisualisation.h"

#include <ZemTokenInterface.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <vector>

namespace Zem::Fig2 {

class Element;
class Figure;
class ImageLabel;

/// What the application has measured in images. Each measured thing has an id, which the labels of it keep. The
/// application derives from it.
///
/// Figures are registered by Figure::setImageInterface. An interface may be destroyed before its figures: it takes
/// itself from them.
class ImageInterface
{
public:
    ImageInterface() = default;
    ImageInterface(ImageInterface const &) = delete;
    ImageInterface &operator=(ImageInterface const &) = delete;
    virtual ~ImageInterface();

    /// The ids of what is measured in the image of a token; none here.
    virtual std::vector<QString> getImageElements(QString const &token);
    /// The name of a measured thing, for the user.
    virtual QString getImageElementName(QString const &id) const = 0;
    /// A new label for a measured thing, which the caller owns; null when there is no such thing.
    virtual ImageLabel *createImageLabel(QString const &id) const = 0;
    /// Brings what the label shows up to date, at each of its updates. False when its measured thing does not exist.
    virtual bool updateImageElement(ImageLabel *label) const = 0;
    /// Takes looks of a label that is linked to 3D from there, before it is updated. False when there are none.
    virtual bool configureImageLabel(ImageLabel *label) const = 0;
    /// Gives a label the look that an older file kept apart from it.
    virtual void importImageElementVisualisation(ImageLabel *label,
                                                 ImageDataVisualisation const &visualisation) const = 0;
    /// The values of a measured thing, not owned by the caller; null when there are none.
    virtual TokenInterface const *getTokenInterface(QString const &id) const = 0;
    /// The look of a measured thing; ImageDataVisualisation::NONE here.
    virtual ImageDataVisualisation getVisualisation(QString const &id);
    /// The place in space that a measured thing has at `imagePoint`, a point of its picture. False when there is none.
    virtual bool getObjectPoint(QString const &id, BaVec2d<double> const &imagePoint,
                                BaVec3d<double> *objectPoint) const = 0;
    /// The figures learn that measured things have come, gone or changed; an id, or empty for all.
    virtual void measurementsChanged(QString const &id) = 0;

    /// The interface of the figure that the element is in; null without figure or interface.
    static ImageInterface *getInterface(Element const *element);

    /// Marks the labels of a measured thing that is gone as not valid, in all registered figures. True when there was
    /// one.
    bool measurementDeleted(QString const &id) const;

    /// Called by Figure::setImageInterface and by figures that come and go. Both throw ProgError, for a figure that is
    /// there already and for one that is not.
    void registerFigureForUpdate(Figure *figure);
    void unregisterFigureForUpdate(Figure *figure);

private:
    std::vector<Figure *> figures_;
    bool closing_ = false; ///< from the beginning of the destructor on
};

} // namespace Zem::Fig2
