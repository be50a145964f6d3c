#include "CommandRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace Zem::Support {

void Workplace::write(QString const &name, QByteArray const &content) const
{
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
}

QByteArray Workplace::read(QString const &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Workplace::exists(QString const &name) const
{
    return QFileInfo::exists(path(name));
}

QStringList Workplace::files() const
{
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

CommandResult Workplace::zemfig(QStringList const &arguments) const
{
    QProcess process;
    process.setWorkingDirectory(folder_.path());
    process.start(QStringLiteral(ZEM_BIN_DIR "/zemfig"), arguments);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(120000)) << arguments.join(' ').toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << arguments.join(' ').toStdString();
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

} // namespace Zem::Support
