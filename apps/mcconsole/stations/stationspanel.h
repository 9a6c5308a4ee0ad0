// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/qtclock.h>
#include <apps/mcconsole/stations/natsplace.h>
#include <apps/mcconsole/stations/stationfinder.h>
#include <apps/mcconsole/stations/stationmodel.h>

#include <QtWidgets/QGroupBox>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;
class QTimer;

/// Lists the stations at NATS, for who knows no more than where NATS is; one of them may be chosen. Closed
/// until its box is checked. GUI thread.
class StationsPanel : public QGroupBox {
    Q_OBJECT

  public:
    /// What a connection to NATS there is made with; the servers are added.
    using OptionsFor = std::function<nats::NatsOptions(const NatsPlace& place)>;

    StationsPanel(StationFinder::MakeBus makeBus, OptionsFor optionsFor, QWidget* parent = nullptr);
    ~StationsPanel() override;

    /// Offers these, the first one at once: it opens, and looks there.
    void OfferPlaces(const QStringList& places);

  Q_SIGNALS:
    /// One was chosen; or, more than that, is to be connected to.
    void Chosen(const ServerAddress& address);
    void Activated(const ServerAddress& address);
    /// NATS was reached there.
    void Reached(const QString& place);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* BuildPlaces();
    void BuildTable();
    void Open(bool isOpen);
    void Look();
    void ShowState();
    QString StateText() const;
    void ChooseCurrent();
    void ActivateCurrent();
    ServerAddress CurrentAddress() const;
    void GoToTable();

    QtClock m_clock;
    const OptionsFor m_optionsFor;
    StationFinder m_finder;
    NatsPlace m_place;  ///< that is looked at
    StationModel* m_model;
    QSortFilterProxyModel* m_shown;
    QWidget* m_content;
    QComboBox* m_address = nullptr;
    QPushButton* m_look = nullptr;
    QLineEdit* m_filter = nullptr;
    QTableView* m_table = nullptr;
    QLabel* m_state = nullptr;
    QTimer* m_tick;
};
