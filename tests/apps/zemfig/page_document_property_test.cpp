// A page document keeps any figure that its elements can make.
#include "page_document_fixture.h"

#include <ZemFig2Connector.h>
#include <ZemFig2Image.h>
#include <ZemMeasImageLabels.h>
#include <generated_elements.h>

#include <rapidcheck/gtest.h>

namespace Zem::Zemfig {
namespace {

using namespace Fig2;

void connectSome(Figure &figure)
{
    for (auto source = figure.getElementBegin(); source != figure.getElementEnd(); ++source) {
        for (auto target = figure.getElementBegin(); target != figure.getElementEnd(); ++target) {
            bool const canConnect = *source != *target && source->canConnectTo(*target, {});
            if (canConnect && *rc::gen::arbitrary<bool>())
                source->connect(*target, {});
        }
    }
}

std::vector<QString> connectionsOf(Figure const &figure)
{
    std::vector<QString> connections;
    for (auto element = figure.getElementBegin(); element != figure.getElementEnd(); ++element) {
        for (auto it = element->getConnectorBegin(); it != element->getConnectorEnd(); ++it)
            connections.push_back((*it)->getSource()->getScriptObject()->getName() + QLatin1StringView(" -> ") +
                                  (*it)->getTarget()->getScriptObject()->getName());
    }
    return connections;
}

BaVec3d<double> anyPlace()
{
    double const x = *rc::gen::inRange(-1000, 1000) / 7.0;
    return {x, x / 3.0, -x};
}

ImageDataVisualisation anyLook()
{
    ImageDataVisualisation look(*rc::gen::arbitrary<bool>());
    look.setVectorScaling(*rc::gen::inRange(1, 1000) / 7.0);
    look.setVectorLineWidth(*rc::gen::inRange(1, 1000) / 300.0);
    look.setDrawHiddenPoints(*rc::gen::arbitrary<bool>());
    return look;
}

/// A label of any kind that measured things have, connected to the image.
void addImageLabel(Figure &figure, Fig2::Image *image, ImageLabelCreator::Type_t type)
{
    ImageLabel *const label = ImageLabelCreator::create(type);
    figure.getRoot()->addChild(label);
    label->setImageElementId(QStringLiteral("field:%1").arg(*rc::gen::inRange(0, 100)));
    label->setText(QString::fromStdString(*rc::gen::element<std::string>("", "$x$", "\"\\n", "a $.3length$")));
    label->setOrigin({*rc::gen::inRange(-1000, 1000) / 7.0, 20.0});
    label->connect(image, QString());
    if (auto *const measured = dynamic_cast<Measurement::MeasuredLabel *>(label)) {
        measured->setMarkSize(*rc::gen::inRange(0, 1000) / 7.0);
        measured->setMarkLine(LineStyle(*rc::gen::inRange(0, 1000) / 7.0, LineStyle::STYLE_DASHED,
                                        Color(*rc::gen::arbitrary<unsigned char>(), 2, 3, 4)));
        measured->setPlaces({anyPlace()});
    }
    if (auto *const field = dynamic_cast<Measurement::DisplacementFieldLabel *>(label))
        field->setVisualisation(anyLook());
}

RC_GTEST_PROP(PageDocumentProperty, labelsOfMeasuredThingsComeBackEqual, ())
{
    Measurement::registerImageLabels();
    Figure figure;
    auto *const image = new Fig2::Image;
    figure.getRoot()->addChild(image);
    image->setToken(QStringLiteral("camera"));
    for (int i = 0, count = *rc::gen::inRange(0, 4); i < count; ++i)
        image->setVisualisation(QStringLiteral("set %1").arg(i), anyLook());
    for (auto const &[type, creator] : ImageLabelCreator::getCreators())
        addImageLabel(figure, image, type);
    SourceTable picture;
    picture.section = QStringLiteral("picture");
    picture.values[QStringLiteral("file")] = QStringLiteral("a \"b\".png");
    picture.values[QStringLiteral("stage")] = *rc::gen::inRange(0, 100000);
    SourceTable camera;
    camera.section = QStringLiteral("camera");
    camera.values[QStringLiteral("scale")] = *rc::gen::inRange(1, 100000) / 7.0;
    camera.values[QStringLiteral("radial")] = QVariantList{0.1, -1.0 / 3.0, 1e-300};
    QString const written = writePageDocument(figure, {}, {}, {camera, picture}, {});

    PageDocument const read = parse(written.toUtf8());

    RC_LOG(written.toStdString());
    for (Problem const &problem : read.problems)
        RC_LOG("\n" + problem.toString().toStdString());
    RC_ASSERT(read.problems.empty());
    auto element = figure.getElementBegin();
    for (auto it = read.figure->getElementBegin(); it != read.figure->getElementEnd(); ++it, ++element) {
        RC_ASSERT(element != figure.getElementEnd());
        RC_ASSERT((*it)->getParameterString().toStdString() == (*element)->getParameterString().toStdString());
    }
    RC_ASSERT(!(element != figure.getElementEnd()));
    RC_ASSERT(connectionsOf(*read.figure) == connectionsOf(figure));
    RC_ASSERT(read.sources.size() == 2u);
    RC_ASSERT(read.sources[0].values == camera.values);
    RC_ASSERT(read.sources[1].values == picture.values);
    RC_ASSERT(writePageDocument(*read.figure, {}, {}, read.sources, {}) == written);
}

RC_GTEST_PROP(PageDocumentProperty, aFigureOfAnyElementsComesBackEqual, ())
{
    Figure figure;
    for (int i = 0, count = *rc::gen::inRange(1, 4); i < count; ++i) {
        bool const isGroup = *rc::gen::inRange(0, 4) == 0;
        figure.getRoot()->addChild(generateElement(isGroup ? Element::GROUP : generateLeafType()).release());
    }
    connectSome(figure);
    QString const written = writePageDocument(figure);

    PageDocument const read = parse(written.toUtf8());

    RC_LOG(written.toStdString());
    for (Problem const &problem : read.problems)
        RC_LOG("\n" + problem.toString().toStdString());
    RC_ASSERT(read.problems.empty());
    RC_ASSERT(read.figure->toString().toStdString() == figure.toString().toStdString());
    RC_ASSERT(connectionsOf(*read.figure) == connectionsOf(figure));
    RC_ASSERT(writePageDocument(*read.figure) == written);
}

} // namespace
} // namespace Zem::Zemfig
