// ZemIdentifiers.h: names of measurement stages and of elements of indexed tokens.
// Plain values; several threads may read one.
#pragma once

#include <compare>
#include <limits>

namespace Zem {

/// Names a measurement stage.
class StageIdentifier
{
public:
    /// For values that belong to no stage.
    static StageIdentifier const NO_STAGE;

    /// NO_STAGE.
    constexpr StageIdentifier() noexcept = default;
    constexpr explicit StageIdentifier(unsigned int identifier) noexcept : identifier_(identifier) {}

    constexpr unsigned int getIdentifier() const noexcept { return identifier_; }
    constexpr void setIdentifier(unsigned int identifier) noexcept { identifier_ = identifier; }

    constexpr bool operator==(StageIdentifier const &) const noexcept = default;
    constexpr auto operator<=>(StageIdentifier const &) const noexcept = default;

private:
    unsigned int identifier_ = std::numeric_limits<unsigned int>::max();
};

/// Names an element of an indexed token.
class IndexIdentifier
{
public:
    /// For plain tokens.
    static IndexIdentifier const NO_INDEX;

    /// NO_INDEX.
    constexpr IndexIdentifier() noexcept = default;
    constexpr explicit IndexIdentifier(int index) noexcept : index_(index) {}

    /// -1 for NO_INDEX.
    constexpr int getIndex() const noexcept { return index_; }

    constexpr bool operator==(IndexIdentifier const &) const noexcept = default;

private:
    int index_ = -1;
};

inline constexpr StageIdentifier StageIdentifier::NO_STAGE{};
inline constexpr IndexIdentifier IndexIdentifier::NO_INDEX{};

} // namespace Zem
