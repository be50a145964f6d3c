#include <ZemFig2QtApplication.h>

#include "page_support.h"

#include <ZemError.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace Zem::Fig2Qt {
namespace {

TEST(GuiApplication, isTakenAsItIsWhenThereIsOne)
{
    int argc = 0;

    EXPECT_EQ(ensureGuiApplication(argc, nullptr), nullptr);
    EXPECT_NO_THROW(requireGuiApplication());
}

TEST(GuiApplication, findsTheDefaultFont)
{
    EXPECT_TRUE(Support::run(QStringLiteral("fc-match"), {QStringLiteral("Liberation Sans")})
                    .contains(QLatin1StringView("LiberationSans-Regular")));
}

[[noreturn]] void startWithoutDisplay()
{
    QCoreApplication::instance()->~QCoreApplication(); // lies on the stack of main, to which nothing returns
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("DISPLAY");
    int argc = 1;
    char name[] = "test";
    char *arguments[] = {name, nullptr};
    auto const application = ensureGuiApplication(argc, arguments);
    std::_Exit(QGuiApplication::platformName() == QLatin1StringView("offscreen") ? 7 : 1);
}

// In a process of its own, since there can be only one application object.
TEST(GuiApplicationDeathTest, needsNoDisplay)
{
    EXPECT_EXIT(startWithoutDisplay(), testing::ExitedWithCode(7), "");
}

} // namespace
} // namespace Zem::Fig2Qt
