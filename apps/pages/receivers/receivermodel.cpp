// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/receivers/receivermodel.h>

#include <apps/common/codedtext.h>
#include <apps/common/frequencytext.h>
#include <apps/pages/agetext.h>
#include <apps/pages/serverkeys.h>
#include <apps/pages/severitylook.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/widgets/valuetext.h>

#include <QtWidgets/QApplication>

#include <algorithm>
#include <utility>

namespace {

constexpr int MaxReceiverText = 200;  // of what a driver says
constexpr int StrengthNotKnown = -200;

template <class V>
const V* ReceiverValue(const values::Node& receiver, QLatin1String key) {
    return dynamic_cast<const V*>(receiver.FindChild(key));
}

QString ReceiverText(const values::Node& receiver, QLatin1String key) {
    const auto* const text = ReceiverValue<values::Value<QString>>(receiver, key);
    return text != nullptr ? text->GetValue() : QString();
}

QString ShortReceiverText(const values::Node& receiver, QLatin1String key) {
    return valuetext::Shortened(ReceiverText(receiver, key), MaxReceiverText);
}

QString FrequencyOf(const values::Node& receiver) {
    const auto* const hz =
        ReceiverValue<values::ValueNumeric<double>>(receiver, serverkeys::ReceiverFrequency);
    return hz != nullptr && hz->GetValue() > 0.0 ? FrequencyText::InMegahertz(hz->GetValue()) : QString();
}

QString StrengthOf(const values::Node& receiver) {
    const auto* const strength =
        ReceiverValue<values::ValueNumeric<int>>(receiver, serverkeys::ReceiverStrength);
    const bool isKnown = strength != nullptr && strength->GetValue() > StrengthNotKnown;
    return isKnown ? QString::number(strength->GetValue()) : QString();
}

QString WordForReceiverState(const QString& state) {
    if (state == QLatin1String("Connected")) return ReceiverModel::tr("Connected");
    if (state == QLatin1String("Disconnected")) return ReceiverModel::tr("Disconnected");
    if (state == QLatin1String("Error")) return ReceiverModel::tr("Lost");
    return state;
}

ESeverity SeverityOfReceiver(const QString& state, bool isLive) {
    if (!isLive) return ESeverity::Stale;
    if (state == QLatin1String("Connected")) return ESeverity::Ok;
    return state == QLatin1String("Error") ? ESeverity::Act : ESeverity::Look;
}

}  // namespace

ReceiverModel::ReceiverModel(QObject* parent) : QAbstractTableModel(parent) {}

ReceiverModel::Row ReceiverModel::RowOf(const values::Node& receiver) {
    Row row;
    row.number = receiver.GetName().toInt();
    row.name = ShortReceiverText(receiver, serverkeys::ReceiverName);
    const QString address = ShortReceiverText(receiver, serverkeys::ReceiverAddress);
    const QString state = ReceiverText(receiver, serverkeys::ReceiverState);
    const auto* const value = ReceiverValue<values::Value<QString>>(receiver, serverkeys::ReceiverState);
    const bool isLive = value != nullptr && value->GetState() == values::Valid;
    row.severity = SeverityOfReceiver(state, isLive);
    const QString word = WordForReceiverState(state);
    const QString called = address.isEmpty() ? row.name : address;
    row.texts[Receiver] = receiver.GetName();
    if (!called.isEmpty()) row.texts[Receiver] += QStringLiteral(" (%1)").arg(called);
    row.texts[State] = isLive ? word : tr("%1 when last heard of").arg(word);
    row.texts[Since] = agetext::Moment(ReceiverText(receiver, serverkeys::ReceiverStateSince));
    row.texts[Frequency] = FrequencyOf(receiver);
    row.texts[Mode] = ShortReceiverText(receiver, serverkeys::ReceiverMode);
    row.texts[Strength] = StrengthOf(receiver);
    row.texts[Reason] = valuetext::Shortened(
        CodedText::TranslatedBeside(ReceiverText(receiver, serverkeys::ReceiverReason),
                                    ReceiverText(receiver, serverkeys::ReceiverReasonCode)),
        MaxReceiverText);
    return row;
}

void ReceiverModel::Look(const QString& path) {
    std::vector<Row> rows;
    const values::Node* const all =
        path.isEmpty() ? nullptr
                       : values::Tree::Instance()->FindNode(mcskeys::Join(path, serverkeys::Receivers));
    for (values::TreeItem* item = all != nullptr ? all->GetFirstChild() : nullptr; item != nullptr;
         item = item->GetNextSibling())
        if (item->IsNode()) rows.push_back(RowOf(*static_cast<const values::Node*>(item)));
    std::sort(rows.begin(), rows.end(),
              [](const Row& one, const Row& other) { return one.number < other.number; });
    const bool isOther = rows.size() != m_rows.size();
    if (isOther) beginResetModel();
    std::swap(m_rows, rows);
    if (isOther) return endResetModel();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const int row = static_cast<int>(i);
        if (!(m_rows[i] == rows[i])) Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
    }
}

int ReceiverModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ReceiverModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ReceiverModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return QVariant();
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    const QString& text = row.texts[static_cast<std::size_t>(index.column())];
    if (role == Qt::DisplayRole) return text;
    if (role == Qt::ToolTipRole)
        return (index.column() == Receiver && !row.name.isEmpty() ? row.name : text).toHtmlEscaped();
    const bool isNumber = index.column() == Frequency || index.column() == Strength;
    if (role == Qt::TextAlignmentRole && isNumber) return int(Qt::AlignRight | Qt::AlignVCenter);
    if (index.column() != State) return QVariant();
    if (role == Qt::ForegroundRole) return severitylook::Colour(row.severity, QApplication::palette());
    if (role == Qt::DecorationRole) return severitylook::Icon(row.severity, *QApplication::style());
    return QVariant();
}

QVariant ReceiverModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    const QString titles[] = {tr("Receiver"), tr("State"),          tr("Since"), tr("Frequency (MHz)"),
                              tr("Mode"),     tr("Signal (dB/S9)"), tr("Reason")};
    return section >= 0 && section < ColumnCount ? titles[section] : QString();
}
