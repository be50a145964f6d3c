// The persistent forms of Group.
#include "ZemFig2Group.h"

#include "ZemFig2Figure.h"
#include "ZemFig2ImageLabel.h"
#include "fig_block.h"
#include "fig_parameters.h"

#include <ZemError.h>

#include <memory>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 2; // 2: master

} // namespace

namespace {

/// Of a number outside the enumeration the table keeps the number alone; load reads nothing for it.
bool isKnown(Element const *child)
{
    return child->getType() < Element::NUMBER_OF_TYPES;
}

/// Any element can be given the type; only of an image label there are the blocks that load expects.
ImageLabel const *requireImageLabel(Element const *child)
{
    auto const *label = dynamic_cast<ImageLabel const *>(child);
    if (!label)
        throw ProgError("Zem::Fig2::Group::save", "fig_group", __LINE__, "Image label cast failed");
    return label;
}

} // namespace

void Group::save(IO::OutStream *stream, int a, int b) const
{
    // What load would refuse must not replace a good file.
    requireDepth();
    if (!getParent())
        requireElements();
    Element::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) {
        archive.field(static_cast<unsigned int>(children_.size()));
        for (Element const *child : children_)
            archive.field(static_cast<unsigned int>(child->getType()));
        archive.field(masterElement_ != nullptr);
        archive.field(masterElement_ ? masterElement_->getId() : 0);
    });
    for (Element const *child : children_) {
        if (child->getType() == IMAGE_LABEL)
            ImageLabelCreator::save(stream, requireImageLabel(child));
        else if (isKnown(child))
            child->save(stream, a, b);
    }
}

Group::ChildTable Group::loadChildTable(IO::InStream *stream)
{
    ChildTable table;
    loadBlock(stream, BLOCK_VERSION, [&table](BlockReader &archive) {
        unsigned int count = 0;
        archive.field(count);
        // No room is made for the count: a wrong one ends at the end of the block.
        for (unsigned int i = 0; i < count; ++i) {
            unsigned int type = 0;
            archive.field(type);
            table.types.push_back(type);
        }
        archive.field(table.hasMaster, Since{2}, false);
        archive.field(table.masterId, Since{2}, 0);
    });
    return table;
}

void Group::requireDepth() const
{
    unsigned int depth = 0;
    for (Group const *group = getParent(); group; group = group->getParent())
        ++depth;
    if (depth > MAXIMUM_DEPTH)
        throw IO::StreamException(translate("Figure_Group_err", "groups nested too deeply"));
}

namespace {

void requireCount(std::size_t elements)
{
    if (elements > Group::MAXIMUM_ELEMENTS)
        throw IO::StreamException(translate("Figure_Group_err", "more than %1 elements").arg(Group::MAXIMUM_ELEMENTS));
}

} // namespace

void Group::requireElements() const
{
    std::size_t count = 0;
    for (auto it = getElementBegin(); it != getElementEnd(); ++it)
        ++count;
    requireCount(count);
}

/// Children of unknown types count as well: a file that claims many costs the time of many.
void Group::countLoaded(std::size_t children)
{
    Group *top = this;
    while (top->getParent())
        top = top->getParent();
    if (top == this)
        loadedElements_ = 0;
    top->loadedElements_ += children;
    requireCount(top->loadedElements_);
}

void Group::load(IO::InStream *stream, int a, int b)
{
    loadWrapped("Figure_Group_err", "cannot load figure group: %1", [&] {
        requireDepth();
        Element::load(stream, a, b);
        loadChildren(stream, a, b);
    });
}

std::unique_ptr<Element> Group::loadChild(IO::InStream *stream, Type_t type, int a, int b)
{
    std::unique_ptr<Element> child(Element::create(type));
    if (!child)
        return child;
    child->setParent(this);
    // Named by what it loads: a name made now would only be looked for in vain among those that come.
    child->joinFigure(getFigure());
    child->load(stream, a, b);
    return child;
}

std::unique_ptr<Element> Group::loadImageLabel(IO::InStream *stream)
{
    std::unique_ptr<Element> label(ImageLabelCreator::load(stream));
    label->setParent(this);
    label->joinFigure(getFigure());
    return label;
}

void Group::loadChildren(IO::InStream *stream, int a, int b)
{
    deleteChildren();
    ChildTable const table = loadChildTable(stream);
    countLoaded(table.types.size());
    for (unsigned int type : table.types) {
        std::unique_ptr<Element> child =
            type == IMAGE_LABEL ? loadImageLabel(stream) : loadChild(stream, static_cast<Type_t>(type), a, b);
        // A type that this release does not know has left nothing in the stream to read.
        if (!child)
            continue;
        if (table.hasMaster && child->getId() == table.masterId)
            masterElement_ = child.get();
        children_.push_back(child.get());
        static_cast<void>(child.release());
    }
    if (!masterElement_ && !children_.empty())
        masterElement_ = children_.front();
}

std::istream &Group::loadFromStream(std::istream &)
{
    throw ProgError("not implemented", true);
}

std::ostream &Group::saveToStream(std::ostream &) const
{
    throw ProgError("not implemented", true);
}

QString Group::getParameterString() const
{
    // The place of a group is that of its master; its own member is never used.
    return Element::getParameterString();
}

namespace {

/// The entry tells what the group is and must not make groups of its children.
void takeOwnType(QString &parameters)
{
    QString rest = parameters;
    QLatin1StringView const key = Element::PARAM_TYPE;
    if (Parse::parameterExists(rest, key) &&
        Parse::getString(rest, key) == Element::getTypeParameterName(Element::GROUP))
        parameters = rest;
}

} // namespace

void Group::createFromParameterString(QString &parameters)
{
    ParameterReader reader(parameters);
    takeOwnType(parameters);
    if (reader.exists(PARAM_ORIGIN)) {
        BaVec2d<double> origin;
        reader.item(PARAM_ORIGIN, origin);
        setOrigin(origin);
    }
    // An angle means nothing to a group and goes to the children with all other entries.
    for (Element *child : children_) {
        QString rest = parameters;
        child->createFromParameterString(rest);
    }
}

} // namespace Zem::Fig2
