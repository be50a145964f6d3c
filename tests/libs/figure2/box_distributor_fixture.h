// box_distributor_fixture.h: what the tests of BoxDistributor share.
#pragma once

#include <RecordingPainter.h>
#include <ZemFig2BoxDistributor.h>
#include <ZemFig2Label.h>
#include <fig_box_distributor.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace Zem::Fig2 {

/// A page of 200 x 100 with free lines 10 inside it, boxes without a distance, and labels of a fixed size.
class BoxDistributorTest : public testing::Test
{
protected:
    StageIdentifier const stage{1};
    std::vector<std::unique_ptr<Label>> labels;

    BoxDistributorTest() { BoxDistributor::setElementDistance(1.0, 2.0); }

    Label *makeLabel(BaVec2d<double> const &point, BaVec2d<double> const &size = {20, 6})
    {
        auto label = std::make_unique<Label>();
        label->setAutoSize(false);
        label->setSize(size);
        label->setConnectorPoint(point);
        labels.push_back(std::move(label));
        return labels.back().get();
    }
    static BoxDistributor makeDistributor() { return BoxDistributor(200.0, 100.0, 10.0, 0.0); }

    /// The top left corners of boxes.
    static std::string corners(BoxDistributor::Boxes const &boxes)
    {
        std::string text;
        for (auto const &box : boxes) {
            if (!text.empty())
                text += ' ';
            text += Support::text(box->getPos());
        }
        return text;
    }
    static std::string at(Label const *label) { return Support::text(label->getOrigin()); }
};

} // namespace Zem::Fig2
