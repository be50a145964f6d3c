// page_toml_reader.h: what all tables of a page document have in common.
#pragma once

#include "page_document.h"
#include "page_schema.h"
#include "page_toml_values.h"

#include <QtCore/QStringList>

#include <utility>
#include <vector>

namespace Zem::Zemfig {

/// Reads pieces of a document and reports what is wrong with them.
class TomlReader
{
protected:
    /// Keys with their nodes, as the parameters of the library have them.
    using FlatTable = std::vector<std::pair<QString, toml::node const *>>;

    /// `problems` is not owned and outlives the reader.
    TomlReader(QString const &fileName, std::vector<Problem> *problems) : fileName_(fileName), problems_(problems) {}

    void report(int line, QString const &text) { problems_->push_back({fileName_, line, text}); }
    void reportUnknown(toml::node const &node, QString const &key, std::vector<QString> const &known,
                       QString const &where);

    /// Nested tables joined by underscores; structure keys and fonts stay as they are.
    static FlatTable flattened(toml::table const &table, QString const &prefix = QString());

    /// Leaves `text` alone, and reports, when the node is none.
    void readText(toml::node const &node, QString const &key, QString *text);
    QStringList readTexts(toml::node const &node, QString const &key);

    /// An entry of a parameter string; empty, and reported, when the value does not fit.
    QString entry(Parameter const &parameter, toml::node const &node);
    /// The same for one of the `known` parameters, a font being a text or a table. `others` are the further keys of the
    /// table and `where` names it, for messages.
    QString readEntry(std::vector<Parameter> const &known, std::vector<QString> const &others, QString const &key,
                      toml::node const &node, QString const &where);

private:
    QString fontEntry(toml::table const &table, QString const &key, QString const &where);

    QString fileName_;
    std::vector<Problem> *problems_;
};

} // namespace Zem::Zemfig
