#include "page_builder.h"

#include <ZemFig2Rectangle.h>
#include <ZemText.h>

#include <algorithm>
#include <cmath>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

constexpr Color BAND{0x1f, 0x3a, 0x5f};
constexpr double SIGNIFICANT_DIGITS = 4.0;

QString colored(char const *color, QString const &text)
{
    return QStringLiteral("<span style=\"color:%1\">%2</span>").arg(QLatin1StringView(color), text);
}

} // namespace

QString escaped(QString const &text)
{
    QString rich = tokenizeRT(text, true);
    return rich.replace(QLatin1Char('$'), QLatin1StringView("$$"));
}

int decimalsFor(double size)
{
    if (!(size > 0.0) || !std::isfinite(size))
        return 1;
    return std::clamp(static_cast<int>(SIGNIFICANT_DIGITS - 1.0 - std::floor(std::log10(size))), 0, 12);
}

Label *PageBuilder::addText(QString const &name, double x, double y, double size, QString const &text)
{
    auto *label = add<Label>(name);
    label->setMargin(0.0);
    label->setPivotAlignmentX(ALIGN_BEGIN);
    label->setPivotAlignmentY(ALIGN_CENTER);
    label->setFont(Font(Font::DEFAULT_FONT_SANS, size, 0));
    label->setText(text);
    label->setAlignmentOrigin({x, y});
    return label;
}

Label *PageBuilder::addEndingText(QString const &name, double x, double y, double size, QString const &text)
{
    Label *label = addText(name, x, y, size, text);
    label->setPivotAlignmentX(ALIGN_END);
    label->setAlignmentOrigin({x, y});
    return label;
}

void PageBuilder::addHeader(QString const &title, QString const &subtitle)
{
    auto *band = add<Rectangle>(QStringLiteral("header band"));
    band->setOrigin({105.0, BAND_HEIGHT / 2.0});
    band->setSize({210.0, BAND_HEIGHT});
    band->setBorder(LineStyle::null);
    band->setBackground(FillStyle(BAND));
    addText(QStringLiteral("title"), LEFT, 11.0, 18.0,
            colored("#ffffff", QStringLiteral("<b>%1</b>").arg(escaped(title))));
    addText(QStringLiteral("subtitle"), LEFT, 21.0, 10.0, colored("#dbe4ee", escaped(subtitle)));
}

} // namespace Zem::Zemfig
