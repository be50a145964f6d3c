// ZemFig2PointMask.h: PointMask, a named set of mask bits by which the points of a picture are filtered.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include <ZemStream.h>

#include <QtCore/QString>

namespace Zem::Fig2 {

/// What a user chooses as the mask of an ImageDataVisualisation.
class PointMask
{
public:
    /// Shows all points and has no name.
    PointMask() = default;
    PointMask(int mask, QString const &name) : mask_(mask), name_(name) {}

    int getMask() const { return mask_; }
    QString const &getName() const { return name_; }

    /// One stream block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    bool operator==(PointMask const &) const = default;

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);

    int mask_ = -1;
    QString name_;
};

} // namespace Zem::Fig2
