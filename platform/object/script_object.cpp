#include <ZemError.h>
#include <ZemScriptObject.h>

#include "script_child_list.h"

namespace Zem {

ScriptObject::ScriptObject() noexcept = default;

ScriptObject::~ScriptObject()
{
    detach();
    for (ScriptObject *child : getChildren()) {
        child->parent_ = nullptr;
    }
}

void ScriptObject::setName(QString const &name)
{
    if (name == name_) {
        return;
    }
    if (parent_) {
        parent_->children_->forgetName(this);
    }
    name_ = name;
    if (parent_) {
        parent_->children_->learnName(this);
    }
}

void ScriptObject::setParent(ScriptObject *parent)
{
    if (parent == parent_) {
        return;
    }
    if (parent && (parent == this || parent->isBelow(this))) {
        throw ProgError("Zem::ScriptObject::setParent", "script_object", __LINE__, "an object cannot lie below itself");
    }
    detach();
    if (parent) {
        parent->childList().append(this);
        parent_ = parent;
    }
}

ScriptChildren ScriptObject::getChildren() const noexcept
{
    return children_ ? children_->view() : ScriptChildren();
}

ScriptObject *ScriptObject::getChild(QString const &name) const
{
    return children_ ? children_->find(name) : nullptr;
}

ScriptObject *ScriptObject::getChild(unsigned int position) const
{
    return children_ ? children_->at(position) : nullptr;
}

bool ScriptObject::isIndexed() const
{
    return false;
}

unsigned int ScriptObject::getIndexCount() const
{
    return 0;
}

int ScriptObject::getIndex() const
{
    return NO_INDEX;
}

std::vector<int> ScriptObject::getAllIndices() const
{
    return {};
}

int ScriptObject::getIndexByName(QString const &) const
{
    return NO_INDEX;
}

QString ScriptObject::getNameFromIndex(int) const
{
    return {};
}

unsigned int ScriptObject::getStageIdentifier() const
{
    return NO_STAGE;
}

ScriptObject::ChildList &ScriptObject::childList()
{
    if (!children_) {
        children_ = std::make_unique<ChildList>();
    }
    return *children_;
}

void ScriptObject::detach() noexcept
{
    if (parent_) {
        parent_->children_->remove(this);
        parent_ = nullptr;
    }
}

bool ScriptObject::isBelow(ScriptObject const *ancestor) const noexcept
{
    for (ScriptObject const *node = parent_; node; node = node->parent_) {
        if (node == ancestor) {
            return true;
        }
    }
    return false;
}

TokenInterfaceScriptObject::~TokenInterfaceScriptObject() = default;

NoTokenScriptObject::NoTokenScriptObject() noexcept = default;

NoTokenScriptObject::~NoTokenScriptObject() = default;

} // namespace Zem
