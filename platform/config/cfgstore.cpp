// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgstore.h>

#include <platform/app/errorhandler.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSettings>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryFile>
#include <QtCore/QTextCodec>
#include <QtCore/QThread>

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

/// A configuration is a few kilobytes; what is larger than this is something else, and parsing it would stall
/// the start.
constexpr qint64 MaxFileSize = qint64(4) * 1024 * 1024;

/// How long a commit waits for other writers, each of which needs a few milliseconds.
constexpr int LockTimeoutMs = 5000;
constexpr int LockPollMs = 2;

/// A lock file without its owner's name was left by a process that died while making it. The owner holds the
/// operating system's lock on the file too, so a living owner cannot lose it to this limit.
constexpr int StaleLockMs = 1000;

const QByteArray ByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

std::filesystem::path NativePath(const QString& path) {
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path.toStdWString();
    else
        return QFile::encodeName(path).toStdString();
}

const QString GuardSuffix = QStringLiteral(".rmlock");

/// Of whoever has the lock: what is not to outlive it, also if the process is killed.
QString UnfinishedDirectory(const QString& file) {
    return file + QStringLiteral(".unfinished");
}

/// QLockFile guards the removal of a stale lock by a second lock, that of a stale second one by a third, and
/// so on, and waits half a minute for one of those that its owner left without a name.
void RemoveAbandonedGuards(const QString& lockFile) {
    for (QFileInfo guard(lockFile + GuardSuffix); guard.exists();
         guard.setFile(guard.filePath() + GuardSuffix))
        if (guard.size() == 0 && guard.lastModified().msecsTo(QDateTime::currentDateTime()) > StaleLockMs)
            QFile::remove(guard.filePath());
}

bool IsUtf8(const QByteArray& bytes) {
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

/// Written by hand without quotes, a text with commas reads as a list.
QString Text(const QVariant& content) {
    return content.type() == QVariant::StringList ? content.toStringList().join(QStringLiteral(", "))
                                                  : content.toString();
}

/// Reads \a contents from the INI \a file, which no QSettings of this process has seen before.
bool ReadIni(const QString& file, CfgStore::Contents* contents) {
    QSettings ini(file, QSettings::IniFormat);
    ini.setIniCodec(QTextCodec::codecForName("UTF-8"));  // what people write; QSettings writes plain ASCII
    const QStringList keys = ini.allKeys();
    if (ini.status() != QSettings::NoError) return false;
    for (const QString& key : keys) {
        if (key.isEmpty() || key.endsWith(QLatin1Char('/'))) return false;  // "= content"
        (*contents)[key] = Text(ini.value(key));
    }
    return true;
}

bool WriteIni(const QString& file, const CfgStore::Contents& contents) {
    QSettings ini(file, QSettings::IniFormat);
    for (const auto& [key, content] : contents)
        ini.setValue(key, content);
    ini.sync();
    return ini.status() == QSettings::NoError && QFileInfo(file).size() <= MaxFileSize;
}

}  // namespace

CfgStore::CfgStore(QString path) : m_path(std::move(path)), m_file(QFileInfo(m_path).canonicalFilePath()) {
    if (m_file.isEmpty()) m_file = m_path;
    // Without a lock (no such directory, read-only medium) nobody else writes either.
    if (!WithFileLock([this] { Load(true); })) Load(false);
}

CfgStore::~CfgStore() {
    Commit();
}

void CfgStore::Trace(const QString& message) const {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(message, L"platform/config/cfgstore", __LINE__);
}

bool CfgStore::WithFileLock(const std::function<void()>& action) const {
    QDir().mkpath(QFileInfo(m_file).absolutePath());
    const QString name = m_file + QStringLiteral(".writer");
    QLockFile lock(name);
    lock.setStaleLockTime(StaleLockMs);
    QElapsedTimer waited;
    waited.start();
    while (!lock.tryLock(0)) {
        if (lock.error() != QLockFile::LockFailedError || waited.elapsed() > LockTimeoutMs) return false;
        RemoveAbandonedGuards(name);
        QThread::msleep(LockPollMs);
    }
    QDir unfinished(UnfinishedDirectory(m_file));
    unfinished.removeRecursively();  // of a process that was killed
    action();
    unfinished.removeRecursively();
    return true;
}

bool CfgStore::Load(bool isLocked) {
    Contents stored;
    bool isDamaged = false;
    const QString defect = ReadFile(isLocked, &stored, &isDamaged);
    if (defect.isEmpty())
        m_obstacle.clear();
    else
        PutAside(defect, isDamaged);
    m_contents = stored;
    for (const auto& [key, content] : m_changes) {
        if (content)
            m_contents[key] = *content;
        else
            m_contents.erase(key);
    }
    return m_obstacle.isEmpty() && m_contents == stored;
}

bool CfgStore::Save() const {
    const QFileInfo replaced(m_file);
    if (!m_obstacle.isEmpty() || (replaced.exists() && !replaced.isWritable())) return false;
    QDir directory(UnfinishedDirectory(m_file));
    const QString next = directory.filePath(QStringLiteral("next.ini"));
    // A file that would be refused at the next start is worse than the one that is there.
    bool isWritten = directory.mkpath(QStringLiteral(".")) && WriteIni(next, m_contents);
    if (isWritten) {
        if (replaced.exists()) QFile::setPermissions(next, replaced.permissions());
        std::error_code failure;
        std::filesystem::rename(NativePath(next), NativePath(m_file), failure);
        isWritten = !failure;
    }
    return isWritten;
}

