// project_support.h: projects in folders of their own, for tests.
#pragma once

#include "csv_support.h"

#include <ZemMeasProject.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>

#include <cmath>

namespace Zem::Measurement {

/// A folder that goes with the test.
class ProjectTest : public testing::Test
{
protected:
    QString path(char const *name = "test.zem") const { return folder_.filePath(QString::fromLatin1(name)); }

    QByteArray content(QString const &name) const
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void write(QString const &name, QByteArray const &bytes) const
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// Behind the back of the library.
    static void executeRaw(QString const &name, char const *statement)
    {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("raw"));
            database.setDatabaseName(name);
            ASSERT_TRUE(database.open());
            QSqlQuery query(database);
            ASSERT_TRUE(query.exec(QString::fromLatin1(statement)));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("raw"));
    }

    template <class Operation>
    static std::string errorOf(Operation operation)
    {
        try {
            operation();
        } catch (Exception const &error) {
            return error.what();
        }
        return "no error";
    }

private:
    QTemporaryDir folder_;
};

inline ProjectToken tokenOf(Project const &project, char const *name)
{
    for (ProjectToken const &token : project.tokens()) {
        if (token.name == QString::fromUtf8(name)) {
            return token;
        }
    }
    throw std::out_of_range(std::string("no token ") + name);
}

/// The value as text: "1.5", "17", "word", "-" for none.
inline std::string valueOf(Project const &project, char const *name, unsigned int stage)
{
    std::int64_t const id = tokenOf(project, name).id;
    for (StageValue const &value : project.values(stage)) {
        if (value.token == id) {
            QString const *text = std::get_if<QString>(&value.value);
            double const *number = std::get_if<double>(&value.value);
            return text     ? text->toStdString()
                   : number ? QString::number(*number, 'g', 17).toStdString()
                            : std::to_string(std::get<std::int64_t>(value.value));
        }
    }
    return "-";
}

inline ProjectSeries seriesOf(Project const &project, char const *name)
{
    for (ProjectSeries const &series : project.series()) {
        if (series.name == QString::fromUtf8(name)) {
            return series;
        }
    }
    throw std::out_of_range(std::string("no series ") + name);
}

/// The numbers of a series as text: "1.5 - 3", "-" for a missing one.
inline std::string rowsOf(Project const &project, char const *name)
{
    QStringList texts;
    for (double const number : project.seriesNumbers(seriesOf(project, name))) {
        texts << (std::isnan(number) ? QStringLiteral("-") : QString::number(number, 'g', 17));
    }
    return texts.join(QLatin1Char(' ')).toStdString();
}

using Stages = std::vector<unsigned int>;

} // namespace Zem::Measurement
