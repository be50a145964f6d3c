#include "cli.h"

#include <ZemMeasImportError.h>
#include <ZemMeasProject.h>
#include <ZemOutputFile.h>
#include <ZemParse.h>
#include <ZemStream.h>

#include <unistd.h>

namespace Zem::Zemfig {

void message(QString const &text)
{
    std::fputs((text + QLatin1Char('\n')).toUtf8().constData(), stderr);
}

void print(QString const &text)
{
    QByteArray const bytes = text.toUtf8();
    bool const written = std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout) ==
                             static_cast<std::size_t>(bytes.size()) &&
                         std::fflush(stdout) == 0;
    if (!written)
        throw OutputFailure(QStringLiteral("standard output cannot be written"));
}

void writeFile(QString const &fileName, QByteArray const &content)
{
    try {
        OutputFile file(fileName);
        file.write({content.constData(), static_cast<std::size_t>(content.size())});
        file.commit();
    } catch (FileError const &error) {
        throw OutputFailure(error.getText());
    }
}

Progress::Progress(int total) : total_(total), visible_(total > 1 && isatty(STDERR_FILENO) != 0)
{
    show();
}

Progress::~Progress()
{
    if (visible_)
        std::fputs("\r\033[K", stderr);
}

void Progress::advance()
{
    ++done_;
    show();
}

void Progress::show() const
{
    constexpr int WIDTH = 40;
    if (!visible_)
        return;
    int const filled = done_ * WIDTH / total_;
    QString const bar = QString(filled, QLatin1Char('#')) + QString(WIDTH - filled, QLatin1Char('.'));
    std::fputs(QStringLiteral("\r[%1] %2/%3").arg(bar).arg(done_).arg(total_).toUtf8().constData(), stderr);
    std::fflush(stderr);
}

int runVerb(std::function<void()> const &verb)
{
    try {
        verb();
        return EXIT_DONE;
    } catch (UsageError const &error) {
        message(QStringLiteral("zemfig: ") + error.getText());
        return EXIT_USAGE;
    } catch (OutputFailure const &error) {
        message(QStringLiteral("zemfig: ") + error.getText());
        return EXIT_OUTPUT;
    } catch (PagesDiffer const &) {
        return EXIT_DIFFERENT;
    } catch (Exception const &error) {
        message(QStringLiteral("zemfig: ") + error.getText());
        return EXIT_INPUT;
    }
}

} // namespace Zem::Zemfig
