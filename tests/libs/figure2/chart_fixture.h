// chart_fixture.h: what the tests of chart data share.
#pragma once

#include <BlockCrafter.h>
#include <ElementForms.h>
#include <ZemFig2ChartData.h>

#include <string>

namespace Zem::Fig2::Fixture {

using Support::BlockCrafter;
using Support::Payload;
using Support::progError;
using Support::thrownText;

template <class Record>
std::string blocksWith(Record const &record)
{
    return Support::streamOf([&record](IO::OutStream &stream) { record.save(&stream); });
}

template <class Record>
void loadFrom(Record &record, std::string const &bytes)
{
    Support::readFrom(bytes, [&record](IO::InStream &stream) { record.load(&stream); });
}

/// The text of the stream failure, "nothing thrown" without one.
template <class Record>
std::string loadError(Record &record, std::string const &bytes)
{
    return thrownText<IO::StreamException>([&] { loadFrom(record, bytes); });
}

/// Appends what records write.
template <class... Records>
BlockCrafter &addRecords(BlockCrafter &crafter, Records const &...records)
{
    return crafter.add([&](IO::OutStream &stream) { (records.save(&stream), ...); });
}

/// Appends symbol, line and fill of default parameters.
inline BlockCrafter &addStyles(BlockCrafter &crafter)
{
    ChartParameters const defaults;
    return addRecords(crafter, defaults.getSymbol(), defaults.getLineStyle(), defaults.getFillStyle());
}

} // namespace Zem::Fig2::Fixture
