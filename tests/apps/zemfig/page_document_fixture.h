// page_document_fixture.h: what the tests of page documents share.
#pragma once

#include <page_document.h>

#include <ZemFig2Element.h>
#include <ZemScriptObject.h>

#include <string>

namespace Zem::Zemfig {

inline PageDocument parse(QByteArray const &text)
{
    return parsePageDocument(text, QStringLiteral("p.toml"));
}

/// One line for each problem.
inline std::string problemsOf(QByteArray const &text)
{
    std::string lines;
    for (Problem const &problem : parse(text).problems)
        lines += problem.toString().toStdString() + "\n";
    return lines;
}

/// Null when there is no element of the name.
inline Fig2::Element *find(PageDocument const &document, char const *name)
{
    ScriptObject *node = document.figure->getElementsScriptObject()->getChild(QString::fromUtf8(name));
    return node ? static_cast<Fig2::Element *>(node->getTObject()) : nullptr;
}

} // namespace Zem::Zemfig
