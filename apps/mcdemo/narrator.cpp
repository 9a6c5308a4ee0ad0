// SPDX-License-Identifier: Apache-2.0
#include "narrator.h"

#include <apps/common/terminal.h>

#include <QtCore/QStringList>

namespace {

constexpr int NameWidth = 9;

void Print(const char* colour, const QString& text) {
    const bool isColoured = terminal::TakesColour();
    const QString line = isColoured ? QLatin1String(colour) + text + QStringLiteral("\033[0m") : text;
    QString error;
    terminal::WriteOutput((line + QLatin1Char('\n')).toUtf8(), &error);
}

QString Line(const QString& who, const char* arrow, const QString& what) {
    return QStringLiteral("   %1 %2 %3").arg(who.leftJustified(NameWidth), QString::fromUtf8(arrow), what);
}

}  // namespace

void narrator::Chapter(const QString& title) {
    static int number = 0;
    Print("\033[1m", QStringLiteral("\n%1. %2").arg(++number).arg(title));
}

void narrator::Act(const QString& who, const QString& what) {
    Print("\033[36m", Line(who, ">", what));
}

void narrator::Hear(const QString& who, const QString& what) {
    const bool isBad = what.startsWith(QLatin1String("refused")) || what.startsWith(QLatin1String("lost"));
    Print(isBad ? "\033[33m" : "\033[32m", Line(who, "<", what));
}

void narrator::Quote(const QString& text) {
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines)
        Print("\033[2m", QStringLiteral("   | ") + line);
}
