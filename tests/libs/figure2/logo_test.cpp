// A logo on the page: its size, its drawing, its picture.
#include <ElementForms.h>
#include <RecordingPainter.h>
#include <ZemFig2Logo.h>

#include <ZemImage.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

constexpr double RIGHT_ANGLE = 1.5707963267948966;
constexpr unsigned int FIRST_UNIQUE_ID = 2147483696;

class LogoTest : public testing::Test
{
protected:
    /// From 35,25 to 65,55.
    LogoTest()
    {
        logo.setOrigin({50, 40});
        logo.setSize({30, 30});
    }

    std::string drawn(int step = 0)
    {
        Support::RecordingPainter painter;
        EXPECT_TRUE(logo.draw(nullptr, &painter, step));
        return painter.transcript();
    }
    std::string updatedAndDrawn()
    {
        logo.computeDynamicData(StageIdentifier(1), nullptr);
        return drawn();
    }
    /// The calls from the picture's clip on, the cache id left out.
    std::string drawnPicture()
    {
        std::string calls = updatedAndDrawn();
        calls.erase(0, calls.find("clip"));
        std::size_t const id = calls.find(" id '");
        return id == std::string::npos ? calls : calls.erase(id, calls.find("' ", id) + 1 - id);
    }
    std::string cacheId()
    {
        std::string const calls = updatedAndDrawn();
        std::size_t const id = calls.find("id '") + 4;
        return calls.substr(id, calls.find('\'', id) - id);
    }

    Logo logo;
};

TEST_F(LogoTest, isFramedWithoutAPicture)
{
    EXPECT_EQ(drawn(), "polygon 35,25 65,25 65,55 35,55 pen 0.1 full #000000ff sharp no fill\n"
                       "clip 35,25 65,25 65,55 35,55\n"
                       "text 36,26 'no image set' font Liberation Sans 12 0 #000000ff\n"
                       "unclip\n");
}

TEST_F(LogoTest, namesTheFileThatGaveNoPicture)
{
    logo.setFileName("brand.png");

    EXPECT_NE(drawn().find("text 36,26 'no image set: brand.png'"), std::string::npos);
}

TEST_F(LogoTest, scalesItsPictureToFit)
{
    logo.setImage(new Image8(40, 20));

    // 30 / 40 is less than 30 / 20. The picture becomes 30 x 15 and stands in the middle.
    EXPECT_EQ(drawnPicture(), "clip 35,32.5 65,32.5 65,47.5 35,47.5\n"
                              "image 35,32.5 size 30,15 40x20 from 0,0 scaling 0.75 conversion 0 0 255\n"
                              "unclip\n");
}

TEST_F(LogoTest, showsThePartOfALargePicture)
{
    logo.setImage(new Image8(40, 20));
    logo.setAutoScale(false);
    logo.setScaling(2.0);
    logo.setInnerOrigin({10, 4});

    // 80 x 40 page units: all of the element is covered, and the inner origin is 5 and 2 pixels.
    EXPECT_EQ(drawnPicture(), "clip 35,25 65,25 65,55 35,55\n"
                              "image 35,25 size 30,30 40x20 from 5,2 scaling 2 conversion 0 0 255\n"
                              "unclip\n");
}

TEST_F(LogoTest, drawsItsBackgroundBelowAndItsBorderAbove)
{
    logo.setImage(new Image8(10, 10));
    logo.setBackground(FillStyle(Color(1, 2, 3)));
    logo.setBorder(LineStyle(2.0, LineStyle::STYLE_FULL, Color(4, 5, 6)));

    std::string const calls = updatedAndDrawn();

    std::size_t const background = calls.find("polygon 35,25 65,25 65,55 35,55 no pen fill #010203ff\n");
    std::size_t const picture = calls.find("image 36,26 size 28,28 10x10");
    std::size_t const border = calls.find("polygon 35,25 65,25 65,55 35,55 pen 2 full #040506ff sharp no fill\n");
    EXPECT_EQ(background, 0U);
    EXPECT_LT(background, picture);
    EXPECT_LT(picture, border);
    EXPECT_NE(border, std::string::npos);
}

TEST_F(LogoTest, turnsItsPicture)
{
    logo.setImage(new Image8(10, 10));
    logo.setAngle(RIGHT_ANGLE);

    EXPECT_NE(drawnPicture().find("turned 1.5708 about 50,40\n"), std::string::npos);
}

TEST_F(LogoTest, isDrawnInTheFirstStepAlone)
{
    logo.setImage(new Image8(10, 10));

    EXPECT_EQ(drawn(1), "");
}

TEST_F(LogoTest, withoutRoomDrawsNoPicture)
{
    logo.setImage(new Image8(10, 10));
    logo.setSize({0, 30});

    EXPECT_EQ(updatedAndDrawn().find("image"), std::string::npos);

    logo.setAutoScale(false);
    logo.setScaling(1.0);
    EXPECT_EQ(updatedAndDrawn().find("image"), std::string::npos);
    logo.setSize({30, 0});
    EXPECT_EQ(updatedAndDrawn().find("image"), std::string::npos);
}

