// ZemFont.h: the description of a font, and the font that the host sets for labels.
#pragma once

#include <QtCore/QString>

#include <iosfwd>

namespace Zem {

/// A font by family, size in typographic points and a set of style bits. A plain value that promises nothing about
/// what is installed; several threads may read it.
class Font
{
public:
    // Stored in files: never renumber.
    static constexpr unsigned int ITALIC = 1;
    static constexpr unsigned int BOLD = 2;
    static constexpr unsigned int LIGHT = 4;
    static constexpr unsigned int DEMI_BOLD = 8;
    static constexpr unsigned int BLACK = 16;
    static constexpr unsigned int UNDERLINE = 32;
    static constexpr unsigned int STRIKEOUT = 64;

    static constexpr QLatin1StringView DEFAULT_FONT_SANS{"Liberation Sans"};

    /// DEFAULT_FONT_SANS at 12 points in no style.
    Font();
    Font(QString const &family, double size, unsigned int style);

    /// The font that the host has set for labels, the default font before that. It may change at any time; both
    /// operations may be called from any thread.
    static Font getSystemLabelFont();
    static void setSystemLabelFont(Font const &font);

    QString const &getFamily() const noexcept { return family_; }
    void setFamily(QString const &family) { family_ = family; }
    double getSize() const noexcept { return size_; }
    void setSize(double size) noexcept { size_ = size; }
    unsigned int getStyle() const noexcept { return style_; }
    void setStyle(unsigned int style) noexcept { style_ = style; }

    bool operator==(Font const &) const = default;

    /// "family,size,style"; the size in its shortest form that reads back to the same value.
    QString getParameterString() const;
    /// Takes over what getParameterString() wrote. False, and the font is left alone, when the text is of another
    /// form or the size is not a positive finite number.
    bool createFromParameterString(QString const &text);

private:
    QString family_;
    double size_;
    unsigned int style_;
};

/// "family size style" with the family as one word, see tokenize(); no blank at either end.
std::ostream &operator<<(std::ostream &stream, Font const &font);
/// Sets failbit and leaves the font alone when the text is of another form or the size is not a positive number.
std::istream &operator>>(std::istream &stream, Font &font);

} // namespace Zem
