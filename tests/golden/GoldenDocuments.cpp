#include "GoldenDocuments.h"

#include <ZemFig2Figure.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sstream>

namespace Zem::Support {

namespace {

using namespace Fig2;

/// Saves what `load` reads from the bytes; `save` writes it to a stream of the type.
template <class Document, class Load, class Save>
std::string saveAgain(QByteArray const &bytes, QString const &type, Load const &load, Save const &save)
{
    std::istringstream input(bytes.toStdString());
    IO::InStream stream(&input);
    if (!stream.isInit())
        throw IO::StreamException(stream.getError());
    Document document;
    load(&document, &stream);
    std::ostringstream output;
    IO::OutStream saved(&output, type, 1);
    save(document, &saved);
    saved.close();
    return output.str();
}

std::string saveFigureAgain(QByteArray const &bytes)
{
    return saveAgain<Figure>(
        bytes, Figure::FILE_TYPE_ID, [](Figure *figure, IO::InStream *stream) { figure->load(stream, -1, -1); },
        [](Figure const &figure, IO::OutStream *stream) { figure.save(stream, -1, -1); });
}

constexpr GoldenKind KINDS[] = {{"fig", "Figure file", saveFigureAgain}};

} // namespace

QString goldenPath(QString const &name)
{
    return QStringLiteral(ZEM_SOURCE_DIR "/tests/golden/") + name;
}

QByteArray goldenContent(QString const &name)
{
    QFile file(goldenPath(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + name.toStdString());
    return file.readAll();
}

QStringList goldenDocuments()
{
    QStringList names;
    for (QString const &name : QDir(goldenPath("files")).entryList(QDir::Files, QDir::Name)) {
        if (!name.endsWith(QLatin1String(".txt")))
            names += name;
    }
    return names;
}

GoldenKind const &goldenKindOf(QString const &name)
{
    for (GoldenKind const &kind : KINDS) {
        if (name.endsWith(QLatin1Char('.') + QLatin1String(kind.extension)))
            return kind;
    }
    throw std::runtime_error("no such kind of document: " + name.toStdString());
}

FormatForms const &formatForms()
{
    static FormatForms const read = readFormatPages(ZEM_SOURCE_DIR "/docs/formats");
    return read;
}

} // namespace Zem::Support
