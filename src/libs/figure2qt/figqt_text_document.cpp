// figqt_text_document.cpp: texts that need all of Qt's rich text.

#include "figqt_text_engine.h"

#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr int UNITS_PER_CSS_PIXEL = UNITS_PER_INCH / 96;

/// A document that fetches nothing: a label of a foreign file must not make us read other files.
class LabelDocument : public QTextDocument
{
public:
    LabelDocument(QFont const &font, QPaintDevice *device)
    {
        setUndoRedoEnabled(false);
        documentLayout()->setPaintDevice(device);
        setDefaultFont(font);
        setDocumentMargin(0.0);
    }

protected:
    /// Without any picture, the layout would look for a file of that name itself.
    QVariant loadResource(int type, QUrl const &) override
    {
        return type == ImageResource ? QVariant(QImage(1, 1, QImage::Format_RGB32)) : QVariant();
    }
};

/// All sizes in text units: Qt reduces a script to whole points, and takes pixels as those of the device.
bool unifySize(QTextCharFormat *format)
{
    bool const points = format->hasProperty(QTextFormat::FontPointSize);
    if (!points && !format->hasProperty(QTextFormat::FontPixelSize))
        return false;
    double const size = points ? format->fontPointSize() * UNITS_PER_POINT
                               : format->intProperty(QTextFormat::FontPixelSize) * UNITS_PER_CSS_PIXEL;
    format->clearProperty(QTextFormat::FontPointSize);
    format->setProperty(QTextFormat::FontPixelSize, toFontUnits(size));
    return true;
}

struct Piece
{
    int start;
    int length;
    QTextCharFormat format;
};

void unifySizes(QTextDocument *document)
{
    QTextCursor cursor(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        // Changing a format may join fragments, so they are gathered first.
        std::vector<Piece> pieces;
        for (auto it = block.begin(); it != block.end(); ++it) {
            QTextFragment const fragment = it.fragment();
            Piece piece{fragment.position(), fragment.length(), fragment.charFormat()};
            if (unifySize(&piece.format))
                pieces.push_back(piece);
        }
        for (Piece const &piece : pieces) {
            cursor.setPosition(piece.start);
            cursor.setPosition(piece.start + piece.length, QTextCursor::KeepAnchor);
            cursor.setCharFormat(piece.format);
        }
        QTextCharFormat format = block.charFormat();
        if (unifySize(&format)) {
            cursor.setPosition(block.position());
            cursor.setBlockCharFormat(format);
        }
    }
}

/// Labels keep their blanks as no-break spaces, so that none is lost; where a text is wrapped, lines break at them.
void makeBlanksBreakable(QTextDocument *document)
{
    QTextCursor cursor(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QString const text = block.text();
        for (qsizetype i = text.indexOf(QChar::Nbsp); i >= 0; i = text.indexOf(QChar::Nbsp, i + 1)) {
            cursor.setPosition(block.position() + static_cast<int>(i));
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            cursor.insertText(QStringLiteral(" "), cursor.charFormat());
        }
    }
}

void paint(QTextDocument *document, QPaintDevice *device)
{
    QPainter painter(device);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    document->documentLayout()->draw(&painter, context);
}

} // namespace

std::shared_ptr<TextLayout const> TextEngine::layOutDocument(QString const &text, QFont const &font, double widthUnits)
{
    LabelDocument document(font, &device_);
    document.setHtml(boundMarkup(text));
    if (widthUnits >= 0.0)
        makeBlanksBreakable(&document);
    unifySizes(&document);
    document.setTextWidth(widthUnits);
    double const width = document.idealWidth();
    // Lines align with each other only within a given width.
    if (widthUnits < 0.0)
        document.setTextWidth(std::ceil(width));

    auto layout = std::make_shared<TextLayout>();
    layout->width = width;
    layout->height = document.size().height();
    recorder_.setTarget(layout.get());
    paint(&document, &device_);
    recorder_.setTarget(nullptr);
    return layout;
}

} // namespace Zem::Fig2Qt