TEST_F(LogoTest, hasTheOutlineOfItsBox)
{
    logo.computeDynamicData(StageIdentifier(1), nullptr);

    EXPECT_EQ(Rect(logo.getDragPolygon()), Rect(35, 25, 30, 30));
    EXPECT_EQ(Rect(logo.getUpdatePolygon()), Rect(35, 25, 30, 30));
}

TEST_F(LogoTest, keepsItsScalingWithoutAPictureToFit)
{
    logo.setScaling(3.0);
    logo.computeDynamicData(StageIdentifier(1), nullptr);
    EXPECT_EQ(logo.getScaling(), 3.0);

    logo.setImage(new Image8);
    logo.computeDynamicData(StageIdentifier(1), nullptr);
    EXPECT_EQ(logo.getScaling(), 3.0);
}

TEST_F(LogoTest, boundsItsInnerOriginByWhatDoesNotShow)
{
    using Bounds = std::pair<BaVec2d<double>, BaVec2d<double>>;
    EXPECT_EQ(logo.getInnerOriginBounds(), (Bounds{{0, 0}, {0, 0}}));

    logo.setImage(new Image8(40, 10));
    logo.setScaling(2.0);

    // 80 x 20 in 30 x 30.
    EXPECT_EQ(logo.getInnerOriginBounds(), (Bounds{{0, 0}, {50, 0}}));

    // 20 x 80.
    logo.setImage(new Image8(10, 40));
    EXPECT_EQ(logo.getInnerOriginBounds(), (Bounds{{0, 0}, {0, 50}}));
}

TEST_F(LogoTest, hasAHandleForAPictureThatDoesNotFit)
{
    BaVec2d<double> position;
    EXPECT_FALSE(logo.hasHandle(&position));

    logo.setImage(new Image8(40, 10));

    EXPECT_TRUE(logo.hasHandle(&position));
}

TEST_F(LogoTest, hasAnotherCacheIdForEachPicture)
{
    logo.setFileName("a");
    logo.setImage(new Image8(10, 10));
    std::string const first = cacheId();
    EXPECT_EQ(cacheId(), first);

    logo.setImage(new Image8(10, 10));

    std::string const second = cacheId();
    EXPECT_EQ(std::stoul(second), std::stoul(first) + 1);
    EXPECT_GE(std::stoul(first), FIRST_UNIQUE_ID);
    EXPECT_EQ(second, std::to_string(std::stoul(second)) + "/a");

    // A new logo takes one of its own before it has a picture.
    Logo const between;
    logo.setImage(new Image8(10, 10));
    EXPECT_EQ(std::stoul(cacheId()), std::stoul(second) + 2);
}

TEST_F(LogoTest, isChangedByAnotherPictureAndAnotherName)
{
    auto const clearsValid = [this](auto const &set) {
        logo.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(logo.isValid());
        set();
        EXPECT_FALSE(logo.isValid());
    };

    clearsValid([this] { logo.setImage(new Image8(1, 1)); });
    clearsValid([this] { logo.setFileName("a"); });

    EXPECT_EQ(logo.getFileName(), "a");
    EXPECT_NE(logo.getImage(), nullptr);
}

TEST_F(LogoTest, hasNoBorderAtFirst)
{
    EXPECT_EQ(logo.getBorder(), LineStyle::null);
}

TEST_F(LogoTest, holdsNoTokens)
{
    EXPECT_FALSE(logo.isTokenUsed(""));
    EXPECT_TRUE(logo.isDataValid(StageIdentifier(1), nullptr));
}

TEST_F(LogoTest, isCopiedWithAPictureOfItsOwn)
{
    auto *picture = new Image8(2, 1);
    picture->getRow(0)[1] = 7;
    logo.setImage(picture);
    logo.setFileName("a");
    std::string const originalId = cacheId();

    std::unique_ptr<Element> const copy(logo.copy());
    logo.setImage(nullptr);

    auto const &other = dynamic_cast<Logo const &>(*copy);
    auto const *copied = dynamic_cast<Image8 const *>(other.getImage());
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->getRow(0)[1], 7);
    EXPECT_EQ(other.getFileName(), "a");
    Support::RecordingPainter painter;
    other.draw(nullptr, &painter, 0);
    EXPECT_EQ(painter.transcript().find(originalId), std::string::npos);
}

TEST_F(LogoTest, withoutAPictureIsCopiedToo)
{
    std::unique_ptr<Element> const copy(logo.copy());

    EXPECT_EQ(dynamic_cast<Logo const &>(*copy).getImage(), nullptr);
}

TEST_F(LogoTest, estimatesItsSizeByThatOfThePicture)
{
    unsigned int const empty = logo.getEstimatedObjectSize();
    auto const grownBy = [&](Zem::Image *picture) {
        logo.setImage(picture);
        return logo.getEstimatedObjectSize() - empty;
    };

    EXPECT_EQ(empty, logo.AlignedElement::getEstimatedObjectSize() + 16U);
    EXPECT_EQ(grownBy(new Image8(10, 20)), 136U + 200U);
    EXPECT_EQ(grownBy(new Image16(10, 20)), 144U + 400U);
    EXPECT_EQ(grownBy(new Image32(10, 20)), 144U + 800U);
    EXPECT_EQ(grownBy(new ImageColor(10, 20)), 136U + 800U);
}

} // namespace
} // namespace Zem::Fig2
