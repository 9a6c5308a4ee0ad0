// SPDX-License-Identifier: Apache-2.0
#include <platform/config/textfile.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextCodec>

#include <algorithm>

namespace {

bool IsControl(QChar character) {
    return character.category() == QChar::Other_Control && character != QLatin1Char('\t');
}

QString At(const QString& name, int line, const char* what) {
    return QStringLiteral("%1:%2: %3").arg(name).arg(line).arg(QLatin1String(what));
}

}  // namespace

// Said once more, where MinGW exports them.
constexpr decltype(TextFile::MaxBytes) TextFile::MaxBytes;
constexpr decltype(TextFile::MaxLineLength) TextFile::MaxLineLength;

bool TextFile::ReadLines(const QString& path, QStringList* lines, QString* error) {
    QFile file(path);
    // Anything but a plain file (a pipe, a device) could keep the program waiting.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        *error = QStringLiteral("%1: is not a file").arg(path);
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    const QByteArray bytes = file.read(MaxBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    return SplitLines(bytes, path, lines, error);
}

bool TextFile::SplitLines(const QByteArray& bytes, const QString& name, QStringList* lines, QString* error) {
    if (bytes.size() > MaxBytes) {
        *error = QStringLiteral("%1: is larger than %2 bytes").arg(name).arg(MaxBytes);
        return false;
    }
    const QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    QStringList result;
    for (QByteArray raw : bytes.split('\n')) {
        if (raw.endsWith('\r')) raw.chop(1);
        const int number = result.size() + 1;
        QTextCodec::ConverterState state;
        const QString line = utf8->toUnicode(raw.constData(), raw.size(), &state);
        if (state.invalidChars != 0 || state.remainingChars != 0) {
            *error = At(name, number, "is not UTF-8 text");
            return false;
        }
        if (line.size() > MaxLineLength) {
            *error = At(name, number, "is too long");
            return false;
        }
        if (std::any_of(line.begin(), line.end(), IsControl)) {
            *error = At(name, number, "has a control character in it");
            return false;
        }
        result << line;
    }
    *lines = result;
    return true;
}

bool TextFile::SplitWords(const QString& line, QStringList* words) {
    words->clear();
    int at = 0;
    for (;;) {
        while (at < line.size() && line.at(at).isSpace())
            ++at;
        if (at == line.size() || line.at(at) == QLatin1Char('#')) return true;
        int end = at;
        if (line.at(at) == QLatin1Char('"')) {
            end = line.indexOf(QLatin1Char('"'), at + 1);
            const bool isClosed = end != -1 && (end + 1 == line.size() || line.at(end + 1).isSpace());
            if (!isClosed) return false;
            *words << line.mid(at + 1, end - at - 1);
            at = end + 1;
            continue;
        }
        while (end < line.size() && !line.at(end).isSpace())
            ++end;
        *words << line.mid(at, end - at);
        at = end;
    }
}
