// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>

class MCSMpxORVStatusListDisplay;
class MCSMpxORVStatusListModel;
class MpxOrvDetails;
class QTableView;

/// All MpxORVs of the server, with the comment and the policies of the one that is chosen.
class MpxOrvsPage : public Page {
    Q_OBJECT

  public:
    explicit MpxOrvsPage(QWidget* parent = nullptr);
    ~MpxOrvsPage() override;
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

  private:
    QString Current() const;
    int WantedRow() const;  ///< -1: it is not there
    void ChooseAgain();
    void TakeChoice();
    void ShowChosen();

    MCSMpxORVStatusListDisplay* m_list;
    QTableView* m_view;
    MCSMpxORVStatusListModel* m_model;
    MpxOrvDetails* m_details = nullptr;
    QString m_wanted;         ///< the path of the one that is chosen, there or not
    bool m_isChance = true;   ///< nobody chose it
    QString m_shown;          ///< whose details are shown
    bool m_isMoving = false;  ///< rows come and go: what is current then was not chosen by anybody
};
