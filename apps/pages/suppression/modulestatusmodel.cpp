// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/modulestatusmodel.h>

#include <apps/common/problemtext.h>
#include <apps/pages/agetext.h>
#include <apps/pages/severitylook.h>
#include <apps/pages/suppressionkeys.h>

#include <QtCore/QDateTime>
#include <QtWidgets/QApplication>

#include <utility>

namespace {

qint64 ToMs(const QString& utc) {
    const QDateTime time = QDateTime::fromString(utc, Qt::ISODateWithMs);
    return time.isValid() ? time.toMSecsSinceEpoch() : 0;
}

ESeverity SeverityOf(const ModuleStatusView& module, bool isLive) {
    if (!isLive) return ESeverity::Stale;
    if (module.IsLive()) return ESeverity::Ok;
    return module.state == suppressionkeys::Error ? ESeverity::Act : ESeverity::Look;
}

}  // namespace

ModuleStatusModel::ModuleStatusModel(QObject* parent) : QAbstractTableModel(parent) {}

void ModuleStatusModel::Show(const SuppressionState& state) {
    const bool isOther = m_modules.size() != state.modules.size();
    if (isOther) beginResetModel();
    m_isLive = state.isLive;
    m_modules = state.modules;
    m_texts.resize(m_modules.size());
    if (isOther) endResetModel();
    TellChanges();
}

/// Views measure and draw anew what they are told of, and little of it changes each second.
void ModuleStatusModel::TellChanges() {
    for (int row = 0; row < rowCount(); ++row)
        for (int column = 0; column < ColumnCount; ++column) {
            const auto at = static_cast<std::size_t>(row);
            QString& shown = m_texts[at][static_cast<std::size_t>(column)];
            QString text = TextOf(m_modules[at], column);
            if (text == shown) continue;
            shown = std::move(text);
            Q_EMIT dataChanged(index(row, column), index(row, column));
        }
}

void ModuleStatusModel::LearnClock(const SuppressionState& state) {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    std::map<int, Heard> heard;
    for (const ModuleStatusView& module : state.modules) {
        const auto before = m_heard.find(module.number);
        if (before != m_heard.end() && before->second.answer == module.lastAnswer) {
            heard[module.number] = before->second;
            continue;
        }
        Heard& own = heard[module.number];
        own.answer = module.lastAnswer;
        const bool isNew = before != m_heard.end() && !before->second.answer.isEmpty();
        if (!isNew || !state.isLive) continue;
        const qint64 answered = ToMs(module.lastAnswer);
        if (answered < ToMs(before->second.answer)) m_aheadMs.reset();  // the server's clock was set back
        m_aheadMs = qMin(m_aheadMs.value_or(now - answered), now - answered);
        own.atMs = answered + *m_aheadMs;
    }
    m_heard = std::move(heard);
}

int ModuleStatusModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_modules.size());
}

int ModuleStatusModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString ModuleStatusModel::StateWord(const ModuleStatusView& module) {
    if (module.state == suppressionkeys::Connected) return tr("Connected");
    if (module.state == suppressionkeys::Disconnected) return tr("Disconnected");
    if (module.state == suppressionkeys::Error) return tr("Error");
    return module.state;
}

QString ModuleStatusModel::AgeText(const ModuleStatusView& module) const {
    if (module.lastAnswer.isEmpty()) return tr("never");
    const auto heard = m_heard.find(module.number);
    const bool isKnown = heard != m_heard.end() && heard->second.atMs;
    const qint64 at = isKnown ? *heard->second.atMs : m_aheadMs.value_or(0) + ToMs(module.lastAnswer);
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - at;
    return tr("%1 ago").arg(agetext::Of(std::chrono::milliseconds(age)));
}

QString ModuleStatusModel::TextOf(const ModuleStatusView& module, int column) const {
    switch (column) {
        case Name:
            return module.name;
        case State:
            return m_isLive ? StateWord(module) : tr("%1 when last heard of").arg(StateWord(module));
        case Since:
            return agetext::Moment(module.stateSince);
        case Reason:
            return problemtext::Translated(module.reason);
        case Address:
            return module.address;
        case LastAnswer:
            return AgeText(module);
        default:
            return QString();
    }
}

QString ModuleStatusModel::DetailOf(const ModuleStatusView& module, int column) {
    if (column != Reason || module.answersAgainSince.isEmpty()) return QString();
    return tr("It answers since %1, and blanks nothing until it is connected anew.")
        .arg(agetext::Moment(module.answersAgainSince));
}

QVariant ModuleStatusModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return QVariant();
    const ModuleStatusView& module = m_modules[static_cast<std::size_t>(index.row())];
    const ESeverity severity = SeverityOf(module, m_isLive);
    const QString& text =
        m_texts[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
    if (role == Qt::DisplayRole) return text;
    if (role == Qt::ToolTipRole) {
        const QString detail = DetailOf(module, index.column());
        return detail.isEmpty() ? text : text + QLatin1Char('\n') + detail;
    }
    if (role == Qt::ForegroundRole && index.column() == State)
        return severitylook::Colour(severity, QApplication::palette());
    if (role == Qt::DecorationRole && index.column() == State)
        return severitylook::Icon(severity, *QApplication::style());
    return QVariant();
}

QVariant ModuleStatusModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    const QString titles[] = {tr("Module"), tr("State"),      tr("Since"),
                              tr("Reason"), tr("IP Address"), tr("Last answer")};
    return section >= 0 && section < ColumnCount ? titles[section] : QString();
}
