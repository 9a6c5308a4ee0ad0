// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfgfile.h>

#include <QtCore/QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

using cfgfile::EOutcome;
using cfgfile::Result;

constexpr mode_t PermissionBits = 07777;

Result Failure(int error) {
    const bool isMissing = error == ENOENT || error == ENOTDIR;
    return {isMissing ? EOutcome::Missing : EOutcome::Failed, qt_error_string(error)};
}

/// A descriptor that is closed at the end.
class Descriptor {
  public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_number; }
    bool IsOpen() const { return m_number >= 0; }
    /// False if what was written cannot be kept.
    bool Close() {
        const int number = m_number;
        m_number = -1;
        return number < 0 || close(number) == 0 || errno == EINTR;
    }

  private:
    int m_number;
};

/// Writes all of \a bytes and waits until the medium has them.
bool WriteAll(int descriptor, const QByteArray& bytes) {
    qint64 written = 0;
    while (written < bytes.size()) {
        const ssize_t count = write(descriptor, bytes.constData() + written, size_t(bytes.size() - written));
        if (count < 0 && errno != EINTR) return false;
        if (count > 0) written += count;
    }
    // A file system that cannot wait says so, and has to do without.
    return fdatasync(descriptor) == 0 || errno == EINVAL || errno == EROFS;
}

/// The new file \a name with \a bytes, with the permissions of \a replaced if there is one. Else it is the
/// user's own business, and nobody else's.
bool Create(const char* name, const struct stat* replaced, const QByteArray& bytes) {
    constexpr mode_t OwnersOnly = 0600;
    Descriptor file(open(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, OwnersOnly));
    if (!file.IsOpen()) return false;
    if (replaced != nullptr && fchmod(file.Get(), replaced->st_mode & PermissionBits) != 0) return false;
    return WriteAll(file.Get(), bytes) && file.Close();
}

}  // namespace

Result cfgfile::Read(const QString& file, qint64 maxBytes, QByteArray* bytes) {
    bytes->clear();
    // What is no plain file could keep the program waiting.
    const Descriptor descriptor(
        open(QFile::encodeName(file).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat info = {};
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &info) != 0) return Failure(errno);
    if (!S_ISREG(info.st_mode)) return {EOutcome::NoFile, QStringLiteral("it is not a file")};
    // One more than it says shows its end without another look, unless it grew.
    bytes->resize(int(qMin<qint64>(info.st_size + 1, maxBytes)));
    qint64 size = 0;
    for (;;) {
        const ssize_t count = read(descriptor.Get(), bytes->data() + size, size_t(bytes->size() - size));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            const int error = errno;
            bytes->clear();
            return Failure(error);
        }
        size += count;
        if (count == 0 || size == maxBytes) break;
        if (size == bytes->size()) bytes->resize(int(qMin(2 * size, maxBytes)));
    }
    bytes->truncate(int(size));
    return {};
}

Result cfgfile::Replace(const QString& file, const QString& next, const QByteArray& bytes) {
    const QByteArray name = QFile::encodeName(file);
    const QByteArray nextName = QFile::encodeName(next);
    struct stat info = {};
    const bool isThere = stat(name.constData(), &info) == 0;
    if (isThere && !S_ISREG(info.st_mode)) return {EOutcome::NoFile, QStringLiteral("it is not a file")};
    if (isThere && access(name.constData(), W_OK) != 0) return Failure(errno);
    unlink(nextName.constData());  // of a process that was killed
    if (Create(nextName.constData(), isThere ? &info : nullptr, bytes) &&
        std::rename(nextName.constData(), name.constData()) == 0)
        return {};
    const Result failure = Failure(errno);
    unlink(nextName.constData());
    return failure;
}
