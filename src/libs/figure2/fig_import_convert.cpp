// Labels of objects of imported images become image labels.
#include "ZemFig2Connector.h"
#include "ZemFig2Figure.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageDataObjectLabel.h"
#include "ZemFig2ImageInterface.h"
#include "ZemFig2Import.h"
#include "ZemFig2ImportHook.h"
#include "ZemFig2ImportInfo.h"
#include "ZemFig2Label.h"
#include "fig_loan.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>
#include <ZemTokenFilter.h>

#include <memory>

namespace Zem::Fig2 {

namespace {

struct ObjectLabel
{
    ImageBase *image;
    Label *label;
    QString object;
};

bool showsImportedPicture(Element const *element)
{
    ImageImportInfo const *info = element->getImportInfo();
    return info && info->getTokenType() == ImageImportInfo::TOKEN_IMAGE;
}

/// Those that lead to an object of an imported picture.
std::vector<ObjectLabel> collectObjectLabels(Figure *figure)
{
    std::vector<ObjectLabel> labels;
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        auto *label = dynamic_cast<Label *>(*it);
        if (!label)
            continue;
        QString object;
        auto *image = dynamic_cast<ImageBase *>(label->getConnectorTarget(&object));
        if (image && !object.isEmpty() && showsImportedPicture(image))
            labels.push_back({image, label, object});
    }
    return labels;
}

void copyElementLooks(LabelBase const &from, LabelBase *to)
{
    to->setVisible(from.getVisible());
    to->setPivotAlignmentX(from.getPivotAlignmentX());
    to->setPivotAlignmentY(from.getPivotAlignmentY());
    to->setAngle(from.getAngle());
    to->setAutoSize(from.getAutoSize());
    to->setSize(from.getSize());
    to->setOrigin(from.getOrigin());
    to->setBorder(from.getBorder());
    to->setBackground(from.getBackground());
    to->setFont(from.getUserFont());
    to->setUseSystemFont(from.getUseSystemFont());
    to->setHighlightColor(from.getHighlightColor());
    to->setMargin(from.getMargin());
    to->setSpacing(from.getSpacing());
}

void copyLabelLooks(LabelBase const &from, LabelBase *to)
{
    to->setColorBar(from.getColorBar());
    to->setColorBarVisible(from.getColorBarVisible());
    to->setTextAlignmentX(from.getTextAlignmentX());
    to->setTextAlignmentY(from.getTextAlignmentY());
    to->setExpandWidth(from.getExpandWidth());
    to->setConnectorStyle(from.getConnectorStyle());
    to->setConnectorPoint(from.getConnectorPoint());
    to->setTemplateName(from.getTemplateName());
}

/// The marks of the object and, for the tokens in the text, its values.
void takeObject(ImageDataObject const &object, ImageDataObjectLabel *label)
{
    ImageDataObject &own = label->getImageDataObject();
    own.setConnectorPoint(object.getConnectorPoint());
    for (auto it = object.getElementBegin(); it != object.getElementEnd(); ++it)
        own.addElement((*it)->copy());
    if (object.getTokenInterface())
        label->setTokenContainer(
            new TokenContainer(object.getTokenInterface(), TokenAllPassFilter(), StageIdentifier::NO_STAGE));
}

ImageDataVisualisation lookOf(ImageBase const &image, ImageDataObject const *object, QString const &id)
{
    if (object && !(object->getVisualisation() == ImageDataVisualisation::NONE))
        return object->getVisualisation();
    return image.getVisualisation(id);
}

} // namespace

void Import::convertImageData(Figure *figure)
{
    if (!figure->getImageInterface())
        throw ProgError("Zem::Fig2::Import::convertImageData", "fig_import", __LINE__, "Image interface not set");
    for (ObjectLabel const &found : collectObjectLabels(figure))
        createImageLabelFromLabel(figure, found.image, found.label, found.object);
}

ImageLabel *Import::createImageLabelFromLabel(Figure *figure, ImageBase *image, LabelBase *label, QString const &id)
{
    Group *parent = label->getParent();
    if (!parent)
        throw ProgError("Zem::Fig2::Import::createImageLabelFromLabel", "fig_import", __LINE__,
                        "Element without a parent");
    auto made = std::make_unique<ImageDataObjectLabel>();
    copyElementLooks(*label, made.get());
    copyLabelLooks(*label, made.get());
    QString const text = convertUnformattedLabelText(label->getText());
    made->setText(ImportHook::callConvertLabelText(made.get(), text));
    made->setImageElementId(id);

    ImageLoan const data(figure->getTokenInterface(), image->getToken());
    ImageDataObject const *object = data ? data->getObject(id) : nullptr;
    if (object)
        takeObject(*object, made.get());
    ImageDataVisualisation const look = lookOf(*image, object, id);
    made->getImageDataObject().setVisualisation(look);

    ImageLabel *result = made.get();
    parent->replaceChild(label, made.release());
    if (!result->getConnectedImage())
        result->connect(image, id);
    if (ImageInterface const *interface = figure->getImageInterface())
        interface->importImageElementVisualisation(result, look);
    return result;
}

} // namespace Zem::Fig2
