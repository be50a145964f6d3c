#include "ZemFig2Connector.h"

#include "ZemFig2Element.h"
#include "fig_text_form.h"

#include <ZemError.h>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr unsigned int TEXT_VERSION = 1;

} // namespace

/// What is stored of a connector, in both forms.
struct Connector::Record
{
    unsigned int mode = 0;
    QString sourceName;
    QString targetName;
    int targetId = -1;

    template <class Archive, class Self>
    static void fields(Archive &archive, Self &self)
    {
        archive.field(self.mode);
        archive.field(self.sourceName);
        archive.field(self.targetName);
        archive.field(self.targetId);
    }

    template <class Archive, class Self>
    static void items(Archive &archive, Self &self)
    {
        archive.item(self.mode);
        archive.item(self.sourceName);
        archive.item(self.targetName);
        archive.item(self.targetId);
    }
};

Connector::Connector(Mode_t mode, Element *source, Element *target) : mode_(mode), source_(source), target_(target)
{
    if (!source)
        throw ProgError("Zem::Fig2::Connector::Connector", "fig_connector", __LINE__,
                        "Connector does not have a source");
    if (source == target)
        throw ProgError("Zem::Fig2::Connector::Connector", "fig_connector", __LINE__, "Source and target identical");
}

Connector::Connector(Mode_t mode, Element *source, QString const &sourceName, Element *target,
                     QString const &targetName)
    : mode_(mode), source_(source), target_(target), sourceName_(sourceName), targetName_(targetName)
{
}

void Connector::setTarget(Element *target)
{
    if (!target || target_)
        throw ProgError("Zem::Fig2::Connector::setTarget", "fig_connector", __LINE__,
                        "Disconnecting a connector not allowed");
    if (target == source_)
        throw ProgError("Zem::Fig2::Connector::setTarget", "fig_connector", __LINE__, "Source and target identical");
    target_ = target;
}

void Connector::take(Record const &record)
{
    mode_ = static_cast<Mode_t>(record.mode);
    sourceName_ = record.sourceName;
    targetName_ = record.targetName;
    targetId_ = record.targetId;
}

void Connector::save(IO::OutStream *stream, int, int) const
{
    if (!target_)
        throw ProgError("Zem::Fig2::Connector::save", "fig_connector", __LINE__, "Can't save dangling connectors");
    Record const record{mode_, sourceName_, targetName_, target_->getId()};
    saveBlock(stream, BLOCK_VERSION, [&record](auto &archive) { Record::fields(archive, record); });
}

void Connector::load(IO::InStream *stream, int, int)
{
    loadWrapped("Figure_Connector_err", "cannot load figure connector: %1", [&] {
        Record record;
        loadBlock(stream, BLOCK_VERSION, [&record](auto &archive) { Record::fields(archive, record); });
        take(record);
    });
}

std::ostream &Connector::saveToStream(std::ostream &stream) const
{
    Record const record{mode_, sourceName_, targetName_, target_->getId()};
    return saveText(stream, TEXT_VERSION, [&record](auto &archive) { Record::items(archive, record); });
}

std::istream &Connector::loadFromStream(std::istream &stream)
{
    Record record;
    unsigned int const version =
        loadText(stream, TEXT_VERSION, [&record](auto &archive) { Record::items(archive, record); });
    if (version == TEXT_VERSION && !stream.fail())
        take(record);
    return stream;
}

std::ostream &operator<<(std::ostream &stream, Connector const &connector)
{
    return connector.saveToStream(stream);
}

std::istream &operator>>(std::istream &stream, Connector &connector)
{
    return connector.loadFromStream(stream);
}

} // namespace Zem::Fig2
