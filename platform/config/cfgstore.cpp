// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgstore.h>

#include <platform/app/errorhandler.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSaveFile>
#include <QtCore/QStringList>
#include <QtCore/QTextCodec>
#include <QtCore/QThread>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>
#include <type_traits>
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

constexpr QLatin1Char Separator('/');

bool IsHexDigit(QChar character) {
    return character.unicode() < 0x80 && std::isxdigit(character.toLatin1()) != 0;
}

/// How many of the characters of \a text from \a begin are hexadecimal digits, at most \a limit.
int CountHexDigits(const QString& text, int begin, int limit) {
    int end = begin;
    while (end < text.size() && end - begin < limit && IsHexDigit(text[end]))
        ++end;
    return end - begin;
}

// ---- the names of sections and keys: letters, digits and "_-." as they are, others as %XX or %UXXXX

QString EscapedName(const QString& name) {
    if (name.isEmpty()) return QStringLiteral("%");  // else no line
    QString escaped;
    for (const QChar character : name) {
        const ushort code = character.unicode();
        const bool isPlain =
            code < 0x80 && (std::isalnum(code) != 0 || code == '_' || code == '-' || code == '.');
        if (isPlain)
            escaped += character;
        else if (code <= 0xFF)
            escaped += QStringLiteral("%%1").arg(code, 2, 16, QLatin1Char('0')).toUpper();
        else
            escaped += QStringLiteral("%U%1").arg(code, 4, 16, QLatin1Char('0')).toUpper();
    }
    return escaped;
}

QString UnescapedName(const QString& escaped) {
    if (escaped == QLatin1String("%")) return QString();
    QString name;
    for (int i = 0; i < escaped.size(); ++i) {
        const bool isWide = escaped.midRef(i, 2).compare(QLatin1String("%U"), Qt::CaseInsensitive) == 0;
        const int begin = isWide ? i + 2 : i + 1;
        const int digits = isWide ? 4 : 2;
        if (escaped[i] != QLatin1Char('%') || CountHexDigits(escaped, begin, digits) < digits) {
            name += escaped[i];
            continue;
        }
        name += QChar(escaped.midRef(begin, digits).toUShort(nullptr, 16));
        i = begin + digits - 1;
    }
    return name;
}

/// Keys of sections below that of the line have "\" between the names.
QString EscapedKey(const QString& key) {
    QStringList names = key.split(Separator);
    std::transform(names.begin(), names.end(), names.begin(), EscapedName);
    return names.join(QLatin1Char('\\'));
}

QString UnescapedKey(const QString& escaped) {
    QStringList names = escaped.split(QLatin1Char('\\'));
    std::transform(names.begin(), names.end(), names.begin(), UnescapedName);
    return names.join(Separator);
}

/// "[General]" holds the keys of the root, in any case of its letters; a section of that name is set apart.
QString SectionLine(const QString& section) {
    QString name = EscapedName(section);
    if (section == QLatin1String("General"))
        name = QStringLiteral("%General");
    else if (section.compare(QLatin1String("General"), Qt::CaseInsensitive) == 0)
        name = QStringLiteral("%%1").arg(section[0].unicode(), 2, 16) + section.mid(1);
    return QStringLiteral("[%1]\n").arg(name);
}

