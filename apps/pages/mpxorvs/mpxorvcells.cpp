// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvcells.h>

#include <apps/common/frequencytext.h>
#include <apps/common/whotext.h>
#include <apps/pages/agetext.h>
#include <apps/pages/mpxorvs/mpxorvcontent.h>

#include <QtCore/QCoreApplication>

namespace {

/// Short, because there is a cell for it; what is master or reads from its range says so beside it.
struct CellTexts {
    Q_DECLARE_TR_FUNCTIONS(MpxOrvCells)
};

QString StateText(const MpxOrvContent& content) {
    switch (content.state) {
        case MpxOrvContent::EState::Idle:
            return CellTexts::tr("Idle");
        case MpxOrvContent::EState::AtWork:
            return CellTexts::tr("At work");
        case MpxOrvContent::EState::Tuned:
            return CellTexts::tr("Tuned");
        case MpxOrvContent::EState::Watching:
            return CellTexts::tr("Reads along");
        case MpxOrvContent::EState::Master:
            return CellTexts::tr("Job master");
    }
    Q_UNREACHABLE();
}

QString MasterText(const MpxOrvContent& content) {
    if (content.IsMaster()) return CellTexts::tr("is master");
    const bool isWatching = content.state == MpxOrvContent::EState::Watching;
    return isWatching ? CellTexts::tr("reads from it") : QString();
}

QString SwitchedText(const MpxOrvContent& content) {
    if (content.switchedSince.isEmpty()) return CellTexts::tr("Not switched so far");
    const QString moment = agetext::Moment(content.switchedSince);
    return content.switchedBy.isEmpty()
               ? CellTexts::tr("Switched in the server's own window, %1").arg(moment)
               : CellTexts::tr("Switched by %1, %2").arg(whotext::Translated(content.switchedBy), moment);
}

}  // namespace

QString mpxorvcells::Title(int column) {
    switch (column) {
        case Name:
            return CellTexts::tr("Name");
        case Kind:
            return CellTexts::tr("Kind");
        case State:
            return CellTexts::tr("State");
        case Frequency:
            return CellTexts::tr("Frequency");
        case Since:
            return CellTexts::tr("Since");
        case Master:
            return CellTexts::tr("Master");
        case Suppression:
            return CellTexts::tr("Suppression");
        case Clients:
            return CellTexts::tr("Clients");
        case Comment:
            return CellTexts::tr("Comment");
        default:
            return QString();
    }
}

QString mpxorvcells::Text(const MpxOrvContent& content, int column) {
    if (!content.isComplete && column != Name && column != Kind) return QString();
    switch (column) {
        case Name:
            return content.name;
        case Kind:
            return content.isStatic ? CellTexts::tr("static") : CellTexts::tr("dynamic");
        case State:
            return StateText(content);
        case Frequency:
            if (content.hz == 0.0) return QString();
            return QStringLiteral("%1 MHz").arg(FrequencyText::InMegahertz(content.hz));
        case Since:
            return agetext::Moment(content.since);
        case Master:
            return MasterText(content);
        case Suppression:
            return content.obeys ? CellTexts::tr("obeys") : CellTexts::tr("ignores");
        case Clients:
            return content.clients.join(QStringLiteral(", "));
        case Comment:
            return content.comment;
        default:
            return QString();
    }
}

QString mpxorvcells::Tip(const MpxOrvContent& content, int column) {
    QString tip = Text(content, column);
    if (tip.isEmpty() || !content.isComplete) return tip;
    if (column == State && !content.mode.isEmpty())
        tip += QLatin1Char('\n') + CellTexts::tr("Operation mode: %1").arg(content.mode);
    if (column == Suppression) tip += QLatin1Char('\n') + SwitchedText(content);
    return tip;
}
