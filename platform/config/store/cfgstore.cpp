// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfgstore.h>

#include <platform/app/trace.h>
#include <platform/config/cfgsave.h>
#include <platform/config/store/inireader.h>
#include <platform/config/store/iniwriter.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>

#include <utility>

namespace {

using cfgfile::EOutcome;
using cfgfile::Result;

/// A configuration is a few kilobytes; what is larger than this is something else, and parsing it would stall
/// the start.
constexpr qint64 MaxFileSize = qint64(4) * 1024 * 1024;

constexpr int MaxTold = 400;  // characters of keys in one line

constexpr unsigned long BusyPollMs = 2;

/// While one writes, or after it was killed.
QString LockName(const QString& file) {
    return file + QStringLiteral(".writer");
}

/// While a server uses the file, or after it was killed.
QString HoldName(const QString& file) {
    return file + QStringLiteral(".server");
}

/// Of whoever has the lock: the file to be.
QString NextName(const QString& file) {
    return file + QStringLiteral(".next");
}

QString TooLarge(qint64 size) {
    return QStringLiteral("%1 bytes are too many").arg(size);
}

QString CannotBeWritten(const QString& reason) {
    return QStringLiteral("cannot be written (%1)").arg(reason);
}

/// As many of \a keys as fit into a line.
QString Listed(const QStringList& keys) {
    QString text = keys.value(0);
    int count = 1;
    while (count < keys.size() && text.size() + keys[count].size() < MaxTold)
        text += QStringLiteral(", ") + keys[count++];
    return count < keys.size() ? text + QStringLiteral(" and %1 more").arg(keys.size() - count) : text;
}

/// What a link leads to, so that all who use the file by any name agree.
QString Target(const QString& path) {
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

}  // namespace

CfgStore::CfgStore(QString path, std::chrono::milliseconds patience)
    : m_path(std::move(path)), m_file(Target(m_path)), m_patience(patience), m_hold(HoldName(m_file)) {
    Open();
}

CfgStore::~CfgStore() {
    CommitNow();
}

void CfgStore::Open() {
    const bool isDamaged = !Load().isEmpty();
    const bool isLeft = QFile::exists(NextName(m_file)) || QFile::exists(LockName(m_file));
    if (isDamaged || isLeft) {
        CfgLock lock(LockName(m_file));
        // Another process may be about to put the file in order. What is only left lying about can wait.
        if (lock.Wait(isDamaged ? m_patience : m_patience.zero()) == CfgLock::EOutcome::Held) {
            QFile::remove(NextName(m_file));
            LoadOrPutAside("defaults are used");
        } else if (isDamaged) {
            LoadAsItIs();
        }
    }
    m_isOpened = true;
    if (m_obstacle.isEmpty()) return;
    m_copy.StartBlindly();
    MCS_TRACE(QStringLiteral("The configuration file '%1' cannot be used (%2); defaults are used")
                  .arg(m_path, m_obstacle));
}

void CfgStore::TryAgain() {
    if (!m_obstacle.isEmpty()) LoadAsItIs();
}

Result CfgStore::Patiently(const std::function<Result()>& action) const {
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        Result result = action();
        const bool isOver = m_isPatienceSpent || waited.elapsed() >= m_patience.count();
        if (result.outcome != EOutcome::Busy || isOver) return result;
        QThread::msleep(BusyPollMs);
    }
}

CfgStore::Stamp CfgStore::GetStamp() const {
    const QFileInfo info(m_file);
    return info.exists() ? Stamp{info.size(), info.lastModified().toMSecsSinceEpoch()} : Stamp();
}