QString PrefixOfSectionLine(const QString& escaped) {
    if (escaped.compare(QLatin1String("General"), Qt::CaseInsensitive) == 0) return QString();
    if (escaped.compare(QLatin1String("%General"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("General/");
    return UnescapedKey(escaped) + Separator;
}

// ---- contents: as they are, in quotes where blanks or separators would be misread, with escapes as in C

QString EscapedContent(const QString& content) {
    const auto needsQuotes = [](QChar character) {
        return character == QLatin1Char(';') || character == QLatin1Char(',') ||
               character == QLatin1Char('=');
    };
    QString escaped;
    if (content.startsWith(QLatin1Char('@'))) escaped += QLatin1Char('@');  // one alone marks a type
    bool isAfterHex = false;
    for (int i = 0; i < content.size(); ++i) {
        const QChar character = content[i];
        const ushort code = character.unicode();
        const bool isPair =
            character.isHighSurrogate() && i + 1 < content.size() && content[i + 1].isLowSurrogate();
        const bool isHex =
            !isPair && (code < 0x20 || character.isSurrogate() || (isAfterHex && IsHexDigit(character)));
        if (code == '\n')
            escaped += QLatin1String("\\n");
        else if (code == '\r')
            escaped += QLatin1String("\\r");
        else if (code == '\t')
            escaped += QLatin1String("\\t");
        else if (code == '"' || code == '\\')
            (escaped += QLatin1Char('\\')) += character;
        else if (isHex)
            escaped += QStringLiteral("\\x%1").arg(code, 0, 16);
        else
            escaped += character;
        isAfterHex = isHex && code != '\n' && code != '\r' && code != '\t';
        if (isPair) escaped += content[++i];
    }
    const bool isQuoted = std::any_of(content.begin(), content.end(), needsQuotes) ||
                          (!content.isEmpty() && (content.front().isSpace() || content.back().isSpace()));
    return isQuoted ? QLatin1Char('"') + escaped + QLatin1Char('"') : escaped;
}

/// Appends what the escape at \a begin, behind its "\", stands for. \return how many characters it has.
int Unescape(const QString& escaped, int begin, QString* content) {
    static const QString letters = QStringLiteral("abfnrtv\"?'\\");
    static const QString meanings = QStringLiteral("\a\b\f\n\r\t\v\"?'\\");
    const int letter = letters.indexOf(escaped[begin]);
    if (letter >= 0) {
        *content += meanings[letter];
        return 1;
    }
    const int digits = escaped[begin] == QLatin1Char('x') ? CountHexDigits(escaped, begin + 1, 4) : 0;
    if (digits > 0) {
        *content += QChar(escaped.midRef(begin + 1, digits).toUShort(nullptr, 16));
        return digits + 1;
    }
    *content += QLatin1Char('\\');  // by hand: meant as it stands
    return 0;
}

QString UnescapedContent(const QString& line) {
    const QString escaped = line.trimmed();
    QString content;
    bool isQuoted = false;
    for (int i = 0; i < escaped.size(); ++i) {
        if (escaped[i] == QLatin1Char('\\') && i + 1 < escaped.size())
            i += Unescape(escaped, i + 1, &content);
        else if (escaped[i] == QLatin1Char('"'))
            isQuoted = !isQuoted;
        else
            content += escaped[i];
    }
    return content.startsWith(QLatin1String("@@")) ? content.mid(1) : content;
}

// ---- the file

/// False if a line is neither a section nor a key.
bool Parse(QString text, CfgStore::Contents* contents) {
    QString prefix;
    const QStringList lines = text.replace(QLatin1Char('\r'), QLatin1Char('\n')).split(QLatin1Char('\n'));
    for (const QString& rawLine : lines) {
        const QString line = rawLine.trimmed();
        if (line.isEmpty() || line[0] == QLatin1Char(';') || line[0] == QLatin1Char('#')) continue;
        const bool isSection = line[0] == QLatin1Char('[');
        const int end = line.indexOf(isSection ? QLatin1Char(']') : QLatin1Char('='));
        if (end < 1) return false;
        if (isSection)
            prefix = PrefixOfSectionLine(line.mid(1, end - 1).trimmed());
        else
            (*contents)[prefix + UnescapedKey(line.left(end).trimmed())] =
                UnescapedContent(line.mid(end + 1));
    }
    return true;
}

QByteArray Format(const CfgStore::Contents& contents) {
    QString root;
    QString sections;
    QString current;
    for (const auto& [key, content] : contents) {
        const int end = key.indexOf(Separator);
        const QString line =
            EscapedKey(key.mid(end + 1)) + QLatin1Char('=') + EscapedContent(content) + QLatin1Char('\n');
        if (end < 0) {
            root += line;
            continue;
        }
        if (sections.isEmpty() || current != key.left(end)) {
            current = key.left(end);
            if (!sections.isEmpty()) sections += QLatin1Char('\n');
            sections += SectionLine(current);
        }
        sections += line;
    }
    if (!root.isEmpty()) root.prepend(QLatin1String("[General]\n"));
    if (!root.isEmpty() && !sections.isEmpty()) root += QLatin1Char('\n');
    return (root + sections).toUtf8();
}

std::filesystem::path NativePath(const QString& path) {
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path.toStdWString();
    else
        return QFile::encodeName(path).toStdString();
}

/// Where the next file grows until it is whole.
QString UnfinishedDirectory(const QString& file) {
    return file + QStringLiteral(".unfinished");
}

/// QLockFile guards the removal of a stale lock by a second lock, and waits half a minute for one of those
/// that its owner left without a name.
void RemoveAbandoned(const QString& lockFile) {
    const QFileInfo info(lockFile);
    if (info.exists() && info.size() == 0 &&
        info.lastModified().msecsTo(QDateTime::currentDateTime()) > StaleLockMs)
        QFile::remove(lockFile);
}

}  // namespace

CfgStore::CfgStore(QString path) : m_path(std::move(path)), m_file(QFileInfo(m_path).canonicalFilePath()) {
    if (m_file.isEmpty()) m_file = m_path;
    // Without a lock (no such directory, read-only medium) nobody else writes either.
    if (!WithFileLock([this] { Load(); })) Load();
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
        RemoveAbandoned(name + QStringLiteral(".rmlock"));
        QThread::msleep(LockPollMs);
    }
    QDir(UnfinishedDirectory(m_file)).removeRecursively();  // of a writer that was killed
    action();
    return true;
}

bool CfgStore::Load() {
    Contents stored;
    const QString defect = ReadFile(&stored);
    if (defect.isEmpty())
        m_obstacle.clear();
    else
        PutAside(defect);
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
    const QByteArray text = Format(m_contents);
    const QFileInfo replaced(m_file);
    // A file that would be refused at the next start is worse than the one that is there.
    if (!m_obstacle.isEmpty() || text.size() > MaxFileSize || (replaced.exists() && !replaced.isWritable()))
        return false;
    QDir directory(UnfinishedDirectory(m_file));
    QSaveFile file(directory.filePath(QStringLiteral("next.ini")));
    bool isWritten = directory.mkpath(QStringLiteral(".")) && file.open(QIODevice::WriteOnly) &&
                     file.write(text) == text.size() && file.commit();
    if (isWritten) {
        if (replaced.exists()) QFile::setPermissions(file.fileName(), replaced.permissions());
        std::error_code failure;
        std::filesystem::rename(NativePath(file.fileName()), NativePath(m_file), failure);
        isWritten = !failure;
    }
    directory.removeRecursively();
    return isWritten;
}

QString CfgStore::ReadFile(Contents* contents) const {
    const QFileInfo info(m_file);
    if (!info.exists()) return QString();
    if (!info.isFile()) return QStringLiteral("it is not a file");
    if (info.size() > MaxFileSize) return QStringLiteral("%1 bytes are too many").arg(info.size());
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) return file.errorString();
    const QByteArray bytes = file.readAll();
    if (bytes.contains('\0')) return QStringLiteral("it is a binary file");
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) return QStringLiteral("it is not UTF-8 text");
    if (Parse(text, contents)) return QString();
    contents->clear();
    return QStringLiteral("a line is neither a section nor a key");
}

void CfgStore::PutAside(const QString& defect) {
    const QString aside = NameAside();
    if (QFileInfo(m_file).isFile() && QFile::rename(m_file, aside)) {
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
        const QString name = QStringLiteral("%1.damaged-%2").arg(m_file).arg(number);
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
    // Also what is there already: others may have committed something else since.
    m_contents[key] = content;
    m_changes[key] = content;
}

bool CfgStore::Commit() {
    if (m_changes.empty()) return true;
    bool isStored = false;
    // Where nothing can be written, all may be there already.
    if (!WithFileLock([this, &isStored] { isStored = Load() || Save(); })) isStored = Load();
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
