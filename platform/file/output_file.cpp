#include <ZemOutputFile.h>

#include <ZemTranslate.h>

#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Zem {

namespace {

constexpr int MAX_LINKS = 40;
constexpr int MAX_NAMES = 100;
constexpr unsigned int PERMISSION_BITS = 0777;
constexpr unsigned int NEW_FILE_MODE = 0666; // the process's umask applies

QString text(char const *message)
{
    return translate("File_err", message);
}

QByteArray folderOf(QByteArray const &path)
{
    qsizetype const slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
}

/// Empty when the path is no symbolic link.
QByteArray readLink(QByteArray const &path)
{
    char buffer[4096];
    ssize_t const size = ::readlink(path.constData(), buffer, sizeof buffer);
    return size > 0 && static_cast<std::size_t>(size) < sizeof buffer ? QByteArray(buffer, size) : QByteArray();
}

/// What the path finally points at; that file need not exist.
QByteArray followLinks(QByteArray path)
{
    for (int i = 0; i < MAX_LINKS; ++i) {
        QByteArray const link = readLink(path);
        if (link.isEmpty()) {
            return path;
        }
        path = link.startsWith('/') ? link : folderOf(path) + '/' + link;
    }
    return path;
}

int openRetrying(char const *path, int flags, unsigned int mode)
{
    int file = -1;
    do {
        file = ::open(path, flags | O_CLOEXEC, static_cast<mode_t>(mode));
    } while (file < 0 && errno == EINTR);
    return file;
}

} // namespace

OutputFile::OutputFile(QString const &fileName)
    : name_(fileName), target_(followLinks(QFile::encodeName(fileName))), folder_(folderOf(target_))
{
    bool exists = false;
    unsigned int const mode = checkTarget(&exists);
    createTemporary(mode);
    // The umask was for a new file; the old one's permissions are kept as they are.
    if (exists && ::fchmod(file_, static_cast<mode_t>(mode)) != 0) {
        int const reason = errno;
        abandon();
        errno = reason;
        fail("set permissions");
    }
}

OutputFile::~OutputFile()
{
    abandon();
}

/// The permissions for the temporary file. What cannot be written in place must not be replaced either.
unsigned int OutputFile::checkTarget(bool *exists) const
{
    struct stat status = {};
    if (::stat(target_.constData(), &status) != 0) {
        // The empty name is no new file either.
        if (errno != ENOENT || target_.isEmpty()) {
            fail("open");
        }
        return NEW_FILE_MODE;
    }
    if (!S_ISREG(status.st_mode)) {
        throw FileError(text("%1: is not a file").arg(name_));
    }
    if (::faccessat(AT_FDCWD, target_.constData(), W_OK, AT_EACCESS) != 0) {
        fail("open");
    }
    *exists = true;
    return status.st_mode & PERMISSION_BITS;
}

void OutputFile::createTemporary(unsigned int mode)
{
    for (int i = 0; i < MAX_NAMES && file_ < 0; ++i) {
        QByteArray const number = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
        QByteArray const path = folder_ + "/.zem-" + number + ".tmp";
        file_ = openRetrying(path.constData(), O_WRONLY | O_CREAT | O_EXCL, mode);
        if (file_ >= 0) {
            temporary_ = path;
        } else if (errno != EEXIST) {
            break;
        }
    }
    if (file_ < 0) {
        fail("create");
    }
}

void OutputFile::abandon()
{
    if (file_ >= 0) {
        ::close(std::exchange(file_, -1));
    }
    if (!temporary_.isEmpty()) {
        ::unlink(std::exchange(temporary_, {}).constData());
    }
}

void OutputFile::write(std::string_view bytes)
{
    size_ += bytes.size();
    while (!bytes.empty()) {
        ssize_t const done = ::write(file_, bytes.data(), bytes.size());
        if (done < 0 && errno == EINTR) {
            continue;
        }
        if (done <= 0) {
            fail("write");
        }
        bytes.remove_prefix(static_cast<std::size_t>(done));
    }
}

void OutputFile::commit()
{
    if (::fsync(file_) != 0) {
        fail("synchronise");
    }
    if (::close(std::exchange(file_, -1)) != 0) {
        fail("close");
    }
    if (::rename(temporary_.constData(), target_.constData()) != 0) {
        fail("rename");
    }
    temporary_.clear();
    syncFolder();
}

void OutputFile::syncFolder() const
{
    int const folder = openRetrying(folder_.constData(), O_RDONLY | O_DIRECTORY, 0);
    // A folder that may be written but not read, and a file system that cannot synchronise folders, are no failures.
    if (folder < 0 && errno == EACCES) {
        return;
    }
    int const result = folder < 0 ? -1 : ::fsync(folder);
    int const reason = errno;
    if (folder >= 0) {
        ::close(folder);
    }
    if (result != 0 && reason != EINVAL && reason != ENOTSUP) {
        errno = reason;
        fail("synchronise folder");
    }
}

void OutputFile::fail(char const *step) const
{
    QString const reason = QString::fromLocal8Bit(std::generic_category().message(errno));
    throw FileError(text("%1: cannot save, step \"%2\" failed: %3").arg(name_, text(step), reason));
}

} // namespace Zem