QString CfgStore::Load() {
    m_obstacle.clear();
    m_stamp = GetStamp();  // before it is read: what comes later is noticed later
    QByteArray bytes;
    const Result result = Patiently([&] { return cfgfile::Read(m_file, MaxFileSize + 1, &bytes); });
    const bool isMissing = result.outcome == EOutcome::Missing;
    if (result.outcome != EOutcome::Done && !isMissing) {
        m_obstacle = result.reason;  // it may be readable again, and holds what must not be lost
    } else if (bytes.isEmpty()) {
        m_copy.TakeInLoss();
        m_bytes.clear();
    } else if (bytes.size() > MaxFileSize) {
        return TooLarge(m_stamp.size);
    } else if (bytes != m_bytes) {
        CfgContents stored;
        QString defect;
        if (!IniReader::Read(bytes, &stored, &defect)) return defect;
        m_copy.TakeIn(std::move(stored));
        const QStringList overruled = m_copy.TakeOverruledKeys();
        if (!overruled.isEmpty())
            MCS_TRACE(QStringLiteral(
                          "The configuration file '%1' was edited; the program's own content holds of: %2")
                          .arg(m_path, Listed(overruled)));
        m_bytes = bytes;
    }
    return QString();
}

void CfgStore::LoadAsItIs() {
    const QString defect = Load();
    if (!defect.isEmpty()) m_obstacle = defect;
}

void CfgStore::LoadOrPutAside(const char* consequence) {
    const QString defect = Load();
    if (defect.isEmpty()) return;
    const QString aside = NameAside();
    if (!QFile::rename(m_file, aside)) {
        m_obstacle = defect;
        return;
    }
    m_copy.TakeInLoss();
    m_bytes.clear();
    NoteDamage(defect, aside);
    MCS_TRACE(
        QStringLiteral("The configuration file '%1' cannot be used (%2); %3, and the file is kept as '%4'")
            .arg(m_path, defect, QLatin1String(consequence), aside));
}

/// Whoever is to hear of them may never ask.
void CfgStore::NoteDamage(const QString& reason, const QString& keptAs) {
    constexpr std::size_t MaxDamages = 8;
    if (m_damages.size() < MaxDamages) m_damages.push_back({m_path, reason, keptAs, m_isOpened});
}

std::vector<CfgDamage> CfgStore::TakeDamages() {
    return std::exchange(m_damages, {});
}

QString CfgStore::KeepCopy() {
    if (m_copyName) return *m_copyName;
    QFile file(m_file);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QString aside = NameAside(&bytes);  // the file may be as malformed as at the last start
    m_copyName = file.isOpen() && (QFile::exists(aside) || file.copy(aside)) ? aside : QString();
    return *m_copyName;
}

QString CfgStore::NameAside(const QByteArray* content) const {
    for (int number = 1;; ++number) {
        QString name = QStringLiteral("%1.damaged-%2").arg(m_file).arg(number);
        QFile kept(name);
        if (!kept.exists()) return name;
        if (content != nullptr && kept.open(QIODevice::ReadOnly) && kept.readAll() == *content) return name;
    }
}

void CfgStore::Write(const QString& key, const QString& content) {
    if (key.isEmpty() || key.endsWith(QLatin1Char('/'))) {
        MCS_TRACE(QStringLiteral("A content without a key cannot be kept in the configuration file '%1'")
                      .arg(m_path));
        return;
    }
    m_copy.Write(key, content);
}

bool CfgStore::Commit() {
    return CfgSave::Defer(weak_from_this()) || CommitNow();
}

bool CfgStore::CommitNow() {
    if (!m_copy.HasChanges() && !IsToBeRestored()) return true;
    const QString problem = Store();
    if (problem.isEmpty())
        m_copy.MarkStored();
    else if (problem != m_problem)
        MCS_TRACE(QStringLiteral("The configuration file '%1' %2; the changes are kept in memory")
                      .arg(m_path, problem));
    m_problem = problem;
    return problem.isEmpty();
}

QString CfgStore::GetProblem(const QString& consequence) const {
    if (m_problem.isEmpty()) return QString();
    const QString text =
        QStringLiteral("the configuration file '%1' %2; %3").arg(m_path, m_problem, consequence);
    const QStringList keys = m_copy.GetUnstoredKeys();
    return keys.isEmpty() ? text : text + QStringLiteral(": ") + Listed(keys);
}

