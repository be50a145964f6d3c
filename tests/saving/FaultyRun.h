// FaultyRun.h: programs that save while the system fails them.
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <string>
#include <vector>

namespace Zem::Support {

struct FaultyResult
{
    bool killed;
    int exitCode; ///< -1 when killed
    std::string errors;
};

/// A folder whose files are watched, and one that nothing happens to.
class FaultyDisk
{
public:
    QString path(QString const &name) const { return folder_.filePath(name); }
    QString safePath(QString const &name) const { return safe_.filePath(name); }
    /// All names in the watched folder, sorted.
    QStringList files() const;
    /// Removes them.
    void clear() const;
    static QByteArray read(QString const &path);
    static void write(QString const &path, QByteArray const &content);

    /// Runs a program with a fault, "none" for none; see save_faults.cpp.
    FaultyResult run(QString const &program, QStringList const &arguments, QString const &fault) const;
    /// The steps that the program takes without a fault.
    std::vector<std::string> stepsOf(QString const &program, QStringList const &arguments) const;

private:
    QTemporaryDir folder_;
    QTemporaryDir safe_;
};

} // namespace Zem::Support
