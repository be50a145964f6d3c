#include <ZemError.h>
#include <ZemScriptObject.h>
#include <ZemTObject.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>

namespace Zem {

/// Stands in for the class of the library above, of which this one only knows the name.
class TokenInterface
{
public:
    virtual ~TokenInterface() = default;
};

} // namespace Zem

using testing::ElementsAre;
using testing::IsEmpty;
using Zem::NoTokenScriptObject;
using Zem::ScriptObject;

namespace {

class Node : public NoTokenScriptObject
{
public:
    explicit Node(QString const &name, ScriptObject *parent = nullptr)
    {
        setName(name);
        setParent(parent);
    }
};

std::vector<ScriptObject *> childrenOf(ScriptObject const &object)
{
    std::vector<ScriptObject *> children;
    for (ScriptObject *child : object.getChildren()) {
        children.push_back(child);
    }
    EXPECT_EQ(object.getChildren().size(), children.size());
    EXPECT_EQ(object.getChildren().empty(), children.empty());
    return children;
}

class CountedTokens : public Zem::TokenInterface
{
public:
    explicit CountedTokens(int *deleted) : deleted_(deleted) {}
    ~CountedTokens() override { ++*deleted_; }

private:
    int *deleted_;
};

} // namespace

TEST(ScriptObject, isAloneAndNamelessAtFirst)
{
    NoTokenScriptObject const object;
    EXPECT_EQ(object.getName(), "");
    EXPECT_EQ(object.getParent(), nullptr);
    EXPECT_EQ(object.getTObject(), nullptr);
    EXPECT_EQ(object.getCategory(), 0u);
    EXPECT_EQ(object.getChild("a"), nullptr);
    EXPECT_EQ(object.getChild(0u), nullptr);
    EXPECT_THAT(childrenOf(object), IsEmpty());
}

TEST(ScriptObject, isNotIndexedAndBelongsToNoStage)
{
    NoTokenScriptObject const object;
    EXPECT_FALSE(object.isIndexed());
    EXPECT_EQ(object.getIndexCount(), 0u);
    EXPECT_EQ(object.getIndex(), ScriptObject::NO_INDEX);
    EXPECT_THAT(object.getAllIndices(), IsEmpty());
    EXPECT_EQ(object.getIndexByName("a"), ScriptObject::NO_INDEX);
    EXPECT_EQ(object.getNameFromIndex(0), "");
    EXPECT_EQ(object.getStageIdentifier(), ScriptObject::NO_STAGE);
}

TEST(ScriptObject, takesAnyNumberAsCategory)
{
    NoTokenScriptObject object;
    object.setCategory(static_cast<ScriptObject::Category_t>(21));
    EXPECT_EQ(object.getCategory(), 21u);
}

TEST(ScriptObject, pointsAtTheObjectItStandsFor)
{
    Zem::TObject object;
    NoTokenScriptObject node;
    node.setTObject(&object);
    EXPECT_EQ(node.getTObject(), &object);
}

TEST(ScriptTree, keepsChildrenInTheOrderTheyCame)
{
    Node parent("p");
    Node b("b", &parent);
    Node a("a", &parent);
    EXPECT_THAT(childrenOf(parent), ElementsAre(&b, &a));
    EXPECT_EQ(parent.getChild(0u), &b);
    EXPECT_EQ(parent.getChild(1u), &a);
    EXPECT_EQ(parent.getChild(2u), nullptr);
    EXPECT_EQ(a.getParent(), &parent);
}

TEST(ScriptTree, findsAChildByItsName)
{
    Node parent("p");
    Node a("a", &parent);
    EXPECT_EQ(parent.getChild("a"), &a);
    EXPECT_EQ(parent.getChild("A"), nullptr);
}

TEST(ScriptTree, findsARenamedChildByItsNewNameOnly)
{
    Node parent("p");
    Node child("old", &parent);
    child.setName("new");
    EXPECT_EQ(parent.getChild("old"), nullptr);
    EXPECT_EQ(parent.getChild("new"), &child);
}

TEST(ScriptTree, findsTheFirstOfSeveralChildrenOfOneName)
{
    Node parent("p");
    Node first("a", &parent);
    Node second("a", &parent);
    Node third("a", &parent);
    EXPECT_EQ(parent.getChild("a"), &first);

    first.setParent(nullptr);
    EXPECT_EQ(parent.getChild("a"), &second);
    third.setName("b");
    EXPECT_EQ(parent.getChild("a"), &second);
    second.setName("b");
    EXPECT_EQ(parent.getChild("a"), nullptr);
    EXPECT_EQ(parent.getChild("b"), &third);
}

