#include <ZemErrorLog.h>

#include <gtest/gtest.h>

using Zem::END_LOG;
using Zem::ErrorLog;

TEST(ErrorLog, keepsOneLinePerFinishedMessage)
{
    ErrorLog log(false);
    log << "first" << END_LOG << "se" << 'c' << "ond" << END_LOG;
    EXPECT_EQ(log.getLog(), "first\nsecond\n");
}

TEST(ErrorLog, showsAMessageThatIsNotFinishedYet)
{
    ErrorLog log(false);
    log << "half";
    EXPECT_EQ(log.getLog(), "half");
}

TEST(ErrorLog, echoesOnlyFinishedMessages)
{
    testing::internal::CaptureStderr();
    ErrorLog log(true);
    log << QString::fromUtf8("für ") << "ever" << END_LOG << "half";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "für ever\n");
}

TEST(ErrorLog, isSilentWithoutEcho)
{
    testing::internal::CaptureStderr();
    ErrorLog log(false);
    log << "text" << END_LOG;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
