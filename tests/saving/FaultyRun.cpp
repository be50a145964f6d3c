#include "FaultyRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace Zem::Support {

QStringList FaultyDisk::files() const
{
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void FaultyDisk::clear() const
{
    for (QString const &name : files())
        EXPECT_TRUE(QFile::remove(path(name)));
}

QByteArray FaultyDisk::read(QString const &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void FaultyDisk::write(QString const &path, QByteArray const &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}

FaultyResult FaultyDisk::run(QString const &program, QStringList const &arguments, QString const &fault) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_PRELOAD", QStringLiteral(ZEM_SAVE_FAULTS));
    environment.insert("SAVE_FAULTS", fault);
    environment.insert("SAVE_FAULTS_FOLDER", QDir(folder_.path()).canonicalPath());
    environment.insert("SAVE_FAULTS_LOG", safePath("steps"));
    // The sanitizers want to be the first library, and a killed program has no chance to free anything.
    environment.insert("ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0");
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(120000)) << program.toStdString();
    bool const killed = process.exitStatus() == QProcess::CrashExit;
    if (killed) {
        EXPECT_EQ(process.exitCode(), 9) << process.readAllStandardError().toStdString();
    }
    return {killed, killed ? -1 : process.exitCode(), process.readAllStandardError().toStdString()};
}

std::vector<std::string> FaultyDisk::stepsOf(QString const &program, QStringList const &arguments) const
{
    QFile::remove(safePath("steps"));
    EXPECT_EQ(run(program, arguments, "none").exitCode, 0);
    std::vector<std::string> steps;
    for (QByteArray const &line : read(safePath("steps")).split('\n')) {
        if (!line.isEmpty())
            steps.push_back(line.toStdString());
    }
    return steps;
}

} // namespace Zem::Support
