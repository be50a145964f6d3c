#include <ZemError.h>

#include <gtest/gtest.h>

using Zem::Exception;
using Zem::ProgError;

TEST(Exception, givesItsTextAlsoAsUtf8)
{
    Exception const error(QString::fromUtf8("größer"));
    EXPECT_EQ(error.getText(), QString::fromUtf8("größer"));
    EXPECT_STREQ(error.what(), "größer");
}

TEST(Exception, isCaughtAsAStandardException)
{
    EXPECT_THROW(throw Exception("x"), std::exception);
}

TEST(ProgError, namesThePlaceInItsText)
{
    ProgError const error("Zem::Thing::work", "thing", 42, "no %1 here");
    EXPECT_STREQ(error.what(), "Zem::Thing::work (thing:42): no %1 here");
    EXPECT_TRUE(error.isFatal());
}

TEST(ProgError, withoutAPlaceIsOnlyItsText)
{
    ProgError const error("went wrong", false);
    EXPECT_STREQ(error.what(), "went wrong");
    EXPECT_FALSE(error.isFatal());
}
