// image_label_fixture.h: an image, a measured point on it, and what is behind them.
#pragma once

#include "flat_transformation.h"
#include "measured_point.h"

#include <ElementForms.h>
#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageInterface.h>

#include <ZemImage.h>
#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {

/// Lends one picture under the token "cam" and counts the loans that have not come back.
class LentPicture : public Support::TestTokens
{
public:
    LentPicture() { data.setImage(&picture); }

    ImageData const *getImage(QString const &token) const override
    {
        bool const lent = token == QStringLiteral("cam") && isThere;
        loans += lent ? 1 : 0;
        return lent ? &data : nullptr;
    }
    void releaseImage(QString const &) const override { --loans; }

    Image8 picture{40, 30};
    ImageData data;
    bool isThere = true;
    mutable int loans = 0;
};

/// Writes down what it is asked to do.
class TestImageInterface : public ImageInterface
{
public:
    QString getImageElementName(QString const &id) const override { return id; }
    ImageLabel *createImageLabel(QString const &) const override { return nullptr; }
    bool updateImageElement(ImageLabel *label) const override { return note("update", label); }
    bool configureImageLabel(ImageLabel *label) const override { return note("configure", label); }
    void importImageElementVisualisation(ImageLabel *label, ImageDataVisualisation const &) const override
    {
        note("import", label);
    }
    TokenInterface const *getTokenInterface(QString const &id) const override
    {
        return id == QStringLiteral("P1") ? &values : nullptr;
    }
    bool getObjectPoint(QString const &, BaVec2d<double> const &, BaVec3d<double> *) const override { return false; }
    void measurementsChanged(QString const &) override {}

    Support::TestTokens values; ///< of the measured thing P1
    mutable std::string calls;

private:
    bool note(char const *call, ImageLabel const *label) const
    {
        calls += call + std::string(" ") + label->getImageElementId().toStdString() + "\n";
        return true;
    }
};

/// The image lies from 10,20 to 90,80, with 40 x 30 pixels of 2 mm. The label is a box from 110,25 to 130,35; its point
/// has the pixel 10,5, which is 30,30 on the page.
class ImageLabelTest : public testing::Test
{
protected:
    ImageLabelTest()
    {
        tokens.data.setTransformation(transformation);
        image->setToken("cam");
        image->setOrigin({50, 50});
        image->setSize({80, 60});
        image->setAutoScale(false);
        image->setScaling(2.0);
        label->point = {10, 5, 0};
        label->setAutoSize(false);
        label->setOrigin({120, 30});
        label->setSize({20, 10});
        figure.getRoot()->addChild(image);
        figure.getRoot()->addChild(label);
        figure.setTokenInterface(&tokens);
    }

    void connectLabel() { label->connect(image, ""); }
    /// Twice: labels are updated before their image, whose size they need.
    void update()
    {
        figure.update(stage, true);
        figure.update(stage, true);
    }
    /// All steps of the label, one line "-- step" in front of each.
    std::string drawn()
    {
        Support::RecordingPainter painter;
        std::string result;
        bool finished = false;
        for (int step = 0; !finished && step < 10; ++step) {
            painter.clear();
            finished = label->draw(&tokens, &painter, step);
            result += "-- " + std::to_string(step) + "\n" + painter.transcript();
        }
        return result;
    }

    StageIdentifier const stage{1};
    Support::FakeCalculator calculator;
    LentPicture tokens;
    TestImageInterface measurements;
    FlatTransformation *transformation = new FlatTransformation;
    Figure figure;
    Image *image = new Image;
    MeasuredPoint *label = new MeasuredPoint;
};

} // namespace Zem::Fig2
