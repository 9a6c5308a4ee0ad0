// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Tells what happens, on standard output; in colour on a terminal.
namespace narrator {

void Chapter(const QString& title);
/// What was done, by whom.
void Act(const QString& who, const QString& what);
/// What somebody heard of it.
void Hear(const QString& who, const QString& what);
/// What a program printed, line by line.
void Quote(const QString& text);

}  // namespace narrator
