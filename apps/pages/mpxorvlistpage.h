// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>

class MpxOrvDetails;
class MpxOrvSorter;
class MpxOrvTable;
class QLabel;
class QLineEdit;
class QTableView;

/// All MpxORVs of the server in a list that can be sorted and filtered, the console's own bold, with the
/// comment and the policies of the one that is chosen. The choice holds whatever comes, goes or moves: an
/// MpxORV that comes back is chosen again.
class MpxOrvListPage : public Page {
    Q_OBJECT

  public:
    explicit MpxOrvListPage(QWidget* parent = nullptr);
    ~MpxOrvListPage() override;

    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;
    /// The console's own MpxORV is the one at \a path; empty: there is none.
    void SetOwn(const QString& path);

  private:
    QWidget* BuildFilter();
    void BuildView();
    void ObserveChoice();
    void Filter(const QString& text);
    void ChooseAgain();
    void TakeChoice();
    void ShowChosen();
    void ShowCount();
    void ShowStale();

    MpxOrvTable* m_table;
    MpxOrvSorter* m_sorter;
    QTableView* m_view;
    QLineEdit* m_filter;
    QLabel* m_count;
    MpxOrvDetails* m_details;
    QString m_wanted;        ///< the path of the one that is chosen, there or not
    bool m_isChance = true;  ///< nobody chose it
    QString m_shown;         ///< whose details are shown
    bool m_isBound = false;
    bool m_isWhole = false;   ///< static and dynamic ones
    bool m_isMoving = false;  ///< rows come and go: what is current then was not chosen by anybody
};
