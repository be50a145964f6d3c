#include "FormatPage.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <set>

namespace Zem::Support {

namespace {

std::set<std::string> const PRIMITIVES{"bool",  "byte",  "int",   "uint",   "id",     "double",
                                       "color", "vec2d", "vec3d", "string", "packed", "jpeg"};

std::vector<std::uint32_t> expandNumbers(QString const &text)
{
    std::vector<std::uint32_t> numbers;
    for (QString const &part : text.split(',')) {
        QStringList const ends = part.trimmed().split('-');
        for (std::uint32_t n = ends.first().toUInt(); n <= ends.last().toUInt(); ++n)
            numbers.push_back(n);
    }
    return numbers;
}

/// Cuts a part off the end of a cell; empty when the cell has none.
std::string takeTail(QString &cell, char const *pattern)
{
    QRegularExpressionMatch const match = QRegularExpression(QString::fromUtf8(pattern)).match(cell);
    if (!match.hasMatch())
        return {};
    cell.truncate(match.capturedStart());
    return match.captured(1).toStdString();
}

QString linkTextOf(QString const &cell)
{
    static QRegularExpression const link(QStringLiteral("^\\[([^\\]]+)\\]\\([^)]*\\)$"));
    QRegularExpressionMatch const match = link.match(cell.trimmed());
    return match.hasMatch() ? match.captured(1) : QString();
}

class PageReader
{
public:
    void readPage(QString const &fileName);
    FormatForms finish();

private:
    bool readNature(QString const &line);
    void readCells(QStringList const &cells);
    void readRow(std::map<QString, QString> const &cells);
    [[noreturn]] void fail(std::string const &text) const { throw FormatError(form_.name + ": " + text); }
    void endForm();

    FormatForms forms_;
    FormatForm form_;
    QStringList columns_;
};

void PageReader::endForm()
{
    if (form_.nature == FormatForm::Nature::None)
        return;
    if (!forms_.emplace(form_.name, form_).second)
        fail("is there twice");
}

bool PageReader::readNature(QString const &line)
{
    using Nature = FormatForm::Nature;
    static QRegularExpression const block(QStringLiteral("^Block of version (\\d+)( only)?(?:, when ([^.]+))?\\."));
    static QRegularExpression const file(QStringLiteral("^File of type \"([^\"]+)\", version (\\d+)\\."));
    static std::map<QString, Nature> const plain{
        {"Record.", Nature::Record}, {"Sequence.", Nature::Sequence}, {"Choice.", Nature::Choice}};
    if (QRegularExpressionMatch const match = block.match(line); match.hasMatch()) {
        form_.nature = Nature::Block;
        form_.version = match.captured(1).toUInt();
        form_.firstVersion = match.captured(2).isEmpty() ? 1 : form_.version;
        form_.when = match.captured(3).remove('`').toStdString();
    } else if (QRegularExpressionMatch const found = file.match(line); found.hasMatch()) {
        form_.nature = Nature::File;
        form_.typeWord = found.captured(1).toStdString();
        form_.version = found.captured(2).toUInt();
    } else if (auto const named = plain.find(line.section(' ', 0, 0)); named != plain.end()) {
        form_.nature = named->second;
    }
    return form_.nature != Nature::None;
}

void PageReader::readRow(std::map<QString, QString> const &cells)
{
    auto const cell = [&cells](char const *column) {
        auto const found = cells.find(QString::fromUtf8(column));
        return found == cells.end() ? QString() : QString(found->second).remove('`');
    };
    if (form_.nature == FormatForm::Nature::Choice) {
        QString const link = linkTextOf(cell("Form"));
        for (std::uint32_t number : expandNumbers(cell("Number"))) {
            if (!link.isEmpty())
                form_.choices[number] = link.toStdString();
        }
        return;
    }
    FormatRow row;
    row.name = cell("Field").toStdString();
    QString form = cell("Form");
    row.each = takeTail(form, " for ([\\w.]+)$");
    row.by = takeTail(form, " by ([\\w.]+)$");
    row.times = takeTail(form, " × (\\w+)$");
    QString const link = linkTextOf(form);
    row.isPrimitive = link.isEmpty();
    row.kind = row.isPrimitive ? form.section(' ', 0, 0).toStdString() : link.toStdString();
    if (row.isPrimitive && !PRIMITIVES.contains(row.kind))
        fail("no such form: " + form.toStdString());
    row.versions = cell("Versions").toStdString();
    row.when = cell("When").toStdString();
    form_.rows.push_back(row);
}

void PageReader::readCells(QStringList const &cells)
{
    static QRegularExpression const rule(QStringLiteral("^[-: ]*$"));
    if (columns_.isEmpty()) {
        columns_ = cells;
        return;
    }
    if (rule.match(cells.first()).hasMatch())
        return;
    std::map<QString, QString> byColumn;
    for (int i = 0; i < columns_.size() && i < cells.size(); ++i)
        byColumn[columns_[i]] = cells[i];
    readRow(byColumn);
}

void PageReader::readPage(QString const &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw FormatError(fileName.toStdString() + ": cannot be read");
    for (QString const &line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.startsWith('#')) {
            endForm();
            form_ = FormatForm{};
            form_.name = line.mid(line.lastIndexOf('#') + 1).trimmed().toStdString();
            columns_.clear();
        } else if (form_.nature == FormatForm::Nature::None) {
            readNature(line);
        } else if (line.startsWith('|')) {
            QStringList cells;
            for (QString const &cell : line.trimmed().mid(1).chopped(1).split('|'))
                cells += cell.trimmed();
            readCells(cells);
        }
    }
    endForm();
    form_ = FormatForm{};
}

FormatForms PageReader::finish()
{
    for (auto const &[name, form] : forms_) {
        for (FormatRow const &row : form.rows) {
            if (!row.isPrimitive && !forms_.contains(row.kind))
                throw FormatError(name + ": no such form: " + row.kind);
        }
        for (auto const &[number, chosen] : form.choices) {
            if (!forms_.contains(chosen))
                throw FormatError(name + ": no such form: " + chosen);
        }
    }
    return std::move(forms_);
}

} // namespace

bool FormatRow::isIn(unsigned int version) const
{
    if (versions.empty() || versions == "all")
        return true;
    for (QString const &part : QString::fromStdString(versions).split(',')) {
        QString const range = part.trimmed();
        QStringList const ends = range.split('-');
        bool const isOpen = range.endsWith('+');
        unsigned int const first = (isOpen ? range.chopped(1) : ends.first()).toUInt();
        if (version >= first && (isOpen || version <= ends.last().toUInt()))
            return true;
    }
    return false;
}

FormatForms readFormatPages(std::string const &folder)
{
    PageReader reader;
    QDir const pages(QString::fromStdString(folder));
    for (QString const &name : pages.entryList({"*.md"}, QDir::Files, QDir::Name))
        reader.readPage(pages.filePath(name));
    return reader.finish();
}

} // namespace Zem::Support
