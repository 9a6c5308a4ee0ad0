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
    void ChooseAgain();
    void ShowChosen();

    MCSMpxORVStatusListDisplay* m_list;
    QTableView* m_view;
    MCSMpxORVStatusListModel* m_model;
    MpxOrvDetails* m_details = nullptr;
    QString m_chosen;      ///< the node's path; empty while none is chosen
    QString m_lastChosen;  ///< before the list was bound anew
};
