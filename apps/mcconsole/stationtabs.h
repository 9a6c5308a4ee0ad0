// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/session/stationword.h>
#include <apps/mcconsole/session/unseenloss.h>

#include <QtWidgets/QWidget>

#include <vector>

class QStackedWidget;
class QTabBar;
class StationView;

/// The stations of the window, one of them in front. Where there are several, each has a tab that says its
/// name and how it is, whichever is in front. GUI thread.
class StationTabs : public QWidget {
    Q_OBJECT

  public:
    explicit StationTabs(QWidget* parent = nullptr);
    ~StationTabs() override;

    /// Owns \a station from now on, and brings it to the front.
    void Add(StationView* station) { Insert(static_cast<int>(m_stations.size()), station); }
    /// The same, with its tab at \a index.
    void Insert(int index, StationView* station);
    /// It goes once nobody uses it any more; there has to be another.
    void Remove(StationView& station);
    void BringToFront(StationView& station);
    /// The next one, or the one before; round at the ends.
    void Step(int by);

    StationView& GetFront() const { return *m_stations[static_cast<std::size_t>(FrontIndex())]; }
    int FrontIndex() const;
    const std::vector<StationView*>& GetAll() const { return m_stations; }
    /// Of the station with that index, with a name that is told apart from the others.
    StationWord GetWord(int index) const;

  Q_SIGNALS:
    void FrontChanged();
    /// The connection or the situation of one of them is another.
    void Changed(StationView* station);
    void CloseRequested(StationView* station);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    int IndexOf(const StationView& station) const;
    void AddCloseButton(StationView* station, int index);
    void OnFrontChanged(int index);
    void ShowChanged(const StationView& station);
    /// As it is, and what was lost there.
    StationWord WordOf(int index);
    void ShowAll();
    void ShowTab(int index);
    QString LabelOf(int index) const;

    QTabBar* m_bar;
    QStackedWidget* m_stack;
    std::vector<StationView*> m_stations;  ///< in the order of the tabs
    std::vector<StationWord> m_words;      ///< of each, as it is shown
    std::vector<UnseenLoss> m_losses;      ///< of each, what nobody has looked at
};
