#include "script_child_list.h"

namespace Zem {

ScriptObject *ScriptObject::ChildList::at(std::size_t position)
{
    if (position >= size_) {
        return nullptr;
    }
    if (slots_.size() != size_) {
        closeGaps();
    }
    return slots_[position];
}

void ScriptObject::ChildList::append(ScriptObject *child)
{
    learnName(child);
    child->slot_ = slots_.size();
    slots_.push_back(child);
    ++size_;
}

void ScriptObject::ChildList::remove(ScriptObject *child) noexcept
{
    forgetName(child);
    slots_[child->slot_] = nullptr;
    --size_;
    while (!slots_.empty() && !slots_.back()) {
        slots_.pop_back();
    }
    if (slots_.size() > 2 * size_ + 16) {
        closeGaps();
    }
}

void ScriptObject::ChildList::learnName(ScriptObject *child)
{
    ScriptObject *&first = firstOfName_[child->name_];
    if (!first) {
        first = child;
        child->nextOfName_ = child;
        child->previousOfName_ = child;
        return;
    }
    child->nextOfName_ = first;
    child->previousOfName_ = first->previousOfName_;
    first->previousOfName_->nextOfName_ = child;
    first->previousOfName_ = child;
}

void ScriptObject::ChildList::forgetName(ScriptObject *child) noexcept
{
    if (child->nextOfName_ == child) {
        firstOfName_.remove(child->name_);
        return;
    }
    child->previousOfName_->nextOfName_ = child->nextOfName_;
    child->nextOfName_->previousOfName_ = child->previousOfName_;
    auto const first = firstOfName_.find(child->name_);
    if (first.value() == child) {
        first.value() = child->nextOfName_;
    }
}

void ScriptObject::ChildList::closeGaps() noexcept
{
    std::size_t next = 0;
    for (ScriptObject *child : slots_) {
        if (child) {
            child->slot_ = next;
            slots_[next++] = child;
        }
    }
    slots_.resize(next);
}

} // namespace Zem
