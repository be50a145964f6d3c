// ZemFormattedText.h: one text in several ready-made forms.
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

/// The forms of a text by format. A plain value, whose copies share their texts; several threads may read it.
class FormattedText
{
public:
    /// Stored in files: never renumber.
    enum Format_t { FORMAT_RICH_TEXT = 0, FORMAT_PLAIN_TEXT = 1 };

    FormattedText() = default;
    /// Holds the rich text alone.
    explicit FormattedText(QString const &richText);

    void setText(Format_t format, QString const &text);
    /// False, and `text` is left alone, when there is no text in this format.
    bool getText(Format_t format, QString *text) const;

    bool operator==(FormattedText const &other) const { return texts_ == other.texts_; }

    /// One block. Both throw IO::StreamException; a failed load leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    QMap<Format_t, QString> texts_;
};

} // namespace Zem
