// ZemFig2RichText.h: walking, building and repairing the rich text of labels.
// Layer: services. Plain values and pure functions; distinct objects may be used from distinct threads. Nothing here
// lays text out: that is the business of Calculator and Painter.
#pragma once

#include <ZemColor.h>
#include <ZemFont.h>

#include <QtCore/QString>

#include <list>
#include <map>

namespace Zem::Fig2 {

/// Walks a text element by element: a tag, from '<' through the next '>' or to the end of the text, or a run of plain
/// text up to the next '<'.
class RTFIterator
{
public:
    explicit RTFIterator(QString const &text);

    bool hasElement() const { return position_ < text_.size(); }
    /// True for plain text, false for a tag. Throws ProgError at the end of the text.
    bool getType() const;
    /// Empty at the end of the text.
    QString getElement() const;
    /// Throws ProgError at the end of the text.
    void next();

    /// Where the element begins in the text.
    qsizetype getPosition() const { return position_; }

private:
    qsizetype endOfElement(qsizetype begin) const;

    QString text_;
    qsizetype position_ = 0;
    qsizetype nextPosition_ = 0;
};

/// A paragraph of an RTFDocument, as it stands.
class RTFParagraph
{
public:
    explicit RTFParagraph(QString const &text) : text_(text) {}

    QString const &toString() const { return text_; }

private:
    QString text_;
};

/// A text cut behind every "</p>"; what follows the last one is a paragraph too. The paragraphs joined are the text.
class RTFDocument
{
public:
    RTFDocument() = default;
    explicit RTFDocument(QString const &text);

    std::list<RTFParagraph> const &getParagraphs() const { return paragraphs_; }
    QString toString() const;

private:
    std::list<RTFParagraph> paragraphs_;
};

/// Text is never rejected: what does not match is passed through.
class RTFTools
{
public:
    RTFTools() = delete;

    /// Whether the text begins with "<html>", case sensitive.
    static bool isRichText(QString const &text);
    static bool startsWith(QString const &text, QString const &start);
    /// The text without everything through the opening tag of this name, and without its closing tag and what follows.
    static QString stripTags(QString const &text, QString const &tag);
    /// Repairs rich text of long ago: drops stale table attributes and wraps the content of every cell in a paragraph.
    /// For such text only: done twice, it wraps twice.
    static QString convertToQt4(QString const &text);
    /// Plain text with colour marks, as "<color red>...</color>", turned into rich text.
    static QString convertText(QString const &text);
    /// The same inside a span of the colour.
    static QString convertText(QString const &text, Color const &color);

    /// Attributes of the form style="key:value;key:value;".
    static QString getStyleAttribute(Font const &font);
    static QString getStyleAttribute(Color const &color);
    static QString getStyleAttribute(Font const &font, Color const &color);
    static QString getStyleAttribute(std::map<QString, QString> const &properties);
    /// The properties of the first style attribute in the text; empty without one.
    static std::map<QString, QString> parseStyleAttribute(QString const &text);
};

} // namespace Zem::Fig2
