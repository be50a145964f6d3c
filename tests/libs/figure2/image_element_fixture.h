// image_element_fixture.h: an image element, and a token interface that lends pictures and snapshots.
#pragma once

#include "flat_transformation.h"

#include <ElementForms.h>
#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2ImageDataShapes.h>
#include <ZemFig2Label.h>
#include <ZemFig2Legend.h>
#include <ZemFig2SnapshotData.h>

#include <ZemImage.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

namespace Zem::Fig2 {

/// Lends pictures and snapshots, and holds that each comes back once.
class ImageTokens : public Support::TestTokens
{
public:
    ~ImageTokens() override
    {
        EXPECT_EQ(imagesOnLoan_, 0);
        EXPECT_EQ(snapshotsOnLoan_, 0);
    }

    ImageData &addImage(QString const &name)
    {
        touch(name);
        return images_[name];
    }
    SnapshotData &addSnapshot(QString const &name)
    {
        touch(name);
        return snapshots_[name];
    }
    void remove(QString const &name)
    {
        images_.erase(name);
        snapshots_.erase(name);
    }
    /// Lets the data look as if they had changed.
    void touch(QString const &name) { ++counters_[name]; }

    ImageData const *getImage(QString const &token) const override { return lend(images_, token, &imagesOnLoan_); }
    void releaseImage(QString const &token) const override { takeBack(images_, token, &imagesOnLoan_); }
    SnapshotData const *getSnapshot(QString const &token) const override
    {
        return lend(snapshots_, token, &snapshotsOnLoan_);
    }
    void releaseSnapshot(QString const &token) const override { takeBack(snapshots_, token, &snapshotsOnLoan_); }
    unsigned int getModifiedCounter(QString const &name) const override
    {
        auto const found = counters_.find(name);
        return found == counters_.end() ? TestTokens::getModifiedCounter(name) : found->second;
    }

private:
    template <class Data>
    static Data const *lend(std::map<QString, Data> const &data, QString const &token, int *onLoan)
    {
        auto const found = data.find(token);
        if (found == data.end())
            return nullptr;
        ++*onLoan;
        return &found->second;
    }
    template <class Data>
    static void takeBack(std::map<QString, Data> const &data, QString const &token, int *onLoan)
    {
        EXPECT_TRUE(data.contains(token)) << token.toStdString();
        --*onLoan;
    }

    std::map<QString, ImageData> images_;
    std::map<QString, SnapshotData> snapshots_;
    std::map<QString, unsigned int> counters_;
    mutable int imagesOnLoan_ = 0;
    mutable int snapshotsOnLoan_ = 0;
};

/// The element fills 10,20 to 110,80 and shows 40 x 30 pixels. Scaled to fit, a pixel is 2 mm: 80 x 60 mm in the
/// middle, from 20,20 to 100,80.
class ImageElementTest : public testing::Test
{
protected:
    ImageElementTest()
    {
        data.setImage(&picture);
        image.setToken("camera");
        image.setOrigin({60, 50});
        image.setSize({100, 60});
    }

    void update() { image.update(stage, &tokens, nullptr); }
    /// Gives the picture a size of its own.
    void setScaling(double scaling)
    {
        image.setAutoScale(false);
        image.setScaling(scaling);
    }
    std::string drawn(int step = 0, Painter::Mode_t mode = 0) const
    {
        Support::RecordingPainter painter;
        painter.setMode(mode);
        finished = image.draw(&tokens, &painter, step);
        return painter.transcript();
    }
    /// A dot for each point, at pixels of x.
    static ImageDataObject *addPoints(ImageData &target, char const *id, unsigned int count)
    {
        auto *points = new ImageDataPoints;
        for (unsigned int i = 0; i < count; ++i)
            points->addPoint(static_cast<int>(i), {1.0 * (i % 30), 5, 0}, {0, 0, 0}, 0, true, -1);
        auto *object = new ImageDataObject(QString::fromLatin1(id));
        object->addElement(points);
        target.addObject(object);
        return object;
    }

    StageIdentifier const stage{1};
    Support::FakeCalculator calculator;
    Image8 const picture{40, 30};
    ImageTokens tokens;
    ImageData &data = tokens.addImage("camera");
    Image image;
    mutable bool finished = false; ///< what the last drawing answered
};

} // namespace Zem::Fig2
