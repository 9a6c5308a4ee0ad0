// SPDX-License-Identifier: Apache-2.0
#include "child.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace bench {

namespace {

constexpr std::chrono::minutes LongestWait(1);

QString PathOf(const Part& part) {
    const QString own = QCoreApplication::applicationFilePath();
    return part.program.isEmpty() ? own : QFileInfo(own).dir().filePath(part.program);
}

}  // namespace

Child::Child(const Part& part) : m_role(part.role) {
    m_process.Start(PathOf(part), QStringList{QStringLiteral("--role"), part.role} + part.settings.Words());
}

std::optional<int> Child::WaitForPort() {
    const std::optional<QString> text = WaitForLine(QStringLiteral("port"));
    return text ? std::optional<int>(text->toInt()) : std::nullopt;
}

std::optional<Settings> Child::WaitForResult() {
    const std::optional<QString> text = WaitForLine(QStringLiteral("result"));
    if (!text) return std::nullopt;
    return Settings(text->split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

std::optional<QString> Child::WaitForLine(const QString& kind) {
    const auto wordOf = [](const QString& line) { return line.section(QLatin1Char(' '), 0, 0); };
    const QString failed = QStringLiteral("failed");
    const auto isWanted = [&](const QString& line) { return wordOf(line) == kind || wordOf(line) == failed; };
    const QString line = m_process.WaitForLine(isWanted, LongestWait);
    const QString rest = line.section(QLatin1Char(' '), 1);
    if (!line.isNull() && wordOf(line) == kind) return rest;
    const QString nothing = m_process.IsRunning() ? QStringLiteral("no %1 in time").arg(kind)
                                                  : QStringLiteral("ended without %1").arg(kind);
    m_failure = m_role + QStringLiteral(": ") + (line.isNull() ? nothing : rest);
    return std::nullopt;
}

}  // namespace bench
