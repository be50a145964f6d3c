#include "ZemFig2Group.h"

#include <ZemError.h>

namespace Zem::Fig2 {

namespace {

[[noreturn]] void throwEndReached(char const *function)
{
    throw ProgError(function, "libs/figure2/ZemFig2Group", __LINE__, "end () already reached");
}

} // namespace

template <bool isConst>
void Group::DeepIterator<isConst>::enter(GroupPointer group)
{
    if (group->children_.empty())
        return;
    levels_.push_back({&group->children_, 0});
    groups_.push_back(group);
}

template <bool isConst>
typename Group::DeepIterator<isConst>::ElementPointer Group::DeepIterator<isConst>::current() const
{
    if (levels_.empty())
        throwEndReached("Zem::Fig2::Group::ElementIterator::operator*");
    Level const &top = levels_.back();
    return (*top.children)[top.position];
}

template <bool isConst>
Group::DeepIterator<isConst> &Group::DeepIterator<isConst>::operator++()
{
    if (levels_.empty())
        throwEndReached("Zem::Fig2::Group::ElementIterator::operator++");
    ElementPointer element = current();
    std::size_t const depth = levels_.size();
    if (element->getType() == Element::GROUP) {
        if (auto group = dynamic_cast<GroupPointer>(element))
            enter(group);
    }
    if (levels_.size() > depth)
        return *this;
    while (!levels_.empty() && ++levels_.back().position == levels_.back().children->size()) {
        levels_.pop_back();
        groups_.pop_back();
    }
    return *this;
}

template <bool isConst>
bool Group::DeepIterator<isConst>::operator==(DeepIterator const &other) const
{
    return levels_.size() == other.levels_.size() && (levels_.empty() || levels_.back() == other.levels_.back());
}

template class Group::DeepIterator<false>;
template class Group::DeepIterator<true>;

Group::ElementIterator Group::getElementBegin()
{
    return ElementIterator(this);
}

Group::ElementIterator Group::getElementEnd()
{
    return {};
}

Group::ElementConstIterator Group::getElementBegin() const
{
    return ElementConstIterator(this);
}

Group::ElementConstIterator Group::getElementEnd() const
{
    return {};
}

} // namespace Zem::Fig2
