// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>

#include <platform/nats/stationlist.h>

#include <QtCore/QAbstractTableModel>

#include <chrono>
#include <vector>

/// The stations that were heard of, a row each, in the order in which they came; who has not been heard for
/// long is told to be silent, and leaves at last. Main thread.
class StationModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Station, Server, Version, Machine, Device, Running, ColumnCount };
    static constexpr int SortRole = Qt::UserRole;  ///< a number, or a text without regard to case
    static constexpr int StationRole = Qt::UserRole + 1;

    /// Each says that it is there every 5 s: three times missed is silent.
    static constexpr std::chrono::seconds SilentAfter{16};
    static constexpr std::chrono::seconds GoneAfter{60};
    static constexpr std::size_t MostRows = 10'000;  ///< strangers may make up any number of names

    /// \a clock is not owned and outlives the model.
    explicit StationModel(IClock& clock, QObject* parent = nullptr);

    /// \a station has just said that it is there.
    void Add(const nats::StationInfo& station);
    void Clear();
    /// A second has passed: times are others now, and who is gone leaves.
    void Tick();
    /// Whether any is silent.
    bool IsSilent(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Row {
        nats::StationInfo info;
        std::chrono::milliseconds heardAt;
    };

    QString Text(const Row& row, int column) const;
    QVariant SortValue(const Row& row, int column) const;
    QString Tip(const Row& row) const;
    std::chrono::milliseconds SilenceOf(const Row& row) const;
    std::chrono::milliseconds AgeOf(const Row& row) const;
    bool Differs(const nats::StationInfo& one, const nats::StationInfo& other) const;

    IClock& m_clock;
    std::vector<Row> m_rows;
};
