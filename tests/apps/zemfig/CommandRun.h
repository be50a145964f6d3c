// CommandRun.h: running zemfig as a user would.
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <string>

namespace Zem::Support {

struct CommandResult
{
    int exitCode;
    std::string output;
    std::string errors;
};

/// A folder of its own, in which the command runs.
class Workplace
{
public:
    QString path(QString const &name) const { return folder_.filePath(name); }
    void write(QString const &name, QByteArray const &content) const;
    QByteArray read(QString const &name) const;
    bool exists(QString const &name) const;
    /// All names in the folder, sorted.
    QStringList files() const;

    CommandResult zemfig(QStringList const &arguments) const;

private:
    QTemporaryDir folder_;
};

} // namespace Zem::Support
