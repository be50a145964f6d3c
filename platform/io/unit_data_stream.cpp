#include <ZemStream.h>
#include <ZemTranslate.h>
#include <ZemUnit.h>

namespace Zem {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

UnitData findUnitData(QString const &quantity, QString const &unitName)
{
    if (quantity.isEmpty() && unitName.isEmpty()) {
        return UnitData();
    }
    Unit const *const unit = Unit::getUnit(quantity);
    if (!unit || unit->getName() != quantity) {
        throw IO::StreamException(translate("IO_Stream_err", "unknown quantity '%1'").arg(quantity));
    }
    Unit::Units_t choice{};
    if (!unit->parseUnit(unitName, &choice)) {
        throw IO::StreamException(
            translate("IO_Stream_err", "unknown unit '%1' of quantity '%2'").arg(unitName, quantity));
    }
    return UnitData(unit, choice);
}

} // namespace

void UnitData::save(IO::OutStream *stream) const
{
    QString const quantity = unit_ ? unit_->getName() : QString();
    QString const unitName = getUnitName();
    stream->beginBlock(IO::Stream::sizeOf(quantity) + IO::Stream::sizeOf(unitName), BLOCK_VERSION);
    stream->writeString(quantity);
    stream->writeString(unitName);
    stream->endBlock();
}

void UnitData::load(IO::InStream *stream)
{
    stream->openBlock();
    if (stream->getBlockVersion() > BLOCK_VERSION) {
        throw IO::StreamException(translate("Fig_BlockVersion_Error", "wrong block version"));
    }
    QString quantity;
    QString unitName;
    stream->readString(&quantity);
    stream->readString(&unitName);
    stream->closeBlock();
    *this = findUnitData(quantity, unitName);
}

} // namespace Zem
