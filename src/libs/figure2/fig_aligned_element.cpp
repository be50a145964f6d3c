#include "ZemFig2AlignedElement.h"

#include "ZemFig2Rotation.h"
#include "ZemFig2Tools.h"
#include "fig_alignment.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr unsigned int TEXT_VERSION = 1;
constexpr int LAST_ELEMENT_VERSION_WITHOUT_BLOCK = 7;
constexpr unsigned int ALIGNMENTS = 3;

/// `step` cut so that `origin` + step stays between 0 and `largest`, 0 winning.
double cutStep(double step, double origin, double largest)
{
    return std::max(std::min(step, largest - origin), -origin);
}

} // namespace

AlignedElement::AlignedElement(Type_t type) : AreaBase(type)
{
}

void AlignedElement::setAutoScale(bool autoScale)
{
    autoScale_ = autoScale;
    invalidate();
}

void AlignedElement::setScaling(double scaling)
{
    scaling_ = scaling;
    invalidate();
}

void AlignedElement::setAlignmentX(Alignment_t alignment)
{
    alignmentX_ = alignment;
    invalidate();
}

void AlignedElement::setAlignmentY(Alignment_t alignment)
{
    alignmentY_ = alignment;
    invalidate();
}

void AlignedElement::setInnerOrigin(BaVec2d<double> const &origin)
{
    innerOrigin_ = origin;
    invalidate();
}

unsigned int AlignedElement::getEstimatedObjectSize() const
{
    return AreaBase::getEstimatedObjectSize() + static_cast<unsigned int>(sizeof(AlignedElement) - sizeof(AreaBase));
}

bool AlignedElement::hasHandle(BaVec2d<double> *position) const
{
    *position = Rotation(this).applyTo(getOrigin() + handleOffset_);
    BaVec2d<double> const inner = getInnerElementSize();
    BaVec2d<double> const drawing = getDrawingSize();
    // Whole numbers: less than a unit too much is no reason for a handle.
    return std::trunc(inner.x) > std::trunc(drawing.x) || std::trunc(inner.y) > std::trunc(drawing.y);
}

void AlignedElement::handleDragStart()
{
}

void AlignedElement::handleMove(BaVec2d<double> const &delta)
{
    BaVec2d<double> d = delta * -1.0;
    // Deliberately not the absolute value: a negative angle does not turn the move.
    if (getAngle() > 1e-50)
        d = Tools::rotateVector(d, getAngle());
    BaVec2d<double> const largest = getInnerElementSize() - getDrawingSize();
    d = {cutStep(d.x, innerOrigin_.x, largest.x), cutStep(d.y, innerOrigin_.y, largest.y)};
    handleOffset_ -= d;
    innerOrigin_ += d;
    invalidate();
}

void AlignedElement::handleDragEnd()
{
}

BaVec2d<double> AlignedElement::computeInnerDrawingSize(BaVec2d<double> const &contentSize) const
{
    BaVec2d<double> const drawing = getDrawingSize();
    return {std::min(contentSize.x, drawing.x), std::min(contentSize.y, drawing.y)};
}

BaVec2d<double> AlignedElement::computeInnerDrawingOrigin(BaVec2d<double> const &contentSize) const
{
    BaVec2d<double> const room = getDrawingSize() - computeInnerDrawingSize(contentSize);
    return getDrawingOrigin() + BaVec2d<double>(alignedRoom(alignmentX_, room.x), alignedRoom(alignmentY_, room.y));
}

template <class Archive, class Self>
void AlignedElement::blockFields(Archive &archive, Self &self)
{
    archive.field(self.autoScale_);
    archive.field(self.scaling_);
    archive.list(self.alignmentX_, ALIGNMENTS);
    archive.list(self.alignmentY_, ALIGNMENTS);
    archive.field(self.innerOrigin_);
}

void AlignedElement::save(IO::OutStream *stream, int a, int b) const
{
    AreaBase::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void AlignedElement::load(IO::InStream *stream, int a, int b)
{
    AreaBase::load(stream, a, b);
    if (getBlockVersion() > LAST_ELEMENT_VERSION_WITHOUT_BLOCK)
        loadBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void AlignedElement::loadOpenAlignment(IO::InStream *stream)
{
    BlockReader reader(stream, stream->getBlockVersion());
    blockFields(reader, *this);
    stream->closeBlock();
}

template <class Archive, class Self>
void AlignedElement::textItems(Archive &archive, Self &self)
{
    archive.item(self.autoScale_);
    archive.item(self.scaling_);
    archive.list(self.alignmentX_, ALIGNMENTS);
    archive.list(self.alignmentY_, ALIGNMENTS);
    archive.item(self.innerOrigin_);
}

std::ostream &AlignedElement::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return AreaBase::saveToStream(stream);
}

std::istream &AlignedElement::loadFromStream(std::istream &stream)
{
    loadText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return AreaBase::loadFromStream(stream);
}

QString AlignedElement::getParameterString() const
{
    QString parameters = AreaBase::getParameterString();
    ParameterWriter writer(parameters);
    writer.item(PARAM_AUTO_SCALE, autoScale_);
    writer.item(PARAM_SCALING, scaling_);
    writer.item(PARAM_ALIGN_X, alignmentX_);
    writer.item(PARAM_ALIGN_Y, alignmentY_);
    writer.item(PARAM_INNER_ORIGIN, innerOrigin_);
    return parameters;
}

void AlignedElement::createFromParameterString(QString &parameters)
{
    AreaBase::createFromParameterString(parameters);
    ParameterReader reader(parameters);
    reader.item(PARAM_AUTO_SCALE, autoScale_);
    reader.item(PARAM_INNER_ORIGIN, innerOrigin_);
    reader.item(PARAM_ALIGN_X, alignmentX_);
    reader.item(PARAM_ALIGN_Y, alignmentY_);
    reader.item(PARAM_SCALING, scaling_);
    invalidate();
}

} // namespace Zem::Fig2
