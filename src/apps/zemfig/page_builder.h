// page_builder.h: what the pages that the command lays out by itself have in common.
#pragma once

#include <ZemFig2Figure.h>
#include <ZemFig2Group.h>
#include <ZemFig2Label.h>
#include <ZemScriptObject.h>

#include <QtCore/QString>

#include <memory>

namespace Zem::Zemfig {

/// Puts elements on a page of the default size, 210 by 297 millimetres.
class PageBuilder
{
protected:
    /// Where contents begin and end, and the height of the band with the title.
    static constexpr double LEFT = 15.0;
    static constexpr double RIGHT = 195.0;
    static constexpr double BAND_HEIGHT = 30.0;

    PageBuilder() : figure_(std::make_unique<Fig2::Figure>()) {}

    template <class Kind>
    Kind *add(QString const &name)
    {
        auto *element = new Kind;
        element->getScriptObject()->setName(name);
        figure_->getRoot()->addChild(element);
        return element;
    }
    /// A label without frame or margin; `x` and `y` are those of its alignment point, its left or right end in the
    /// middle of its height. Font size in points.
    Fig2::Label *addText(QString const &name, double x, double y, double size, QString const &text);
    Fig2::Label *addEndingText(QString const &name, double x, double y, double size, QString const &text);
    void addHeader(QString const &title, QString const &subtitle);

    std::unique_ptr<Fig2::Figure> takeFigure() { return std::move(figure_); }

private:
    std::unique_ptr<Fig2::Figure> figure_;
};

/// Text for a label, in which a dollar begins a token.
QString escaped(QString const &text);

/// How many decimals show enough of numbers of this size.
int decimalsFor(double size);

} // namespace Zem::Zemfig
