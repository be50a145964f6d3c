// ZemFig2ElementAttributes.h: ElementAttributes, a choice among the groups of attributes that elements can have.
// Layer: values. A plain value; distinct objects may be used from distinct threads.
#pragma once

#include <QtCore/QString>

#include <set>

namespace Zem::Fig2 {

/// Either all attributes (not filtered) or those that were chosen with setUsed.
class ElementAttributes
{
public:
    static constexpr QLatin1StringView ALIGNMENT{"alignment"};
    static constexpr QLatin1StringView ANGLE{"angle"};
    static constexpr QLatin1StringView BACKGROUND{"background"};
    static constexpr QLatin1StringView BORDER{"border"};
    static constexpr QLatin1StringView CONNECTOR{"connector"};
    static constexpr QLatin1StringView FONT{"font"};
    static constexpr QLatin1StringView FONT_COLOR{"font_color"};
    static constexpr QLatin1StringView GEOMETRY{"geometry"};
    static constexpr QLatin1StringView MARGIN{"margin"};
    static constexpr QLatin1StringView SPACING{"spacing"};

    /// Not filtered: all ten names are used. Filtered: none is, until setUsed adds it.
    explicit ElementAttributes(bool filtered);

    bool isFiltered() const { return filtered_; }
    bool isUsed(QString const &name) const { return used_.contains(name); }
    void setUsed(QString const &name) { used_.insert(name); }
    /// Whether at least one name of this choice is in the other.
    bool hasCommonAttributes(ElementAttributes const &other) const;

private:
    bool filtered_;
    std::set<QString> used_;
};

} // namespace Zem::Fig2
