// ZemTObject.h: the base of all objects that the host's script tree can reach.
#pragma once

#include <memory>

namespace Zem {

class ScriptObject;

/// Owns its node in the script tree and tells other objects about changes. Copying an object copies neither its script
/// object nor whom it tells: a copy begins without, assignment keeps both. Objects that are registered with each other
/// are used from one thread.
class TObject
{
public:
    TObject() noexcept;
    TObject(TObject const &) noexcept;
    TObject &operator=(TObject const &) noexcept;
    /// Deletes the script object and ends all registrations.
    virtual ~TObject();

    /// Calls handleNotifications() of each object that this one is registered with, in the order of registration.
    virtual void sendNotifications();
    /// A registered child has changed. The base does nothing.
    virtual void handleNotifications();
    /// From now on this object is told when `child` changes, once however often it is registered. Null is ignored.
    virtual void registerChild(TObject *child);
    /// Ends that; a child that is not registered is ignored.
    virtual void deregisterChild(TObject *child);

    /// Null when none was set.
    ScriptObject *getScriptObject() const noexcept { return scriptObject_.get(); }
    /// Takes ownership and deletes the one set before. Null is allowed.
    void setScriptObject(ScriptObject *scriptObject);

private:
    struct Links;
    Links &links();

    std::unique_ptr<ScriptObject> scriptObject_;
    std::unique_ptr<Links> links_; // made by the first registration: most objects never have one
};

} // namespace Zem
