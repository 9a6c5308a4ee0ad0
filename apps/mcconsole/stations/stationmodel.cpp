// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/stations/stationmodel.h>

#include <apps/common/codedtext.h>
#include <apps/pages/agetext.h>

#include <platform/widgets/valuetext.h>

#include <QtGui/QPalette>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <algorithm>

namespace {

constexpr int MaxStationText = 80;  // characters of what others chose

QString ShownText(const QString& text) {
    return text.isEmpty() ? QStringLiteral("-") : valuetext::Shortened(text, MaxStationText);
}

QString DeviceStateText(const nats::StationInfo& info) {
    return ShownText(CodedText::TranslatedBeside(info.state, info.stateCode));
}

}  // namespace

StationModel::StationModel(IClock& clock, QObject* parent) : QAbstractTableModel(parent), m_clock(clock) {}

void StationModel::Add(const nats::StationInfo& station) {
    const auto known = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](const Row& row) { return row.info.station == station.station; });
    if (known != m_rows.end()) {
        const bool isNews =
            IsSilent(static_cast<int>(known - m_rows.begin())) || Differs(known->info, station);
        *known = {station, m_clock.Now()};
        const int row = static_cast<int>(known - m_rows.begin());
        if (isNews) Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
        return;
    }
    if (m_rows.size() >= MostRows) return;
    const int row = static_cast<int>(m_rows.size());
    beginInsertRows(QModelIndex(), row, row);
    m_rows.push_back({station, m_clock.Now()});
    endInsertRows();
}

bool StationModel::Differs(const nats::StationInfo& one, const nats::StationInfo& other) const {
    return one.name != other.name || one.version != other.version || one.machine != other.machine ||
           one.state != other.state || one.stateCode != other.stateCode || one.since != other.since;
}

void StationModel::Clear() {
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void StationModel::Tick() {
    for (int row = static_cast<int>(m_rows.size()); row-- > 0;) {
        if (SilenceOf(m_rows[static_cast<std::size_t>(row)]) < GoneAfter) continue;
        beginRemoveRows(QModelIndex(), row, row);
        m_rows.erase(m_rows.begin() + row);
        endRemoveRows();
    }
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, Device), index(static_cast<int>(m_rows.size()) - 1, Running));
}

bool StationModel::IsSilent(int row) const {
    return SilenceOf(m_rows[static_cast<std::size_t>(row)]) >= SilentAfter;
}

std::chrono::milliseconds StationModel::SilenceOf(const Row& row) const {
    return m_clock.Now() - row.heardAt;
}

/// Since its server began; negative if nobody knows.
std::chrono::milliseconds StationModel::AgeOf(const Row& row) const {
    const QDateTime since = QDateTime::fromString(row.info.since, Qt::ISODateWithMs);
    // Clocks differ.
    return std::chrono::milliseconds(since.isValid() ? std::max(since.msecsTo(m_clock.Utc()), qint64(0))
                                                     : qint64(-1));
}

int StationModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int StationModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString StationModel::Text(const Row& row, int column) const {
    switch (column) {
        case Station:
            return row.info.station;
        case Server:
            return ShownText(row.info.name);
        case Version:
            return ShownText(row.info.version);
        case Machine:
            return ShownText(row.info.machine);
        case Device:
            return SilenceOf(row) < SilentAfter ? DeviceStateText(row.info)
                                                : tr("silent for %1").arg(agetext::Of(SilenceOf(row)));
        case Running:
            return AgeOf(row).count() < 0 ? QStringLiteral("-") : agetext::Of(AgeOf(row));
        default:
            return QString();
    }
}

QVariant StationModel::SortValue(const Row& row, int column) const {
    if (column == Running) return static_cast<qlonglong>(AgeOf(row).count());
    return Text(row, column).toCaseFolded();
}

/// As text, whatever others chose.
QString StationModel::Tip(const Row& row) const {
    QStringList lines{
        tr("%1 at %2: %3").arg(row.info.station, ShownText(row.info.machine), DeviceStateText(row.info))};
    const QString since = agetext::Moment(row.info.since);
    if (!since.isEmpty()) lines += tr("Running since %1").arg(since);
    lines += tr("Heard %1 ago").arg(agetext::Of(SilenceOf(row)));
    return Qt::convertFromPlainText(lines.join(QLatin1Char('\n')), Qt::WhiteSpaceNormal);
}

QVariant StationModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return QVariant();
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    const bool isSilent = IsSilent(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return Text(row, index.column());
        case Qt::ToolTipRole:
            return Tip(row);
        case Qt::DecorationRole:
            if (index.column() != Device || !isSilent) return QVariant();
            return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
        case Qt::ForegroundRole:
            return isSilent ? QVariant(QApplication::palette().color(QPalette::Disabled, QPalette::Text))
                            : QVariant();
        case SortRole:
            return SortValue(row, index.column());
        case StationRole:
            return row.info.station;
        default:
            return QVariant();
    }
}

QVariant StationModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    switch (section) {
        case Station:
            return tr("Station");
        case Server:
            return tr("Server");
        case Version:
            return tr("Version");
        case Machine:
            return tr("Machine");
        case Device:
            return tr("Device");
        case Running:
            return tr("Running for");
        default:
            return QVariant();
    }
}
