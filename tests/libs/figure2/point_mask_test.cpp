// Named masks of points.
#include "generated_values.h"

#include <ElementForms.h>
#include <ZemFig2PointMask.h>

#include <rapidcheck/gtest.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

std::string loadError(std::string const &bytes)
{
    PointMask mask(5, "old");
    std::string const text = Support::thrownText<IO::StreamException>(
        [&] { Support::readFrom(bytes, [&mask](IO::InStream &stream) { mask.load(&stream); }); });
    EXPECT_EQ(mask, PointMask(5, "old"));
    return text;
}

TEST(PointMask, showsAllPointsAndHasNoNameAtFirst)
{
    EXPECT_EQ(PointMask().getMask(), -1);
    EXPECT_EQ(PointMask().getName(), "");
}

TEST(PointMask, isStoredAsMaskAndName)
{
    std::string const bytes = Support::streamOf([](IO::OutStream &stream) { PointMask(6, "left").save(&stream); });
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().i(6).s("left")).bytes());
    EXPECT_EQ(Generated::throughBlock(PointMask(6, "left")), PointMask(6, "left"));
}

TEST(PointMask, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 2U})
        EXPECT_EQ(loadError(BlockCrafter().block(version, Payload().i(6).s("left")).bytes()),
                  "cannot load point bitmas: wrong block version");
}

TEST(PointMask, isRefusedWhereverItIsCut)
{
    std::string const bytes = BlockCrafter().block(1, Payload().i(6).s("left")).bytes();
    for (std::size_t length = BlockCrafter().bytes().size(); length < bytes.size(); ++length)
        EXPECT_EQ(loadError(bytes.substr(0, length)).find("cannot load point bitmas: "), 0U) << length;
}

TEST(PointMask, believesNoLength)
{
    EXPECT_EQ(
        loadError(BlockCrafter().block(1, Payload().i(6).u(4294967295U)).bytes()).find("cannot load point bitmas: "),
        0U);
}

RC_GTEST_PROP(PointMaskInItsBlock, isKept, ())
{
    PointMask const mask(*rc::gen::arbitrary<int>(), *Generated::anyText());
    RC_ASSERT(Generated::throughBlock(mask) == mask);
}

} // namespace
} // namespace Zem::Fig2
