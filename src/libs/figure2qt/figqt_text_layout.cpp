#include "ZemFig2QtTextLayout.h"

#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QPaintDevice>
#include <QtGui/QPainter>
#include <QtGui/QTextDocument>
#include <QtGui/QTextOption>

namespace Zem::Fig2Qt {

namespace {

/// Dots per inch of the layout: a 10 point font has an em of 1000 dots, so that rounding to whole dots is not seen.
constexpr int LAYOUT_DPI = 7200;
constexpr double MILLIMETRES_PER_DOT = 25.4 / LAYOUT_DPI;

/// Tells the layout its resolution; nothing is painted on it.
class LayoutDevice final : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return nullptr; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return LAYOUT_DPI;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }
};

QPaintDevice *layoutDevice()
{
    static LayoutDevice device;
    return &device;
}

QFont::Weight weightOf(unsigned int style)
{
    if (style & Font::BLACK)
        return QFont::Black;
    if (style & Font::BOLD)
        return QFont::Bold;
    if (style & Font::DEMI_BOLD)
        return QFont::DemiBold;
    return style & Font::LIGHT ? QFont::Light : QFont::Normal;
}

} // namespace

QFont toQFont(Font const &font)
{
    QFont result(font.getFamily());
    result.setPointSizeF(font.getSize());
    result.setWeight(weightOf(font.getStyle()));
    result.setItalic(font.getStyle() & Font::ITALIC);
    result.setUnderline(font.getStyle() & Font::UNDERLINE);
    result.setStrikeOut(font.getStyle() & Font::STRIKEOUT);
    result.setHintingPreference(QFont::PreferNoHinting);
    result.setStyleStrategy(QFont::PreferOutline);
    return result;
}

TextLayout::TextLayout(QString const &text, Kind kind, Font const &font, double width)
    : document_(std::make_unique<QTextDocument>())
{
    document_->setUndoRedoEnabled(false);
    document_->documentLayout()->setPaintDevice(layoutDevice());
    document_->setDocumentMargin(0.0);
    document_->setDefaultFont(toQFont(font));
    if (kind == RICH)
        document_->setHtml(text);
    else
        document_->setPlainText(text);
    double const dots = width < 0.0 ? -1.0 : width / MILLIMETRES_PER_DOT;
    document_->setTextWidth(dots);
    double const ideal = document_->idealWidth();
    // Aligned paragraphs need a width to be aligned in: that of the longest line, and a dot against rounding.
    if (dots < 0.0 && text.contains(QLatin1StringView("align")))
        document_->setTextWidth(ideal + 1.0);
    size_ = {ideal * MILLIMETRES_PER_DOT, document_->size().height() * MILLIMETRES_PER_DOT};
}

TextLayout::~TextLayout() = default;

void TextLayout::draw(QPainter *painter) const
{
    draw(painter, Qt::black);
}

void TextLayout::draw(QPainter *painter, QColor const &color) const
{
    painter->save();
    painter->scale(MILLIMETRES_PER_DOT, MILLIMETRES_PER_DOT);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, color);
    document_->documentLayout()->draw(painter, context);
    painter->restore();
}

TextLayoutCache::TextLayoutCache(int capacity) : entries_(capacity)
{
}

TextLayout const &TextLayoutCache::richText(int id, QString const &text, Font const &font, double width)
{
    Entry *entry = entries_.object(id);
    if (!entry || entry->text != text || entry->font != font || entry->width != width) {
        entry = new Entry{text, font, width, TextLayout(text, TextLayout::RICH, font, width)};
        entries_.insert(id, entry);
    }
    return entry->layout;
}

} // namespace Zem::Fig2Qt
