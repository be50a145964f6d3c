// The types of image labels and the registry of their creators.
#include "measured_point.h"

#include <ElementForms.h>
#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2InitLibrary.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using Creator = ImageLabelCreator;
using Support::progError;
using Support::thrownText;

struct TypeRow
{
    Creator::Type_t type;
    unsigned int number;
    char const *id;
};

TypeRow const TYPE_ROWS[] = {{Creator::TYPE_UNKNOWN, 0, "unknown"},
                             {Creator::TYPE_POINT, 1, "point"},
                             {Creator::TYPE_LINE, 2, "line"},
                             {Creator::TYPE_ANGLE, 3, "angle"},
                             {Creator::TYPE_DISPLACEMENT_FIELD, 4, "displacement_field"},
                             {Creator::TYPE_IMPORTED_IMAGE_DATA, 5, "imported_image_data"},
                             {Creator::TYPE_INFO_LABEL, 6, "info_label"},
                             {Creator::TYPE_STRAIN_GRID, 7, "strain_grid"},
                             {Creator::TYPE_STRAIN_SECTION, 8, "strain_section"},
                             {Creator::TYPE_STAGE_POINT, 9, "stage_point"},
                             {Creator::TYPE_DOF_ORIGIN, 10, "dof_origin"}};

TEST(ImageLabelTypes, haveTheirNumbersAndWords)
{
    EXPECT_EQ(std::size(TYPE_ROWS), Creator::NUMBER_OF_TYPES);
    for (TypeRow const &row : TYPE_ROWS) {
        EXPECT_EQ(row.type, row.number);
        EXPECT_EQ(Creator::getLabelTypeId(row.type), row.id);
        EXPECT_EQ(Creator::parseLabelTypeId(row.id), row.type);
    }
    EXPECT_EQ(Creator::getLabelTypeId(static_cast<Creator::Type_t>(11)), "");
}

TEST(ImageLabelTypes, haveNoOtherWords)
{
    for (char const *id : {"", "Point", "image"}) {
        std::string const text = std::string("unknown image label type '") + id + "'";
        EXPECT_EQ(thrownText<ParamError>([id] { Creator::parseLabelTypeId(id); }), text);
    }
    try {
        Creator::parseLabelTypeId("x");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getPosition(), -1);
    }
}

TEST(ImageLabelCreator, isRegisteredAsLongAsItLives)
{
    {
        MeasuredPointCreator const creator(Creator::TYPE_ANGLE);
        EXPECT_EQ(Creator::getCreators().at(Creator::TYPE_ANGLE), &creator);
        EXPECT_EQ(creator.getType(), Creator::TYPE_ANGLE);
    }
    EXPECT_FALSE(Creator::getCreators().contains(Creator::TYPE_ANGLE));
}

TEST(ImageLabelCreator, isTheOnlyOneOfItsType)
{
    MeasuredPointCreator const creator;

    EXPECT_EQ(progError([] { MeasuredPointCreator second; }),
              "fig_image_label: Duplicate element creator registered for element type 1");

    EXPECT_EQ(Creator::getCreators().at(Creator::TYPE_POINT), &creator);
}

TEST(ImageLabelCreator, makesLabelsOfItsType)
{
    MeasuredPointCreator const creator;

    std::unique_ptr<ImageLabel> const label(Creator::create(Creator::TYPE_POINT));

    EXPECT_EQ(label->getLabelType(), Creator::TYPE_POINT);
    EXPECT_NE(dynamic_cast<MeasuredPoint *>(label.get()), nullptr);
}

TEST(ImageLabelCreator, isNeededForALabel)
{
    EXPECT_EQ(progError([] { Creator::create(Creator::TYPE_STRAIN_GRID); }),
              "fig_image_label: No image label creator found for element type 7");
}

TEST(ImageLabelCreators, areAllDestroyedTogether)
{
    new MeasuredPointCreator(Creator::TYPE_LINE);
    new MeasuredPointCreator(Creator::TYPE_ANGLE);

    Creator::destroyCreators();

    EXPECT_TRUE(Creator::getCreators().empty());
}

TEST(InitLibrary, registersLabelsOfImportedMarks)
{
    InitLibrary();
    InitLibrary();

    auto const creator = Creator::getCreators().find(Creator::TYPE_IMPORTED_IMAGE_DATA);
    ASSERT_NE(creator, Creator::getCreators().end());
    EXPECT_EQ(creator->second->getDisplayName(), "imported image data");
    std::unique_ptr<ImageLabel> const label(Creator::create(Creator::TYPE_IMPORTED_IMAGE_DATA));
    auto const *own = dynamic_cast<ImageDataObjectLabel const *>(label.get());
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->getLabelType(), Creator::TYPE_IMPORTED_IMAGE_DATA);
    EXPECT_EQ(own->getImageDataObject().getId(), "");
    Creator::destroyCreators();
}

} // namespace
} // namespace Zem::Fig2
