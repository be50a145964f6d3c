#include <ZemOutputFile.h>

#include <ZemTranslate.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Zem {

namespace {

constexpr int MAX_LINKS = 40;
constexpr int MAX_NAMES = 100;
constexpr int OWN_NAMES = 4; // of the temporary files of one target; what a killed program left there is found again
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

/// The n-th name to try: first those by which the next save of the same target looks for what was left behind.
QByteArray temporaryName(QByteArray const &target, int n)
{
    if (n >= OWN_NAMES) {
        return ".zem-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + ".tmp";
    }
    QByteArray const name = target.mid(target.lastIndexOf('/') + 1);
    QByteArray const hash = QCryptographicHash::hash(name, QCryptographicHash::Sha1).first(8).toHex();
    return ".zem-" + hash + '-' + QByteArray::number(n) + ".tmp";
}

/// Whether the open file still stands under the path.
bool isFileAt(QByteArray const &path, int file)
{
    struct stat opened = {};
    struct stat named = {};
    return ::fstat(file, &opened) == 0 && ::lstat(path.constData(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

/// Removes the temporary file of a program that is gone: who still writes one holds a lock on it, and only who holds
/// the lock on the file under a path removes it.
void removeAbandoned(QByteArray const &path)
{
    int const file = openRetrying(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK, 0);
    if (file < 0) {
        return;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) == 0 && isFileAt(path, file)) {
        ::unlink(path.constData());
    }
    ::close(file);
}

/// A new file of that name, locked; -1 with the reason in errno, EEXIST when another program has the name. Where the
/// file system knows no locks there is none, and nobody removes the file for want of one.
int createLocked(QByteArray const &path, unsigned int mode)
{
    int const file = openRetrying(path.constData(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (file < 0) {
        return -1;
    }
    bool const isLocked = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (isLocked && isFileAt(path, file)) {
        return file;
    }
    // Taken for abandoned before it was locked.
    ::close(file);
    errno = EEXIST;
    return -1;
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
    for (int i = 0; i < OWN_NAMES; ++i) {
        removeAbandoned(folder_ + '/' + temporaryName(target_, i));
    }
    for (int i = 0; i < MAX_NAMES && file_ < 0; ++i) {
        QByteArray const path = folder_ + '/' + temporaryName(target_, i);
        file_ = createLocked(path, mode);
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

/// The name goes before the lock, which the file loses when it is closed: by then it may be another program's.
void OutputFile::abandon()
{
    if (!temporary_.isEmpty()) {
        ::unlink(std::exchange(temporary_, {}).constData());
    }
    if (file_ >= 0) {
        ::close(std::exchange(file_, -1));
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

/// The lock must hold until the file has its name, and closing can still tell of bytes that were lost: what is closed
/// first is a second handle.
void OutputFile::commit()
{
    if (::fsync(file_) != 0) {
        fail("synchronise");
    }
    int const second = ::fcntl(file_, F_DUPFD_CLOEXEC, 0);
    if (second < 0 || ::close(second) != 0) {
        fail("close");
    }
    if (::rename(temporary_.constData(), target_.constData()) != 0) {
        fail("rename");
    }
    temporary_.clear();
    ::close(std::exchange(file_, -1));
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
