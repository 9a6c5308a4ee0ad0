// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/askingcheckbox.h>

#include <platform/values/pathbinding.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <vector>

/// A switch for each policy of one MpxORV, which asks before it takes a right from the job master or from who
/// reads from its range. GUI thread.
class PolicyPanel : public QWidget, private PathBinding::IListener {
    Q_OBJECT

  public:
    /// The switches stand in that many columns.
    explicit PolicyPanel(QWidget* parent = nullptr, int columns = 2);
    ~PolicyPanel() override;

    /// Shows the switches below the node of policies at \a path; empty: none.
    void Bind(const QString& path);
    /// Who looks uses the MpxORV whose node is at \a path, of which the server says whether its own clients
    /// may switch its policies; empty: none.
    void SetOwn(const QString& path);
    /// Why the server would refuse to switch them; empty if it would not, as far as anybody knows.
    QString GetLock() const;

  Q_SIGNALS:
    void LockChanged();

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void ShowLock();

    struct Switch {
        AskingCheckBox* box;
        QString policy;
    };

    AskingCheckBox::Question QuestionBefore(const QString& policy, const QString& caption) const;

    std::vector<Switch> m_switches;
    QString m_path;
    QString m_own;
    PathBinding m_lock;
};
