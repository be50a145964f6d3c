// script_child_list.h: the children of a script object by order and by name, inside this library.
#pragma once

#include <ZemScriptObject.h>

#include <QtCore/QHash>

#include <vector>

namespace Zem {

/// Order: a slot per child, which a removed child leaves empty; the gaps are closed when they outnumber the children.
/// Names: for each name the first child that took it, which begins a ring of the children of that name through their
/// nextOfName_ and previousOfName_. So each operation takes constant time on average.
class ScriptObject::ChildList
{
public:
    ScriptChildren view() const noexcept { return {slots_, size_}; }
    ScriptObject *find(QString const &name) const { return firstOfName_.value(name, nullptr); }
    /// Closes the gaps, so that a loop over all positions is linear.
    ScriptObject *at(std::size_t position);

    void append(ScriptObject *child);
    void remove(ScriptObject *child) noexcept;

    /// Around a change of the child's name.
    void forgetName(ScriptObject *child) noexcept;
    void learnName(ScriptObject *child);

private:
    void closeGaps() noexcept;

    std::vector<ScriptObject *> slots_;
    std::size_t size_ = 0;
    QHash<QString, ScriptObject *> firstOfName_;
};

} // namespace Zem
