#include "element_recovery.h"

#include "page_schema.h"

#include <ZemFig2ImageLabel.h>
#include <ZemFig2ImageLabelCreator.h>
#include <ZemStream.h>

#include <algorithm>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

/// So many elements one behind the other that can be read are no chance.
constexpr int ENOUGH_IN_A_ROW = 3;
/// For each byte of the file so many may be read in search of elements, and an attempt counts as so many at least.
constexpr std::size_t READ_PER_BYTE = 64;
constexpr std::size_t LEAST_READ = std::size_t{64} << 20;
constexpr std::size_t COST_OF_ATTEMPT = 512;
/// A hole may have held so many elements at most.
constexpr std::size_t MOST_IN_A_HOLE = 64;

bool isKnownType(unsigned int type)
{
    return type < Element::NUMBER_OF_TYPES;
}

void adopt(std::unique_ptr<Element> child, Group::ChildTable const &table, Group *group)
{
    group->addChild(child.get());
    Element *const kept = child.release();
    if (table.hasMaster && kept->getId() == table.masterId)
        group->setMasterElement(kept);
}

} // namespace

/// An element that was read, or why it was not.
struct ElementRecovery::Attempt
{
    std::unique_ptr<Element> element;
    std::size_t next = 0;
    QString failure;
};

ElementRecovery::ElementRecovery(IO::BlockScan const &scan, std::vector<RecoveryNote> *notes)
    : scan_(scan), notes_(notes), work_(std::max(LEAST_READ, READ_PER_BYTE * scan.getSize()))
{
}

void ElementRecovery::lose(unsigned int type, QString const &reason)
{
    QString const name = isKnownType(type) ? Element::getTypeParameterName(static_cast<Element::Type_t>(type))
                                           : QStringLiteral("element");
    notes_->push_back({QString(name).replace(QLatin1Char('_'), QLatin1Char(' ')), false, reason});
}

void ElementRecovery::keep(Element const &element)
{
    notes_->push_back({describe(element), true, QString()});
}

/// A group is read without its children here.
ElementRecovery::Attempt ElementRecovery::tryElement(std::size_t first, unsigned int type)
{
    Attempt attempt;
    if (first >= scan_.getBlocks().size()) {
        attempt.failure = QStringLiteral("the file ends before it");
        return attempt;
    }
    std::unique_ptr<std::istream> const bytes = scan_.openStream(first);
    try {
        IO::InStream stream(bytes.get());
        if (type == Element::IMAGE_LABEL) {
            attempt.element.reset(ImageLabelCreator::load(&stream));
        } else {
            attempt.element.reset(Element::create(static_cast<Element::Type_t>(type)));
            if (auto *group = dynamic_cast<Group *>(attempt.element.get())) {
                group->Element::load(&stream, -1, -1);
                Group::loadChildTable(&stream);
            } else {
                attempt.element->load(&stream, -1, -1);
            }
        }
    } catch (Exception const &error) {
        attempt.element.reset();
        attempt.failure = error.getText();
    }
    attempt.next = scan_.getBlock(bytes.get());
    std::size_t const last = std::max(first, attempt.next - 1);
    std::size_t const bytesRead = scan_.getBlocks()[last].end() - scan_.getBlocks()[first].position;
    work_ -= std::min(work_, bytesRead + COST_OF_ATTEMPT);
    return attempt;
}

/// Whether the next few elements can be read one behind the other. A group ends the row: it tells enough by itself.
bool ElementRecovery::canReadOn(std::vector<unsigned int> const &types, Cursor cursor)
{
    int found = 0;
    for (; cursor.child < types.size() && found < ENOUGH_IN_A_ROW; ++cursor.child) {
        unsigned int const type = types[cursor.child];
        if (!isKnownType(type))
            continue;
        Attempt const attempt = tryElement(cursor.block, type);
        if (!attempt.element || !scan_.isSound(cursor.block, attempt.next))
            // The end of what is there is as good as the end of the list.
            return found > 0 && (cursor.block >= scan_.getBlocks().size() || attempt.element);
        if (type == Element::GROUP)
            return true;
        ++found;
        cursor.block = attempt.next;
    }
    return found > 0;
}

