// ZemFig2Connector.h: Connector, the tie between two elements.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include <ZemStream.h>

#include <QtCore/QString>

#include <iosfwd>

namespace Zem::Fig2 {

class Element;

/// Ties a source element to a target, such as a label to the chart that it annotates. A connector that was just loaded
/// has no target yet, only the target's id. Both elements list the same object; the destructor of either deletes it.
class Connector
{
public:
    /// Kept and stored; the meaning of the numbers is the callers'.
    enum Mode_t : unsigned int {};

    /// Empty connection names. `target` may be null. Throws ProgError for a null source or identical ends.
    Connector(Mode_t mode, Element *source, Element *target);
    /// Stores the arguments unchecked.
    Connector(Mode_t mode, Element *source, QString const &sourceName, Element *target, QString const &targetName);

    Mode_t getMode() const { return mode_; }
    /// The ends; neither is owned.
    Element *getSource() const { return source_; }
    Element *getTarget() const { return target_; }
    /// Binds a connector without a target. Throws ProgError for null, for the source, and when there is a target.
    void setTarget(Element *target);
    /// The parts of source and target that are joined.
    QString const &getSourceName() const { return sourceName_; }
    QString const &getTargetName() const { return targetName_; }
    /// The id that the target had in the stream last loaded from, -1 before.
    int getTargetId() const { return targetId_; }

    /// One stream block. save throws ProgError without a target; load throws IO::StreamException. Neither end is set by
    /// load: whoever reads all elements finds the target by its id. `a` and `b` mean nothing here.
    void save(IO::OutStream *stream, int a, int b) const;
    void load(IO::InStream *stream, int a, int b);
    /// Text form. There must be a target when saving; reading a newer version throws IO::StreamException.
    std::ostream &saveToStream(std::ostream &stream) const;
    std::istream &loadFromStream(std::istream &stream);

private:
    struct Record;
    void take(Record const &record);

    Mode_t mode_;
    Element *source_;
    Element *target_;
    QString sourceName_;
    QString targetName_;
    int targetId_ = -1;
};

std::ostream &operator<<(std::ostream &stream, Connector const &connector);
std::istream &operator>>(std::istream &stream, Connector &connector);

} // namespace Zem::Fig2
