#include <ZemScriptObject.h>
#include <ZemTObject.h>

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace Zem {

struct TObject::Links
{
    std::vector<TObject *> listeners; // in the order of registration; rarely more than one
    std::unordered_set<TObject *> children;
};

TObject::TObject() noexcept = default;

TObject::TObject(TObject const &) noexcept
{
}

TObject &TObject::operator=(TObject const &) noexcept
{
    return *this;
}

TObject::~TObject()
{
    if (!links_) {
        return;
    }
    for (TObject *listener : links_->listeners) {
        listener->links_->children.erase(this);
    }
    for (TObject *child : links_->children) {
        std::erase(child->links_->listeners, this);
    }
}

void TObject::sendNotifications()
{
    if (!links_) {
        return;
    }
    // A listener may register, deregister or delete others while it is told.
    std::vector<TObject *> const listeners = links_->listeners;
    for (TObject *listener : listeners) {
        if (std::find(links_->listeners.begin(), links_->listeners.end(), listener) != links_->listeners.end()) {
            listener->handleNotifications();
        }
    }
}

void TObject::handleNotifications()
{
}

void TObject::registerChild(TObject *child)
{
    if (child && links().children.insert(child).second) {
        child->links().listeners.push_back(this);
    }
}

void TObject::deregisterChild(TObject *child)
{
    if (links_ && links_->children.erase(child) > 0) {
        std::erase(child->links_->listeners, this);
    }
}

void TObject::setScriptObject(ScriptObject *scriptObject)
{
    if (scriptObject != scriptObject_.get()) {
        scriptObject_.reset(scriptObject);
    }
}

TObject::Links &TObject::links()
{
    if (!links_) {
        links_ = std::make_unique<Links>();
    }
    return *links_;
}

} // namespace Zem
