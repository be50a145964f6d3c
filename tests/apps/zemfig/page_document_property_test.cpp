// A page document keeps any figure that its elements can make.
#include "page_document_fixture.h"

#include <ZemFig2Connector.h>
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