TEST(ScriptTree, detachesAChildWithoutParent)
{
    Node parent("p");
    Node a("a", &parent);
    Node b("b", &parent);
    a.setParent(nullptr);
    EXPECT_EQ(a.getParent(), nullptr);
    EXPECT_EQ(parent.getChild("a"), nullptr);
    EXPECT_EQ(parent.getChild(0u), &b);
    EXPECT_THAT(childrenOf(parent), ElementsAre(&b));
}

TEST(ScriptTree, movesAChildToAnotherParent)
{
    Node from("from");
    Node to("to");
    Node child("c", &from);
    child.setParent(&to);
    EXPECT_THAT(childrenOf(from), IsEmpty());
    EXPECT_THAT(childrenOf(to), ElementsAre(&child));
}

TEST(ScriptTree, leavesTheOrderWhenTheParentIsSetAgain)
{
    Node parent("p");
    Node a("a", &parent);
    Node b("b", &parent);
    a.setParent(&parent);
    EXPECT_THAT(childrenOf(parent), ElementsAre(&a, &b));
}

TEST(ScriptTree, refusesACycleAndStaysAsItWas)
{
    Node top("top");
    Node middle("middle", &top);
    Node low("low", &middle);
    EXPECT_THROW(top.setParent(&low), Zem::ProgError);
    EXPECT_THROW(top.setParent(&top), Zem::ProgError);
    EXPECT_EQ(top.getParent(), nullptr);
    EXPECT_EQ(low.getParent(), &middle);
}

TEST(ScriptTree, losesADeletedChild)
{
    Node parent("p");
    Node a("a", &parent);
    {
        Node b("b", &parent);
    }
    EXPECT_THAT(childrenOf(parent), ElementsAre(&a));
    EXPECT_EQ(parent.getChild("b"), nullptr);
}

TEST(ScriptTree, leavesTheChildrenOfADeletedParentWithoutOne)
{
    auto parent = std::make_unique<Node>("p");
    Node child("c", parent.get());
    parent.reset();
    EXPECT_EQ(child.getParent(), nullptr);
    EXPECT_NO_THROW(child.setName("still there"));
}

TEST(ScriptTree, keepsOrderAndNamesWhileManyChildrenComeAndGo)
{
    Node parent("p");
    std::deque<Node> nodes;
    for (int i = 0; i < 1000; ++i) {
        nodes.emplace_back(QString::number(i), &parent);
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i % 10 != 3) {
            nodes[i].setParent(nullptr);
        }
    }
    ASSERT_EQ(childrenOf(parent).size(), 100u);
    for (unsigned int i = 0; i < 100; ++i) {
        EXPECT_EQ(parent.getChild(i), &nodes[10 * i + 3]);
        EXPECT_EQ(parent.getChild(QString::number(10 * i + 3)), &nodes[10 * i + 3]);
    }
}

TEST(ScriptTree, holdsAHundredThousandChildrenEvenOfOneName)
{
    Node parent("p");
    std::deque<Node> nodes;
    for (int i = 0; i < 100000; ++i) {
        nodes.emplace_back("same", &parent);
        nodes.back().setName(QString::number(parent.getChildren().size()));
    }
    for (Node &node : nodes) {
        node.setName("same");
    }
    for (Node &node : nodes) {
        EXPECT_EQ(parent.getChild("same"), &node);
        node.setParent(nullptr);
    }
    EXPECT_TRUE(parent.getChildren().empty());
}

TEST(TokenInterfaceScriptObject, ownsItsTokens)
{
    int deleted = 0;
    auto *tokens = new CountedTokens(&deleted);
    {
        Zem::TokenInterfaceScriptObject const object(tokens);
        EXPECT_EQ(object.getTokenInterface(), tokens);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(TokenInterfaceScriptObject, deletesTokensThatItKnowsByTheirBase)
{
    int deleted = 0;
    Zem::TokenInterface *tokens = new CountedTokens(&deleted);
    {
        Zem::TokenInterfaceScriptObject const object(tokens);
    }
    EXPECT_EQ(deleted, 1);
}
