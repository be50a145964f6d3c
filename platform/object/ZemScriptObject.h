// ZemScriptObject.h: the named nodes of the host's script tree.
#pragma once

#include <QtCore/QString>

#include <cstddef>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

namespace Zem {

class ScriptObject;
class TObject;
class TokenInterface;

/// The children of a node in the order they came, for loops and their number. A view: valid as long as no child comes
/// or goes, and used from the thread of the tree.
class ScriptChildren
{
public:
    /// Goes forwards, over the places of children that have left.
    class Iterator
    {
    public:
        using value_type = ScriptObject *;
        using difference_type = std::ptrdiff_t;

        Iterator() noexcept = default;
        Iterator(ScriptObject *const *at, ScriptObject *const *end) noexcept : at_(at), end_(end) { skipGaps(); }
        ScriptObject *operator*() const noexcept { return *at_; }
        Iterator &operator++() noexcept
        {
            ++at_;
            skipGaps();
            return *this;
        }
        Iterator operator++(int) noexcept
        {
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(Iterator const &other) const noexcept { return at_ == other.at_; }

    private:
        void skipGaps() noexcept
        {
            while (at_ != end_ && !*at_) {
                ++at_;
            }
        }

        ScriptObject *const *at_ = nullptr;
        ScriptObject *const *end_ = nullptr;
    };

    ScriptChildren() noexcept = default;
    ScriptChildren(std::vector<ScriptObject *> const &slots_, std::size_t size) noexcept
        : begin_(slots_.data()), end_(slots_.data() + slots_.size()), size_(size)
    {
    }

    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    Iterator begin() const noexcept { return {begin_, end_}; }
    Iterator end() const noexcept { return {end_, end_}; }

private:
    ScriptObject *const *begin_ = nullptr;
    ScriptObject *const *end_ = nullptr;
    std::size_t size_ = 0;
};

/// A named node. It does not own its children: a deleted parent leaves them without one, a deleted child leaves its
/// parent. Finding a child by name, adding, renaming and removing one take constant time on average, however many there
/// are. A tree is used from one thread.
class ScriptObject
{
public:
    /// What kind of node this is for the host; a plain number.
    enum Category_t : unsigned int {};

    static constexpr int NO_INDEX = -1;
    static constexpr unsigned int NO_STAGE = std::numeric_limits<unsigned int>::max();

    ScriptObject(ScriptObject const &) = delete;
    ScriptObject &operator=(ScriptObject const &) = delete;
    virtual ~ScriptObject();

    /// The object this node stands for; not owned, may be null.
    TObject *getTObject() const noexcept { return tObject_; }
    void setTObject(TObject *object) noexcept { tObject_ = object; }

    QString const &getName() const noexcept { return name_; }
    void setName(QString const &name);

    Category_t getCategory() const noexcept { return category_; }
    void setCategory(Category_t category) noexcept { category_ = category; }

    /// Null when there is none.
    ScriptObject *getParent() const noexcept { return parent_; }
    /// Makes this the last child of `parent`, null detaches it; setting the same parent again changes nothing. Throws
    /// ProgError when `parent` is this object or lies below it.
    void setParent(ScriptObject *parent);

    ScriptChildren getChildren() const noexcept;
    /// The first child that took this name, null when there is none.
    ScriptObject *getChild(QString const &name) const;
    /// By position, null when there are fewer.
    ScriptObject *getChild(unsigned int position) const;

    /// Whether the node stands for a numbered set of objects. The base is not indexed: it has no index at all.
    virtual bool isIndexed() const;
    virtual unsigned int getIndexCount() const;
    /// The index chosen now, NO_INDEX when there is none.
    virtual int getIndex() const;
    virtual std::vector<int> getAllIndices() const;
    /// NO_INDEX when there is none of this name.
    virtual int getIndexByName(QString const &name) const;
    /// Empty when there is no such index.
    virtual QString getNameFromIndex(int index) const;
    /// The number of the measurement stage the node belongs to, NO_STAGE when it belongs to none.
    virtual unsigned int getStageIdentifier() const;

protected:
    ScriptObject() noexcept;

private:
    class ChildList;
    ChildList &childList();
    void detach() noexcept;
    bool isBelow(ScriptObject const *ancestor) const noexcept;

    QString name_;
    TObject *tObject_ = nullptr;
    ScriptObject *parent_ = nullptr;
    std::unique_ptr<ChildList> children_; // made with the first child: most nodes are leaves
    // Places in the parent's ChildList.
    std::size_t slot_ = 0;
    ScriptObject *nextOfName_ = nullptr;
    ScriptObject *previousOfName_ = nullptr;
    Category_t category_{};
};

/// A node with values of its own. Owns the token interface.
class TokenInterfaceScriptObject : public ScriptObject
{
public:
    /// Takes ownership. A template because this library only knows the name of TokenInterface: the caller must include
    /// the definition of the class it passes.
    template <class Interface>
    requires std::is_convertible_v<Interface *, TokenInterface *>
    explicit TokenInterfaceScriptObject(Interface *tokens)
        : tokens_(tokens, [](TokenInterface *owned) { delete static_cast<Interface *>(owned); })
    {
        static_assert(sizeof(Interface) > 0, "the deleter needs the complete class");
    }
    ~TokenInterfaceScriptObject() override;

    TokenInterface *getTokenInterface() const noexcept { return tokens_.get(); }

private:
    std::unique_ptr<TokenInterface, void (*)(TokenInterface *)> tokens_;
};

/// A node that only holds others together.
class NoTokenScriptObject : public ScriptObject
{
public:
    NoTokenScriptObject() noexcept;
    ~NoTokenScriptObject() override;
};

} // namespace Zem
