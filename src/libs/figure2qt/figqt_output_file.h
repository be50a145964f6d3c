// figqt_output_file.h: a file that is there completely or not at all.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <string_view>

namespace Zem::Fig2Qt {

/// A temporary file beside the target, which it replaces in commit(); destruction without it leaves the target as it
/// was. Every operation throws OutputError with file, step and reason.
class OutputFile
{
public:
    /// A symbolic link is followed; a file that is replaced keeps its permissions, and is refused when it is
    /// write-protected.
    explicit OutputFile(QString const &fileName);
    ~OutputFile();
    OutputFile(OutputFile const &) = delete;
    OutputFile &operator=(OutputFile const &) = delete;

    QString const &getName() const { return name_; }
    std::size_t getSize() const { return size_; }
    void write(std::string_view bytes);
    void commit();

private:
    unsigned int checkTarget(bool *exists) const;
    void createTemporary(unsigned int mode);
    void abandon();
    void syncFolder() const;
    [[noreturn]] void fail(char const *step) const;

    QString name_;
    QByteArray target_;
    QByteArray folder_;
    QByteArray temporary_; // empty when there is none to remove
    std::size_t size_ = 0;
    int file_ = -1;
};

} // namespace Zem::Fig2Qt
