// figqt_markup.h: reads the simple kind of label text without a document.
#pragma once

#include <ZemColor.h>

#include <QtCore/QString>
#include <QtGui/QFont>

#include <optional>
#include <vector>

namespace Zem::Fig2Qt {

enum class Script { NORMAL, SUPER, SUB };

/// What formatting a piece of text has.
struct MarkupStyle
{
    QFont font; ///< before the reduction of a super- or subscript
    Color color;
    Script script = Script::NORMAL;

    bool operator==(MarkupStyle const &) const = default;
};

struct MarkupPiece
{
    QString text;
    MarkupStyle style;
};

using MarkupLine = std::vector<MarkupPiece>;

/// The lines of a text that has characters with formats and line breaks only: b, i, u, s, sub, sup, font colours,
/// spans with simple styles, br, common entities. Nothing for any other text, which is left to QTextDocument, whose
/// reading of blanks, tags and styles is followed here exactly.
std::optional<std::vector<MarkupLine>> readSimpleMarkup(QString const &text, MarkupStyle const &base);

/// The same text with what would make QTextDocument run without end taken out: tables nested deeper than a few levels,
/// and numbers of many digits in tags.
QString boundMarkup(QString const &text);

} // namespace Zem::Fig2Qt