/// Each lost element had a block at least, so no more of the list are passed over than blocks, unless a hole did away
/// with some of them.
std::optional<ElementRecovery::Cursor> ElementRecovery::findNext(std::vector<unsigned int> const &types, Cursor cursor,
                                                                 bool lostSome)
{
    std::size_t const count = scan_.getBlocks().size();
    bool isBehindAHole = false;
    for (std::size_t block = cursor.block; block < count; ++block) {
        isBehindAHole = isBehindAHole || scan_.getBlocks()[block].isBehindAHole;
        std::size_t const passed = block - cursor.block + (lostSome ? 1 : 0);
        std::size_t const most = passed + (isBehindAHole ? MOST_IN_A_HOLE : 0);
        for (std::size_t child = cursor.child; child < types.size() && child <= cursor.child + most; ++child) {
            if (work_ == 0)
                return std::nullopt;
            if (isKnownType(types[child]) && canReadOn(types, {block, child}))
                return Cursor{block, child};
        }
    }
    return std::nullopt;
}

bool ElementRecovery::readOwnBlocks(std::size_t first, Group *group, Group::ChildTable *table, std::size_t *next)
{
    if (first >= scan_.getBlocks().size())
        return false;
    std::unique_ptr<std::istream> const bytes = scan_.openStream(first);
    try {
        IO::InStream stream(bytes.get());
        group->Element::load(&stream, -1, -1);
        *table = Group::loadChildTable(&stream);
    } catch (Exception const &) {
        return false;
    }
    *next = scan_.getBlock(bytes.get());
    return true;
}

std::unique_ptr<Group> ElementRecovery::readRoot(std::size_t first, std::size_t *next)
{
    auto root = std::make_unique<Group>();
    return readGroup(first, root.get(), 0, next) ? std::move(root) : nullptr;
}

bool ElementRecovery::readGroup(std::size_t first, Group *group, unsigned int depth, std::size_t *next)
{
    Group::ChildTable table;
    if (depth > Group::MAXIMUM_DEPTH || !readOwnBlocks(first, group, &table, next))
        return false;
    if (!scan_.isSound(first, *next))
        notes_->push_back({depth == 0 ? QStringLiteral("list of elements") : describe(*group), true,
                           QStringLiteral("is damaged itself: looks and types may be wrong")});
    else if (depth > 0)
        keep(*group);
    Cursor cursor{*next, 0};
    readChildren(table, group, depth, &cursor);
    *next = cursor.block;
    return true;
}

void ElementRecovery::readChildren(Group::ChildTable const &table, Group *group, unsigned int depth, Cursor *cursor)
{
    while (cursor->child < table.types.size()) {
        if (!isKnownType(table.types[cursor->child])) {
            ++cursor->child;
            continue;
        }
        bool const isAfterAHole =
            cursor->block < scan_.getBlocks().size() && scan_.getBlocks()[cursor->block].isBehindAHole;
        if (!isAfterAHole && readChild(table, group, depth, cursor))
            continue;
        std::optional<Cursor> const found = findNext(table.types, *cursor, !isAfterAHole);
        std::size_t const end = found ? found->child : table.types.size();
        for (; cursor->child < end; ++cursor->child)
            lose(table.types[cursor->child], QStringLiteral("cannot be read"));
        if (!found)
            return;
        cursor->block = found->block;
        // What was found is read here, whatever is before it.
        if (!readChild(table, group, depth, cursor)) {
            lose(table.types[cursor->child], QStringLiteral("cannot be read"));
            ++cursor->child;
        }
    }
}

/// Goes on behind the child when it was read, whether it can be kept or not.
bool ElementRecovery::readChild(Group::ChildTable const &table, Group *group, unsigned int depth, Cursor *cursor)
{
    unsigned int const type = table.types[cursor->child];
    if (type == Element::GROUP) {
        auto child = std::make_unique<Group>();
        std::size_t next = cursor->block;
        if (!readGroup(cursor->block, child.get(), depth + 1, &next))
            return false;
        adopt(std::move(child), table, group);
        *cursor = {next, cursor->child + 1};
        return true;
    }
    Attempt attempt = tryElement(cursor->block, type);
    if (!attempt.element)
        return false;
    if (scan_.isSound(cursor->block, attempt.next)) {
        keep(*attempt.element);
        adopt(std::move(attempt.element), table, group);
    } else {
        notes_->push_back({describe(*attempt.element), false, QStringLiteral("one of its blocks is damaged")});
    }
    *cursor = {attempt.next, cursor->child + 1};
    return true;
}

} // namespace Zem::Zemfig
