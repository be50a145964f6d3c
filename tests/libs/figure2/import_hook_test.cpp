// How the application takes part in reading figures.
#include "crafted_element.h"
#include "import_fixture.h"

#include <ZemFig2ImportHook.h>
#include <ZemFig2Label.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

/// Notes what it is asked, and adds its name to each text.
class TestHook : public ImportHook
{
public:
    explicit TestHook(std::string const &name, std::string *calls = nullptr) : name_(name), calls_(calls)
    {
        registerImportHook(this);
    }
    ~TestHook() override { unregisterImportHook(this); }

    void convertFigure(Figure *figure) override
    {
        last = figure;
        if (calls_)
            *calls_ += name_ + " ";
    }
    QString convertLabelText(Element const *element, QString const &text) override
    {
        label = element;
        return text + QString::fromStdString(name_);
    }

    Figure *last = nullptr;
    Element const *label = nullptr;

private:
    std::string name_;
    std::string *calls_;
};

/// Leaves texts as they are.
class QuietHook : public ImportHook
{
public:
    QuietHook() { registerImportHook(this); }
    ~QuietHook() override { unregisterImportHook(this); }
    void convertFigure(Figure *) override {}
};

/// Takes itself from the list when it is called.
class ShyHook : public ImportHook
{
public:
    ShyHook() { registerImportHook(this); }
    void convertFigure(Figure *) override { unregisterImportHook(this); }
};

TEST(ImportHooks, areKeptInTheOrderOfRegistration)
{
    TestHook first("a");
    TestHook second("b");

    EXPECT_EQ(ImportHook::getImportHooks(), (std::vector<ImportHook *>{&first, &second}));
}

TEST(ImportHooks, areTakenAway)
{
    {
        TestHook hook("a");
    }

    EXPECT_TRUE(ImportHook::getImportHooks().empty());
}

TEST(ImportHooks, thatAreNotRegisteredCannotBeTakenAway)
{
    TestHook hook("a");

    ImportHook::unregisterImportHook(&hook);
    EXPECT_EQ(progError([&hook] { ImportHook::unregisterImportHook(&hook); }),
              "fig_import_hook: Import hook is not registered");
    ImportHook::registerImportHook(&hook);
}

TEST(ImportHooks, areCalledForFiguresInTheirOrder)
{
    std::string calls;
    TestHook first("a", &calls);
    TestHook second("b", &calls);
    Figure figure;

    ImportHook::callConvertFigure(&figure);

    EXPECT_EQ(calls, "a b ");
    EXPECT_EQ(first.last, &figure);
}

TEST(ImportHooks, mayTakeThemselvesAwayWhenCalled)
{
    std::string calls;
    ShyHook shy;
    TestHook first("a", &calls);
    TestHook second("b", &calls);
    Figure figure;

    ImportHook::callConvertFigure(&figure);

    EXPECT_EQ(calls, "a b ");
}

TEST(ImportHooks, getEachOthersTexts)
{
    TestHook first("a");
    QuietHook quiet;
    TestHook second("b");
    Label label;

    EXPECT_EQ(ImportHook::callConvertLabelText(&label, "x"), "xab");
    EXPECT_EQ(second.label, &label);
}

TEST(ImportHooks, leaveTextsAloneWhenThereIsNone)
{
    EXPECT_EQ(ImportHook::callConvertLabelText(nullptr, "x"), "x");
}

TEST(ImportHooks, areCalledForFiguresThatWereLoaded)
{
    Figure figure;
    figure.getRoot()->addChild(new Label);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    TestHook hook("a");
    Figure read;

    Support::readFrom(bytes, [&read](IO::InStream &stream) { read.load(&stream, -1, -1); });

    EXPECT_EQ(hook.last, &read);
}

TEST(ImportHooks, areNotCalledForFiguresThatCannotBeLoaded)
{
    TestHook hook("a");
    Figure figure;

    EXPECT_THROW(Support::readFrom(Support::streamOf([](IO::OutStream &) {}),
                                   [&figure](IO::InStream &stream) { figure.load(&stream, -1, -1); }),
                 IO::StreamException);
    EXPECT_EQ(hook.last, nullptr);
}

TEST(ImportHooks, areCalledForOlderFiguresAndTheirTexts)
{
    TestHook hook("a");

    auto const figure = importFigure(Support::oldFigure({oldElementOf(Import::OLD_TEXT, Support::oldText(1))}));

    EXPECT_EQ(hook.last, figure.get());
    EXPECT_EQ(childAt<Label>(*figure, 0).getText(), "length $5.2[mm]part.length$a");
    EXPECT_EQ(hook.label, &childAt<Label>(*figure, 0));
}

TEST(ImportHooks, changeTheTextsOfLabelsThatAreRead)
{
    Label label;
    label.setText("x");
    std::string const blocks = Support::blockForm(label);
    std::string const text = Support::textForm(label);
    TestHook hook("a");
    Label fromBlocks;
    Label fromText;

    Support::loadBlocks(fromBlocks, blocks);
    EXPECT_EQ(hook.label, &fromBlocks);
    Support::loadText(fromText, text);
    EXPECT_EQ(hook.label, &fromText);

    EXPECT_EQ(fromBlocks.getText(), "xa");
    EXPECT_EQ(fromText.getText(), "xa");
}

} // namespace
} // namespace Zem::Fig2
