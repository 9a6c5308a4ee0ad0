// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgstore.h>

#include <platform/app/errorhandler.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSettings>
#include <QtCore/QStringList>
#include <QtCore/QTextCodec>
#include <QtCore/QThread>

#include <utility>

namespace {

/// A configuration is a few kilobytes; what is larger than this is something else, and parsing it would stall
/// the start.
constexpr qint64 MaxFileSize = 4 * 1024 * 1024;

/// How long a commit waits for other writers, each of which needs a few milliseconds.
constexpr int LockTimeoutMs = 5000;
constexpr int LockPollMs = 2;

/// A lock file without its owner's name was left by a process that died while making it. The owner holds the
/// operating system's lock on the file too, so a living owner cannot lose it to this limit.
constexpr int StaleLockMs = 1000;

std::unique_ptr<QSettings> MakeSettings(const QString& path) {
    auto settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    settings->setIniCodec(QTextCodec::codecForName("UTF-8"));
    return settings;
}

}  // namespace

CfgStore::CfgStore(QString path) : m_path(std::move(path)) {
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    // Without a lock (no such directory, read-only medium) nobody else writes either.
    if (!WithFileLock([this] { Open(); })) Open();
}

CfgStore::~CfgStore() {
    if (m_isDirty) Commit();
}

void CfgStore::Trace(const QString& message) const {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(message, L"platform/config/cfgstore", __LINE__);
}

bool CfgStore::WithFileLock(const std::function<void()>& action) const {
    // QSettings has a lock of its own, but waits for it in steps of up to seconds, and half a minute for one
    // that a killed process left half made. Holding this one first, it never has to wait.
    QLockFile lock(m_path + QStringLiteral(".writer"));
    lock.setStaleLockTime(StaleLockMs);
    QElapsedTimer waited;
    waited.start();
    while (!lock.tryLock(0)) {
        if (lock.error() != QLockFile::LockFailedError || waited.elapsed() > LockTimeoutMs) return false;
        QThread::msleep(LockPollMs);
    }
    const QString inner = m_path + QStringLiteral(".lock");
    if (QFileInfo(inner).exists() && QFileInfo(inner).size() == 0) QFile::remove(inner);
    action();
    return true;
}

void CfgStore::Open() {
    const QString defect = Defect();
    if (!defect.isEmpty()) {
        const QString aside = NameAside();
        if (QFileInfo(m_path).isFile() && QFile::rename(m_path, aside))
            Trace(QStringLiteral(
                      "The configuration file '%1' cannot be used (%2); defaults are used, and the file "
                      "is kept as '%3'")
                      .arg(m_path, defect, aside));
        else
            Trace(QStringLiteral("The configuration file '%1' cannot be used (%2); defaults are used")
                      .arg(m_path, defect));
    }
    m_settings = MakeSettings(m_path);
}

QString CfgStore::Defect() const {
    const QFileInfo info(m_path);
    if (!info.exists()) return QString();
    if (!info.isFile()) return QStringLiteral("it is not a file");
    if (info.size() > MaxFileSize) return QStringLiteral("%1 bytes are too many").arg(info.size());
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) return file.errorString();
    const QByteArray content = file.readAll();
    if (content.contains('\0')) return QStringLiteral("it is a binary file");
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(content.constData(), content.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) return QStringLiteral("it is not UTF-8 text");
    if (MakeSettings(m_path)->status() == QSettings::FormatError)
        return QStringLiteral("a line is neither a section nor a key");
    return QString();
}

QString CfgStore::NameAside() const {
    for (int number = 1;; ++number) {
        const QString name = QStringLiteral("%1.damaged-%2").arg(m_path).arg(number);
        if (!QFileInfo::exists(name)) return name;
    }
}

std::optional<QString> CfgStore::Read(const QString& key) const {
    const QVariant content = m_settings->value(key);
    if (!content.isValid()) return std::nullopt;
    // Written by hand without quotes, a text with commas reads as a list.
    if (content.type() == QVariant::StringList) return content.toStringList().join(QStringLiteral(", "));
    return content.toString();
}

void CfgStore::Write(const QString& key, const QString& content) {
    if (!m_isDirty) m_settings->sync();  // what others committed meanwhile; costs a look at the file's time
    m_emptySections.erase(key.left(key.lastIndexOf(QLatin1Char('/')) + 1));
    if (Read(key) == content) return;
    m_settings->setValue(key, content);
    m_isDirty = true;
}

bool CfgStore::Commit() {
    if (!m_isDirty) return true;
    bool isWritten = false;
    const bool isLocked = WithFileLock([this, &isWritten] {
        // A status never turns good again; fresh settings share what is unwritten and have a status of their
        // own.
        if (m_settings->status() != QSettings::NoError) m_settings = MakeSettings(m_path);
        m_settings->sync();
        isWritten = m_settings->status() == QSettings::NoError;
    });
    if (isLocked && isWritten) {
        m_isDirty = m_isFailureReported = false;
        return true;
    }
    if (!std::exchange(m_isFailureReported, true))
        Trace(QStringLiteral("The configuration file '%1' cannot be written; the changes are kept in memory")
                  .arg(m_path));
    return false;
}

bool CfgStore::HasSection(const QString& prefix) const {
    if (prefix.isEmpty()) return true;  // the root
    const QString group = prefix.chopped(1);
    m_settings->beginGroup(group);
    const bool hasContent = !m_settings->childKeys().isEmpty() || !m_settings->childGroups().isEmpty();
    m_settings->endGroup();
    if (hasContent) return true;
    // Also a section below which there is one that was provided.
    const auto provided = m_emptySections.lower_bound(prefix);
    return provided != m_emptySections.end() && provided->startsWith(prefix);
}

void CfgStore::ProvideSection(const QString& prefix) {
    if (!HasSection(prefix)) m_emptySections.insert(prefix);
}

void CfgStore::RemoveSection(const QString& prefix) {
    for (auto section = m_emptySections.lower_bound(prefix);
         section != m_emptySections.end() && section->startsWith(prefix);)
        section = m_emptySections.erase(section);
    if (!HasSection(prefix)) return;
    m_settings->remove(prefix.chopped(1));
    m_isDirty = true;
}

void CfgStore::ReportMalformed(const QString& key, const QString& content, const char* wanted) {
    if (!m_reportedKeys.insert(key).second) return;
    constexpr int MaxShown = 40;
    QString message = QStringLiteral(
                          "The configuration file '%1' holds '%2' under '%3', where %4 is needed; the "
                          "default is used")
                          .arg(m_path, content.left(MaxShown), key, QLatin1String(wanted));
    if (!std::exchange(m_isCopyKept, true)) {
        const QString aside = NameAside();
        if (QFile::copy(m_path, aside))
            message += QStringLiteral(", and a copy of the file is kept as '%1'").arg(aside);
    }
    Trace(message);
}
