// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/stationword.h>

#include <apps/mcconsole/session/judgement.h>
#include <apps/mcconsole/session/situation.h>

#include <QtCore/QCoreApplication>

namespace {

using EItem = Situation::EItem;
using EState = ConsoleSession::EState;

struct WordTexts {
    Q_DECLARE_TR_FUNCTIONS(StationWord)
};

/// Of the connection, if that is what there is to say.
QString ConnectionWord(const Connection& connection, const SituationItem& server) {
    switch (connection.state) {
        case EState::Idle:
            return WordTexts::tr("not connected");
        case EState::Connecting:
            return WordTexts::tr("connecting");
        case EState::Lost:
            return WordTexts::tr("LOST");
        case EState::Connected:
            break;
    }
    return server.severity == ESeverity::Look ? WordTexts::tr("answers slowly") : QString();
}

StationWord Worded(const Situation& situation, EItem item, const QString& word) {
    const SituationItem& told = situation.Get(item);
    StationWord station;
    station.severity = told.severity;
    station.word = word;
    station.cause = Situation::Caption(item) + QStringLiteral(": ");
    station.cause += item == EItem::Server ? word : told.word;
    // What is told of the connection counts seconds.
    const bool isAged = item == EItem::Server && situation.GetConnection().state == EState::Lost;
    const QString detail = isAged ? situation.GetConnection().problem : told.detail;
    if (!detail.isEmpty()) station.cause += QLatin1Char('\n') + detail;
    return station;
}

StationWord WorstOf(const Situation& situation) {
    const Connection& connection = situation.GetConnection();
    const QString connected = ConnectionWord(connection, situation.Get(EItem::Server));
    if (connection.state != EState::Connected) return Worded(situation, EItem::Server, connected);
    for (const ESeverity severity : {ESeverity::Act, ESeverity::Look})
        for (const EItem item : {EItem::Suppression, EItem::Device, EItem::Own, EItem::Server})
            if (situation.Get(item).severity == severity)
                return Worded(situation, item, item == EItem::Server ? connected : situation.Get(item).word);
    return Worded(situation, EItem::Own, situation.Get(EItem::Own).word);
}

}  // namespace

StationWord StationWord::Of(const Situation& situation) {
    StationWord station = WorstOf(situation);
    const bool isWanted = situation.GetConnection().state != EState::Idle;
    station.name = isWanted ? judgement::ServerName(situation.GetFacts(), situation.GetConnection())
                            : WordTexts::tr("New station");
    return station;
}
