// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfglock.h>

#include <QtCore/QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// Whoever gives the lock free removes the file, also just before somebody else locks it.
constexpr int MaxTries = 100;

constexpr mode_t ForAllToSee = 0644;

int Open(const char* name) {
    constexpr int Flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int file = open(name, O_RDWR | O_CREAT | Flags, ForAllToSee);
    const int error = errno;
    if (file >= 0 || (error != EACCES && error != EROFS)) return file;
    // Of another user, or where nothing can be written, it may only be read, which is enough to lock it.
    const int readable = open(name, O_RDONLY | Flags);
    if (readable < 0) errno = error;
    return readable;
}

/// Whether the open file is the one that has the name.
bool IsStillNamed(int file, const char* name) {
    struct stat opened = {};
    struct stat named = {};
    return fstat(file, &opened) == 0 && stat(name, &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

/// 0 if it is locked, else why not. Where the file system has no locks, it has to do without.
int Lock(int file) {
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        return errno == ENOLCK || errno == EOPNOTSUPP || errno == ENOSYS ? 0 : errno;
    }
    return 0;
}

}  // namespace

CfgLock::EOutcome CfgLock::Try() {
    if (IsHeld()) return EOutcome::Held;
    const QByteArray name = QFile::encodeName(m_name);
    for (int i = 0; i < MaxTries; ++i) {
        const int file = Open(name.constData());
        const int error = file < 0 ? errno : Lock(file);
        if (error == 0 && IsStillNamed(file, name.constData())) {
            const QByteArray line = OwnLine();
            // Others have to be able to open it, whatever this user's mask says.
            fchmod(file, ForAllToSee);
            // Who holds it is for people; it is held, whether they can read that or not.
            if (ftruncate(file, 0) == 0 && write(file, line.constData(), size_t(line.size())) < 0) errno = 0;
            m_native = file;
            return EOutcome::Held;
        }
        if (file >= 0) close(file);
        if (error == EWOULDBLOCK) return EOutcome::Taken;
        if (error != 0) {
            m_reason = qt_error_string(error);
            return EOutcome::Impossible;
        }
    }
    return EOutcome::Taken;
}

void CfgLock::Release() {
    if (!IsHeld()) return;
    const int file = static_cast<int>(m_native);
    m_native = None;
    // First the name: nobody may lock a file that is about to go and take it for the one that others see.
    unlink(QFile::encodeName(m_name).constData());
    flock(file, LOCK_UN);  // a child process that is just starting may have the file too
    close(file);
}

QByteArray CfgLock::ReadHolder() const {
    QByteArray bytes(MaxHolderBytes, '\0');
    const int file =
        open(QFile::encodeName(m_name).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return QByteArray();
    const ssize_t count = read(file, bytes.data(), size_t(bytes.size()));
    close(file);
    bytes.truncate(count > 0 ? int(count) : 0);
    return bytes;
}
