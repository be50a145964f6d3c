// tree_builders.h: small trees and what can be seen of them.
#pragma once

#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Group.h>

#include <string>
#include <vector>

namespace Zem::Fig2 {

inline ProbeRectangle *add(Group *group, std::string const &name = "", double x = 10, double y = 10, double edge = 4)
{
    auto *rectangle = new ProbeRectangle(name);
    rectangle->setOrigin({x, y});
    rectangle->setSize({edge, edge});
    rectangle->setBorder(LineStyle::null);
    group->addChild(rectangle);
    return rectangle;
}

inline ProbeRectangle *add(Group &group, double x = 0, double y = 0, double edge = 10)
{
    return add(&group, "", x, y, edge);
}

inline Group *addGroup(Group *group)
{
    auto *child = new Group;
    group->addChild(child);
    return child;
}

inline Group *addGroup(Group &group)
{
    return addGroup(&group);
}

inline std::vector<Element *> childrenOf(Group &group)
{
    return {group.getChildBegin(), group.getChildEnd()};
}

inline void updateAll(Group &group)
{
    for (auto it = group.getElementBegin(); it != group.getElementEnd(); ++it)
        it->update(StageIdentifier(1), nullptr, nullptr);
    group.computeDynamicData(StageIdentifier(1), nullptr);
}

using Elements = std::vector<Element *>;

struct Ends
{
    Element const *source;
    Element const *target;
    std::string name;

    bool operator==(Ends const &) const = default;
};

inline std::vector<Ends> connectorsOf(Element const *element)
{
    std::vector<Ends> ends;
    for (auto it = element->getConnectorBegin(); it != element->getConnectorEnd(); ++it)
        ends.push_back({(*it)->getSource(), (*it)->getTarget(), (*it)->getTargetName().toStdString()});
    return ends;
}

inline std::vector<std::string> formsBelow(Group &group)
{
    std::vector<std::string> forms;
    for (auto it = group.getElementBegin(); it != group.getElementEnd(); ++it)
        forms.push_back(Support::parameterForm(**it));
    return forms;
}

} // namespace Zem::Fig2
