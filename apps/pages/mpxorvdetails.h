// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QGroupBox>

class AskingCheckBox;
class PolicyPanel;
class VCLineEdit;

/// Comment, policies and suppression of the MpxORV that was chosen in a list. GUI thread.
class MpxOrvDetails : public QGroupBox {
    Q_OBJECT

  public:
    explicit MpxOrvDetails(QWidget* parent = nullptr);

    /// Shows the MpxORV whose node is at \a path; empty: none. Binds anew in any case.
    void Show(const QString& path);
    /// The MpxORV of who looks is the one at \a path; empty: there is none.
    void SetOwn(const QString& path);

  private:
    void BuildBlanking();

    VCLineEdit* m_comment;
    AskingCheckBox* m_blanking;
    PolicyPanel* m_policies;
    QString m_path;
};