QString CfgStore::ReadFile(bool isLocked, Contents* contents, bool* isDamaged) const {
    const QFileInfo info(m_file);
    if (!info.exists()) return QString();
    if (!info.isFile()) return QStringLiteral("it is not a file");
    *isDamaged = true;
    if (info.size() > MaxFileSize) return QStringLiteral("%1 bytes are too many").arg(info.size());
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) return file.errorString();
    QByteArray bytes = file.readAll();
    if (bytes.startsWith(ByteOrderMark)) bytes.remove(0, ByteOrderMark.size());  // QSettings stumbles over it
    if (bytes.contains('\0')) return QStringLiteral("it is a binary file");
    if (!IsUtf8(bytes)) return QStringLiteral("it is not UTF-8 text");
    // QSettings takes a file of the same name, size and time for unchanged, and two commits may come within
    // the time that a file system tells apart. A copy has a name that it cannot have seen.
    QTemporaryFile copy;
    QDir unfinished(UnfinishedDirectory(m_file));
    if (isLocked && unfinished.mkpath(QStringLiteral(".")))
        copy.setFileTemplate(unfinished.filePath(QStringLiteral("copy")));
    if (!copy.open() || copy.write(bytes) != bytes.size() || !copy.flush()) {
        *isDamaged = false;
        return copy.errorString();
    }
    if (ReadIni(copy.fileName(), contents)) return QString();
    contents->clear();
    return QStringLiteral("a line is neither a section nor a key");
}

void CfgStore::PutAside(const QString& defect, bool isDamaged) {
    const QString aside = NameAside();
    if (isDamaged && QFile::rename(m_file, aside)) {
        m_obstacle.clear();
        Trace(QStringLiteral(
                  "The configuration file '%1' cannot be used (%2); defaults are used, and the file is "
                  "kept as '%3'")
                  .arg(m_path, defect, aside));
    } else if (std::exchange(m_obstacle, defect) != defect) {
        Trace(QStringLiteral("The configuration file '%1' cannot be used (%2); defaults are used")
                  .arg(m_path, defect));
    }
}

QString CfgStore::NameAside(const QByteArray* content) const {
    for (int number = 1;; ++number) {
        QString name = QStringLiteral("%1.damaged-%2").arg(m_file).arg(number);
        QFile kept(name);
        if (!kept.exists()) return name;
        if (content != nullptr && kept.open(QIODevice::ReadOnly) && kept.readAll() == *content) return name;
    }
}

std::optional<QString> CfgStore::Read(const QString& key) const {
    const auto found = m_contents.find(key);
    return found != m_contents.end() ? std::make_optional(found->second) : std::nullopt;
}

void CfgStore::Write(const QString& key, const QString& content) {
    if (key.isEmpty() || key.endsWith(QLatin1Char('/'))) {
        Trace(QStringLiteral("A content without a key cannot be kept in the configuration file '%1'")
                  .arg(m_path));
        return;
    }
    // Also what is there already: others may have committed something else since.
    m_contents[key] = content;
    m_changes[key] = content;
}

bool CfgStore::Commit() {
    if (m_changes.empty()) return true;
    bool isStored = false;
    // Where nothing can be written, all may be there already.
    if (!WithFileLock([this, &isStored] { isStored = Load(true) || Save(); })) isStored = Load(false);
    if (isStored) {
        m_changes.clear();
        m_isFailureReported = false;
    } else if (!std::exchange(m_isFailureReported, true)) {
        Trace(QStringLiteral("The configuration file '%1' cannot be written; the changes are kept in memory")
                  .arg(m_path));
    }
    return isStored;
}

bool CfgStore::HasSection(const QString& prefix) const {
    if (prefix.isEmpty()) return true;  // the root
    const auto content = m_contents.lower_bound(prefix);
    if (content != m_contents.end() && content->first.startsWith(prefix)) return true;
    // Also a section below which there is one that was provided.
    const auto provided = m_providedSections.lower_bound(prefix);
    return provided != m_providedSections.end() && provided->startsWith(prefix);
}

void CfgStore::ProvideSection(const QString& prefix) {
    m_providedSections.insert(prefix);
}

void CfgStore::RemoveSection(const QString& prefix) {
    for (auto section = m_providedSections.lower_bound(prefix);
         section != m_providedSections.end() && section->startsWith(prefix);)
        section = m_providedSections.erase(section);
    for (auto content = m_contents.lower_bound(prefix);
         content != m_contents.end() && content->first.startsWith(prefix);) {
        m_changes[content->first] = std::nullopt;
        content = m_contents.erase(content);
    }
}

QStringList CfgStore::GetKeys(const QString& prefix) const {
    QStringList keys;
    for (auto content = m_contents.lower_bound(prefix);
         content != m_contents.end() && content->first.startsWith(prefix); ++content)
        keys += content->first.mid(prefix.size());
    return keys;
}

void CfgStore::ReportMalformed(const QString& key, const QString& content, const char* wanted) {
    if (!m_reportedKeys.insert(key).second) return;
    constexpr int MaxShown = 40;
    QString message = QStringLiteral(
                          "The configuration file '%1' holds '%2' under '%3', where %4 is needed; the "
                          "default is used")
                          .arg(m_path, content.left(MaxShown), key, QLatin1String(wanted));
    if (!std::exchange(m_isCopyKept, true)) {
        QFile file(m_file);
        const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        const QString aside = NameAside(&bytes);  // the file may be as malformed as at the last start
        if (file.isOpen() && (QFile::exists(aside) || file.copy(aside)))
            message += QStringLiteral(", and a copy of the file is kept as '%1'").arg(aside);
    }
    Trace(message);
}
