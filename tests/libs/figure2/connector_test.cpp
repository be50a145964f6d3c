#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Connector.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::thrownText;

constexpr Connector::Mode_t MODE{3};

std::string textOf(Connector const &connector)
{
    std::ostringstream stream;
    stream << connector;
    return stream.str();
}

TEST(ConnectorConstructor, ofThreeArgumentsLeavesNamesEmpty)
{
    ProbeRectangle source;
    ProbeRectangle target;

    Connector const connector(MODE, &source, &target);

    EXPECT_EQ(connector.getMode(), MODE);
    EXPECT_EQ(connector.getSource(), &source);
    EXPECT_EQ(connector.getTarget(), &target);
    EXPECT_EQ(connector.getSourceName(), QString());
    EXPECT_EQ(connector.getTargetName(), QString());
}

TEST(ConnectorConstructor, ofThreeArgumentsChecksTheEnds)
{
    ProbeRectangle element;

    EXPECT_EQ(progError([&] { Connector(MODE, nullptr, &element); }),
              "fig_connector: Connector does not have a source");
    EXPECT_EQ(progError([&] { Connector(MODE, &element, &element); }), "fig_connector: Source and target identical");
}

TEST(ConnectorConstructor, ofFiveArgumentsChecksNothing)
{
    ProbeRectangle element;

    EXPECT_EQ(Connector(MODE, nullptr, "s", &element, "t").getSource(), nullptr);
    Connector const loop(MODE, &element, "s", &element, "t");
    EXPECT_EQ(loop.getSource(), loop.getTarget());
    EXPECT_EQ(loop.getSourceName(), "s");
    EXPECT_EQ(loop.getTargetName(), "t");
}

TEST(ConnectorCopy, takesAllFieldsAsTheyAre)
{
    ProbeRectangle source;
    ProbeRectangle target;
    Connector const connector(MODE, &source, "s", &target, "t");

    Connector copy = connector;
    copy = connector;

    EXPECT_EQ(copy.getMode(), MODE);
    EXPECT_EQ(copy.getSource(), &source);
    EXPECT_EQ(copy.getTarget(), &target);
    EXPECT_EQ(copy.getSourceName(), "s");
    EXPECT_EQ(copy.getTargetName(), "t");
}

TEST(ConnectorSetTarget, bindsAConnectorWithoutTargetOnce)
{
    ProbeRectangle source;
    ProbeRectangle target;
    Connector connector(MODE, &source, nullptr);

    connector.setTarget(&target);

    EXPECT_EQ(connector.getTarget(), &target);
    EXPECT_EQ(progError([&] { connector.setTarget(&target); }), "fig_connector: Disconnecting a connector not allowed");
}

TEST(ConnectorSetTarget, refusesNothingAndTheSource)
{
    ProbeRectangle source;
    Connector connector(MODE, &source, nullptr);

    EXPECT_EQ(progError([&] { connector.setTarget(nullptr); }), "fig_connector: Disconnecting a connector not allowed");
    EXPECT_EQ(progError([&] { connector.setTarget(&source); }), "fig_connector: Source and target identical");
}

TEST(ConnectorBlock, holdsModeNamesAndTargetId)
{
    ProbeRectangle source;
    ProbeRectangle target;
    Connector const connector(MODE, &source, "src", &target, "point");

    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { connector.save(&stream, -1, -1); });

    // 8 for mode and id, 4 + 3 and 4 + 5 for the names.
    EXPECT_EQ(Support::blocksOf(bytes), "1:24 ");
    Connector read(Connector::Mode_t{}, &source, nullptr);
    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });
    EXPECT_EQ(read.getMode(), MODE);
    EXPECT_EQ(read.getSourceName(), "src");
    EXPECT_EQ(read.getTargetName(), "point");
    EXPECT_EQ(read.getTargetId(), target.getId());
    EXPECT_EQ(read.getSource(), &source);
    EXPECT_EQ(read.getTarget(), nullptr);
}

TEST(ConnectorBlock, keepsItsOrderOfFields)
{
    ProbeRectangle source;
    Connector read(Connector::Mode_t{}, &source, nullptr);

    Support::readFrom(Support::BlockCrafter().block(1, Support::Payload().u(3).s("src").s("point").i(-5)).bytes(),
                      [&](IO::InStream &stream) { read.load(&stream, -1, -1); });

    EXPECT_EQ(read.getMode(), MODE);
    EXPECT_EQ(read.getSourceName(), "src");
    EXPECT_EQ(read.getTargetName(), "point");
    EXPECT_EQ(read.getTargetId(), -5);
}

TEST(ConnectorBlock, ofAnotherVersionIsRefused)
{
    ProbeRectangle source;
    for (unsigned int version : {0U, 2U}) {
        Connector read(Connector::Mode_t{}, &source, nullptr);
        std::string const bytes =
            Support::BlockCrafter().block(version, Support::Payload().u(3).s("").s("").i(1)).bytes();
        EXPECT_NE(thrownText<IO::StreamException>([&] {
                      Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });
                  }).find("wrong block version"),
                  std::string::npos);
    }
}

TEST(ConnectorBlock, needsATarget)
{
    ProbeRectangle source;
    Connector const connector(MODE, &source, nullptr);

    EXPECT_EQ(progError([&] { Support::streamOf([&](IO::OutStream &stream) { connector.save(&stream, -1, -1); }); }),
              "fig_connector: Can't save dangling connectors");
}

TEST(ConnectorText, isOneLineOfWords)
{
    ProbeRectangle source;
    ProbeRectangle target;
    Connector const connector(MODE, &source, "", &target, "two words");

    EXPECT_EQ(textOf(connector), "1 3 \\e two\\swords " + std::to_string(target.getId()) + " ");
}

TEST(ConnectorText, isReadBack)
{
    ProbeRectangle source;
    Connector read(Connector::Mode_t{}, &source, nullptr);
    std::istringstream stream("1 3\n \\e  two\\swords 42 rest");

    stream >> read;

    EXPECT_EQ(read.getMode(), MODE);
    EXPECT_EQ(read.getSourceName(), QString());
    EXPECT_EQ(read.getTargetName(), "two words");
    EXPECT_EQ(read.getTargetId(), 42);
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "rest");
}

TEST(ConnectorText, ofANewerVersionIsRefused)
{
    ProbeRectangle source;
    Connector read(Connector::Mode_t{}, &source, nullptr);
    std::istringstream stream("2 3 \\e \\e 42 ");

    EXPECT_EQ(thrownText<IO::StreamException>([&] { stream >> read; }), "wrong block version");
}

TEST(ConnectorText, ofVersionZeroHoldsNothing)
{
    ProbeRectangle source;
    Connector read(MODE, &source, nullptr);
    std::istringstream stream("0 9");

    stream >> read;

    EXPECT_EQ(read.getMode(), MODE);
    int next = 0;
    stream >> next;
    EXPECT_EQ(next, 9);
}

} // namespace
} // namespace Zem::Fig2