// Who saves a file that is held means all of it, although nothing has changed.
bool CfgStore::IsToBeRestored() const {
    return m_copy.KeepsEdits() && (!(GetStamp() == m_stamp) || !m_copy.IsStored());
}

QString CfgStore::Store() {
    QDir().mkpath(QFileInfo(m_file).absolutePath());
    CfgLock lock(LockName(m_file));
    const CfgLock::EOutcome outcome = lock.Wait(m_isPatienceSpent ? m_patience.zero() : m_patience);
    m_isPatienceSpent = outcome == CfgLock::EOutcome::Taken;
    if (m_isPatienceSpent) return QStringLiteral("is locked by %1").arg(lock.GetHolder());
    // Where nothing can be written nobody else writes either, and all may be there already.
    const bool isLocked = outcome == CfgLock::EOutcome::Held;
    if (isLocked)
        LoadOrPutAside("what is known is written anew");
    else
        LoadAsItIs();
    if (!m_obstacle.isEmpty()) return CannotBeWritten(m_obstacle);
    if (m_copy.IsStored()) return QString();
    return isLocked ? Replace() : CannotBeWritten(lock.GetReason());
}

QString CfgStore::Replace() {
    const QByteArray bytes = IniWriter::Write(m_copy.Get());
    // A file that would be refused at the next start is worse than the one that is there.
    if (bytes.size() > MaxFileSize) return CannotBeWritten(TooLarge(bytes.size()));
    const Result result = Patiently([&] { return cfgfile::Replace(m_file, NextName(m_file), bytes); });
    if (result.outcome != EOutcome::Done) return CannotBeWritten(result.reason);
    m_bytes = bytes;
    m_stamp = GetStamp();
    return QString();
}

bool CfgStore::Hold(QString* error) {
    QDir().mkpath(QFileInfo(m_file).absolutePath());
    const CfgLock::EOutcome outcome = m_hold.Try();
    if (outcome == CfgLock::EOutcome::Taken) {
        *error = QStringLiteral("the configuration file '%1' is used by %2").arg(m_path, m_hold.GetHolder());
        return false;
    }
    // Where the file of the lock cannot be made, nobody else can hold it either; one that is there may be
    // held.
    const QString holdName = HoldName(m_file);
    if (outcome == CfgLock::EOutcome::Impossible && QFileInfo::exists(holdName)) {
        *error =
            QStringLiteral("whether another server uses the configuration file '%1' cannot be told (%2: %3)")
                .arg(m_path, holdName, m_hold.GetReason());
        return false;
    }
    TryAgain();
    if (!m_obstacle.isEmpty()) {
        m_hold.Release();
        *error = QStringLiteral("the configuration file '%1' cannot be used (%2)").arg(m_path, m_obstacle);
        return false;
    }
    m_copy.KeepEdits();
    return true;
}

QStringList CfgStore::LookForEdits() {
    const Stamp stamp = GetStamp();
    if (stamp == m_newStamp && !(stamp == m_stamp)) {
        const QString defect = Load();
        if (!defect.isEmpty()) NoteDamage(defect, QString());
        if (!defect.isEmpty())
            MCS_TRACE(
                QStringLiteral("The configuration file '%1' was edited, and cannot be used any more (%2)")
                    .arg(m_path, defect));
    }
    m_newStamp = stamp;
    return m_copy.TakeEditedKeys();
}

void CfgStore::ReportMalformed(const QString& key, const QString& content, const char* wanted) {
    if (!m_reportedKeys.insert(key).second) return;
    constexpr int MaxShown = 40;
    QString message = QStringLiteral(
                          "The configuration file '%1' holds '%2' under '%3', where %4 is needed; the "
                          "default is used")
                          .arg(m_path, content.left(MaxShown), key, QLatin1String(wanted));
    const bool isFirst = !m_copyName;
    const QString copy = KeepCopy();
    if (isFirst && !copy.isEmpty())
        message += QStringLiteral(", and a copy of the file is kept as '%1'").arg(copy);
    MCS_TRACE(message);
}
