// SPDX-License-Identifier: Apache-2.0
#include <platform/config/privatefile.h>

#include <platform/config/store/cfgfile.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>

#include <functional>

namespace {

constexpr int MaxTries = 250;  // of what another program has at the moment
constexpr unsigned long PauseMs = 2;
constexpr int MaxAside = 1000;  // files that nobody has looked at

QString NextNameOf(const QString& file) {
    return file + QStringLiteral(".next");
}

PrivateFile::Result Patiently(const std::function<cfgfile::Result()>& action) {
    cfgfile::Result result = action();
    for (int i = 0; i < MaxTries && result.outcome == cfgfile::EOutcome::Busy; ++i) {
        QThread::msleep(PauseMs);
        result = action();
    }
    if (result.outcome == cfgfile::EOutcome::Done) return {};
    const bool isMissing = result.outcome == cfgfile::EOutcome::Missing;
    return {isMissing ? PrivateFile::EOutcome::Missing : PrivateFile::EOutcome::Failed, result.reason};
}

}  // namespace

PrivateFile::Result PrivateFile::Read(const QString& file, qint64 maxBytes, QByteArray* bytes) {
    return Patiently([&] { return cfgfile::Read(file, maxBytes, bytes); });
}

PrivateFile::Result PrivateFile::Replace(const QString& file, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(file).absolutePath());
    return Patiently([&] { return cfgfile::Replace(file, NextNameOf(file), bytes); });
}

PrivateFile::Result PrivateFile::PutAside(const QString& file, QString* aside) {
    for (int number = 1; number <= MaxAside; ++number) {
        *aside = QStringLiteral("%1.aside-%2").arg(file).arg(number);
        if (QFileInfo(*aside).isSymLink() || QFileInfo::exists(*aside)) continue;
        QFile moved(file);
        if (moved.rename(*aside)) return {};
        return {EOutcome::Failed, moved.errorString()};
    }
    return {EOutcome::Failed, QStringLiteral("%1 files are kept aside already").arg(MaxAside)};
}

PrivateFile::Result PrivateFile::Remove(const QString& file) {
    QFile::remove(NextNameOf(file));
    QFile removed(file);
    if (!QFileInfo::exists(file) || removed.remove()) return {};
    return {EOutcome::Failed, removed.errorString()};
}
