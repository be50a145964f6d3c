// Whatever is done to a tree, in any order, it stays sound.
#include "probe_elements.h"

#include <ZemFig2Figure.h>

#include <ZemError.h>

#include <rapidcheck/gtest.h>

#include <set>

namespace Zem::Fig2 {
namespace {

/// A figure, and elements outside it that were taken from it and may come back.
class Forest
{
public:
    void step(unsigned int operation)
    {
        switch (operation) {
        case 0:
            return add(new ProbeRectangle);
        case 1:
            return add(new Group);
        case 2:
            return remove(false);
        case 3:
            return remove(true);
        case 4:
            return replace();
        case 5:
            return changeLayer();
        case 6:
            return withElement([](Element *element) { element->setSelected(!element->isSelected()); });
        case 7:
            return withElement([](Element *element) { element->setVisible(!element->getVisible()); });
        case 8:
            return withElement([this](Element *element) { figure.selectElement(element, pick(2) == 0); });
        case 9:
            return connect();
        case 10:
            return comeBack();
        case 11:
            return figure.clearSelection();
        default:
            figure.removeEmptyGroups();
        }
    }

    Figure figure;

private:
    static std::size_t pick(std::size_t count) { return *rc::gen::inRange<std::size_t>(0, count); }

    std::vector<Element *> elements()
    {
        std::vector<Element *> all;
        for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
            all.push_back(*it);
        return all;
    }

    template <class Act>
    void withElement(Act const &act)
    {
        std::vector<Element *> const all = elements();
        if (!all.empty())
            act(all[pick(all.size())]);
    }

    Group *anyGroup()
    {
        std::vector<Group *> groups{figure.getRoot()};
        for (Element *element : elements()) {
            if (auto *group = dynamic_cast<Group *>(element))
                groups.push_back(group);
        }
        return groups[pick(groups.size())];
    }

    void add(Element *element)
    {
        Group *group = anyGroup();
        bool const behindFirst = group->getChildBegin() != group->getChildEnd() && pick(2) == 0;
        group->addChild(element, behindFirst ? *group->getChildBegin() : nullptr);
    }

    void remove(bool keep)
    {
        withElement([this, keep](Element *element) {
            element->getParent()->removeChild(element);
            outside_.emplace_back(element);
            if (!keep)
                outside_.pop_back();
        });
    }

    void comeBack()
    {
        if (outside_.empty())
            return;
        add(outside_.back().release());
        outside_.pop_back();
    }

    void replace()
    {
        withElement([](Element *element) {
            Element *fresh = pick(2) == 0 ? static_cast<Element *>(new Group) : new ProbeRectangle;
            element->getParent()->replaceChild(element, fresh);
        });
    }

    void changeLayer()
    {
        withElement([](Element *element) {
            Group *group = element->getParent();
            using Move = void (Group::*)(Element const *);
            Move const moves[] = {&Group::layerUp, &Group::layerDown, &Group::layerTop, &Group::layerBottom};
            std::size_t const move = pick(4);
            bool const upwards = move % 2 == 0;
            bool const possible = upwards ? group->canLayerUp(element) : group->canLayerDown(element);
            try {
                (group->*moves[move])(element);
                RC_ASSERT(possible);
            } catch (ProgError const &) {
                RC_ASSERT(!possible);
            }
        });
    }

    void connect()
    {
        withElement([this](Element *source) {
            withElement([source](Element *target) {
                if (source != target && source->canConnectTo(target, "p"))
                    source->connect(target, "p");
            });
        });
    }

    std::vector<std::unique_ptr<Element>> outside_;
};

void checkGroup(Group const &group, Figure const &figure)
{
    std::set<Element const *> seen;
    for (auto it = group.getChildBegin(); it != group.getChildEnd(); ++it) {
        RC_ASSERT((*it)->getParent() == &group);
        RC_ASSERT((*it)->getFigure() == &figure);
        RC_ASSERT(seen.insert(*it).second);
        if (auto const *child = dynamic_cast<Group const *>(*it))
            checkGroup(*child, figure);
    }
    // The master is set when there are children; it is none only where a chain of groups ends in an empty one.
    Element const *master = group.getMasterElement();
    bool const masterIsGroup = master && master->getType() == Element::GROUP;
    bool const hasGroups =
        std::any_of(seen.begin(), seen.end(), [](auto *each) { return each->getType() == Element::GROUP; });
    RC_ASSERT_FALSE(masterIsGroup);
    RC_ASSERT_FALSE(seen.empty() && master != nullptr);
    RC_ASSERT(seen.empty() || master != nullptr || hasGroups);
}

bool isReallySelected(Element const *top)
{
    auto const *group = dynamic_cast<Group const *>(top);
    if (!group)
        return top->isSelected() && top->getVisible();
    bool selected = group->isSelected();
    for (auto it = group->getElementBegin(); it != group->getElementEnd(); ++it)
        selected |= it->getType() != Element::GROUP && it->isSelected() && it->getVisible();
    return selected;
}

void checkSelection(Figure &figure)
{
    std::vector<Element *> const listed = figure.getSelectedElements();
    std::set<Element const *> const different(listed.begin(), listed.end());
    RC_ASSERT(different.size() == listed.size());
    for (Element const *element : listed) {
        RC_ASSERT(figure.getRoot()->childExists(element));
        RC_ASSERT(isReallySelected(element));
    }
}

RC_GTEST_PROP(Tree, staysSoundUnderAnySequenceOfChanges, ())
{
    Forest forest;
    auto const operations = *rc::gen::container<std::vector<unsigned int>>(80, rc::gen::inRange(0U, 13U));
    for (unsigned int operation : operations) {
        forest.step(operation);
        checkGroup(*forest.figure.getRoot(), forest.figure);
        checkSelection(forest.figure);
    }
}

} // namespace
} // namespace Zem::Fig2
