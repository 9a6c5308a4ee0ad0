// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>

class AskingCheckBox;
class MCSMpxORVStatusListDisplay;
class MCSMpxORVStatusListModel;
class PolicyPanel;
class QGroupBox;
class QTableView;
class VCLineEdit;

/// All MpxORVs of the server, with the comment and the policies of the one that is chosen.
class MpxOrvsPage : public Page {
    Q_OBJECT

  public:
    explicit MpxOrvsPage(QWidget* parent = nullptr);
    ~MpxOrvsPage() override;
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

  private:
    QWidget* BuildDetails();
    void ChooseAgain();
    void ShowChosen();

    MCSMpxORVStatusListDisplay* m_list;
    QTableView* m_view;
    MCSMpxORVStatusListModel* m_model;
    QGroupBox* m_details = nullptr;
    VCLineEdit* m_comment = nullptr;
    AskingCheckBox* m_blanking = nullptr;
    PolicyPanel* m_policies = nullptr;
    QString m_chosen;      ///< the node's path; empty while none is chosen
    QString m_lastChosen;  ///< before the list was bound anew
};
