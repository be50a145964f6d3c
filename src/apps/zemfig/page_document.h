// page_document.h: page documents for people, in TOML, and the figures they describe.
#pragma once

#include <ZemFig2Figure.h>
#include <ZemMeasColorScale.h>
#include <ZemMeasNamedPoint.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <optional>
#include <vector>

namespace Zem::Zemfig {

/// Something that is wrong with a document: where and what.
struct Problem
{
    QString file;
    int line = 0; ///< from 1; 0 when it is not about a line
    QString text;

    /// "file:line: text".
    QString toString() const;
};

/// A [[series]], [[picture]], [[points]], [[camera]] or [[snippet]] table: a file that is shown, or how it is looked
/// at.
struct SourceTable
{
    int line = 0;                   ///< of the table, from 1
    QMap<QString, QVariant> values; ///< texts, numbers and bools, lists of texts and lists of numbers
    QString section = QStringLiteral("series");
};

/// A [[point]] table: a point that the charts of its curve name.
struct PointSource
{
    int line = 0; ///< of the table, from 1
    Measurement::NamedPoint point;
};

/// A page document as it was read. Everything stays in memory; nothing is read through it later.
struct PageDocument
{
    /// Of a page that brings its own data along: what the figure looks at, so the figure goes first.
    std::shared_ptr<void const> ownData;
    std::unique_ptr<Fig2::Figure> figure;         ///< all that could be read of it; null when the file is no TOML
    QMap<QString, QVariant> data;                 ///< the [data] table: where the values come from
    std::vector<SourceTable> sources;             ///< in the order of the file
    std::vector<PointSource> points;              ///< the [[point]] tables
    std::optional<Measurement::ColorScale> scale; ///< the [scale] table: the colour scale of the page
    std::vector<Problem> problems;                ///< empty for a sound document
    std::vector<QString> notes;                   ///< what did not come from the file as it was, for the user
};

/// Reads a document. Never throws for what is in it: all that is wrong is told in `problems`, in the order of the file.
PageDocument readPageDocument(QString const &fileName);
/// The same for a text; `fileName` is for the messages.
PageDocument parsePageDocument(QByteArray const &text, QString const &fileName);

/// The document of a figure: what differs from the defaults, in the order of the elements. Reading it gives an equal
/// figure. Elements without a name get none. `data` becomes the [data] table, `scale` the [scale] table, `sources` the
/// tables of their sections, `points` the [[point]] tables.
QString writePageDocument(Fig2::Figure const &figure, QMap<QString, QVariant> const &data = {},
                          std::optional<Measurement::ColorScale> const &scale = {},
                          std::vector<SourceTable> const &sources = {}, std::vector<PointSource> const &points = {});

} // namespace Zem::Zemfig
