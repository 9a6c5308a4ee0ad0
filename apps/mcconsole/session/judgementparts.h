// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/session/situationitem.h>

#include <QtCore/QString>

/// What judgements of one thing or another are made of.
namespace judgementparts {

// The pages with the causes, as they are named.
constexpr char StatusPageName[] = "Status";
constexpr char CommandsPageName[] = "Commands";
constexpr char MpxOrvsPageName[] = "MpxORVs";
constexpr char SuppressionPageName[] = "Suppression";
constexpr char OwnPageName[] = "MyMpxORV";

QString JudgementText(const char* text);
SituationItem MakeItem(ESeverity severity, const QString& word, const char* page);
/// The server does not tell.
SituationItem UnknownItem(const char* page);
/// What others chose.
QString ShortName(const QString& name);
/// What the server says.
QString ShortReason(const QString& reason);

}  // namespace judgementparts
