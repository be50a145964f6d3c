#include <ZemScriptObject.h>
#include <ZemTObject.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using Zem::NoTokenScriptObject;
using Zem::TObject;

namespace {

/// Counts what it hears.
class Listener : public TObject
{
public:
    void handleNotifications() override
    {
        ++heard;
        if (whenHeard) {
            whenHeard();
        }
    }

    int heard = 0;
    std::function<void()> whenHeard;
};

class CountedNode : public NoTokenScriptObject
{
public:
    explicit CountedNode(int *deleted) : deleted_(deleted) {}
    ~CountedNode() override { ++*deleted_; }

private:
    int *deleted_;
};

} // namespace

TEST(TObject, ownsItsScriptObject)
{
    int deleted = 0;
    {
        TObject object;
        EXPECT_EQ(object.getScriptObject(), nullptr);
        auto *node = new CountedNode(&deleted);
        object.setScriptObject(node);
        object.setScriptObject(node);
        EXPECT_EQ(object.getScriptObject(), node);
        EXPECT_EQ(deleted, 0);

        object.setScriptObject(new CountedNode(&deleted));
        EXPECT_EQ(deleted, 1);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(TObject, isCopiedWithoutItsScriptObject)
{
    TObject object;
    object.setScriptObject(new NoTokenScriptObject);
    TObject const copy(object);
    EXPECT_EQ(copy.getScriptObject(), nullptr);
}

TEST(TObject, keepsItsScriptObjectWhenAssignedTo)
{
    TObject object;
    auto *node = new NoTokenScriptObject;
    object.setScriptObject(node);
    object = TObject();
    EXPECT_EQ(object.getScriptObject(), node);
}

TEST(TObject, tellsTheObjectsItIsRegisteredWith)
{
    TObject child;
    Listener first;
    Listener second;
    first.registerChild(&child);
    first.registerChild(&child);
    second.registerChild(&child);
    child.sendNotifications();
    EXPECT_EQ(first.heard, 1);
    EXPECT_EQ(second.heard, 1);
}

TEST(TObject, tellsNobodyWhenItIsNotRegistered)
{
    TObject child;
    Listener listener;
    child.sendNotifications();
    listener.registerChild(nullptr);
    listener.deregisterChild(&child);
    listener.registerChild(&child);
    listener.deregisterChild(&child);
    child.sendNotifications();
    EXPECT_EQ(listener.heard, 0);
}

TEST(TObject, isNotCopiedWithItsListeners)
{
    TObject child;
    Listener listener;
    listener.registerChild(&child);
    TObject(child).sendNotifications();
    EXPECT_EQ(listener.heard, 0);
}

TEST(TObject, forgetsADeletedListener)
{
    TObject child;
    Listener listener;
    listener.registerChild(&child);
    std::destroy_at(&listener);
    // In the place of the former, which it must not be taken for.
    std::construct_at(&listener);
    child.sendNotifications();
    EXPECT_EQ(listener.heard, 0);
}

TEST(TObject, isForgottenByItsListenerWhenDeleted)
{
    Listener listener;
    TObject child;
    listener.registerChild(&child);
    std::destroy_at(&child);
    // In the place of the former, which is no longer registered.
    std::construct_at(&child);
    listener.registerChild(&child);
    child.sendNotifications();
    EXPECT_EQ(listener.heard, 1);
}

TEST(TObject, doesNotTellAListenerThatAnEarlierOneTookAway)
{
    TObject child;
    Listener first;
    Listener second;
    first.registerChild(&child);
    second.registerChild(&child);
    first.whenHeard = [&] { second.deregisterChild(&child); };
    child.sendNotifications();
    EXPECT_EQ(second.heard, 0);
}

TEST(TObject, canListenToItself)
{
    Listener self;
    self.registerChild(&self);
    self.sendNotifications();
    EXPECT_EQ(self.heard, 1);
}
