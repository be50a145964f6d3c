#include "verbs.h"

#include "cli.h"
#include "facts.h"
#include "file_recovery.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <filesystem>
#include <memory>

namespace Zem::Zemfig {

namespace {

struct RepairArguments
{
    std::string file;
    std::string output;
    bool json = false;
};

/// Also by way of links.
bool isSameFile(std::string const &a, std::string const &b)
{
    std::error_code none;
    return std::filesystem::equivalent(a, b, none);
}

QJsonArray thingsOf(std::vector<RecoveryNote> const &notes, bool kept)
{
    QJsonArray things;
    for (RecoveryNote const &note : notes) {
        if (note.isKept != kept)
            continue;
        QJsonObject thing{{"name", note.thing}};
        if (!note.reason.isEmpty())
            thing["note"] = note.reason;
        things.append(thing);
    }
    return things;
}

void repair(RepairArguments const &arguments)
{
    QString const file = QString::fromStdString(arguments.file);
    QString const output = QString::fromStdString(arguments.output);
    if (isSameFile(arguments.file, arguments.output))
        throw UsageError(QStringLiteral("'%1' is the damaged file itself: give another name").arg(output));
    RecoveredFile const recovered = recoverFile(file);
    writeFile(output, recovered.bytes);
    Facts facts;
    facts.add(QStringLiteral("file"), output);
    facts.addUnlessEmpty(QStringLiteral("kept"), thingsOf(recovered.notes, true));
    facts.addUnlessEmpty(QStringLiteral("lost"), thingsOf(recovered.notes, false));
    print(arguments.json ? QString::fromUtf8(QJsonDocument(facts.toJson()).toJson()) : facts.toText());
}

} // namespace

void addRepairVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<RepairArguments>();
    CLI::App *verb = app->add_subcommand("repair", "Write what can be read of a damaged file to a new one");
    verb->add_option("file", arguments->file, "figure file, template, snippet or older figure")->required();
    verb->add_option("-o,--output", arguments->output, "target, of the same kind")->required();
    verb->add_flag("--json", arguments->json, "as JSON");
    verb->callback([arguments, run] { *run = [arguments] { repair(*arguments); }; });
}

} // namespace Zem::Zemfig
