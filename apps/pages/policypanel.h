// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/askingcheckbox.h>

#include <platform/values/pathbinding.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <vector>

class QGridLayout;

/// A switch for each policy of one MpxORV, which asks before it takes a right from the job master or from who
/// reads from its range. GUI thread.
class PolicyPanel : public QWidget, private PathBinding::IListener {
    Q_OBJECT

  public:
    /// The switches stand in that many columns, in fewer where these have no room.
    explicit PolicyPanel(QWidget* parent = nullptr, int columns = 2);
    ~PolicyPanel() override;

    /// Shows the switches below the node of policies at \a path; empty: none.
    void Bind(const QString& path);
    /// Who looks uses the MpxORV whose node is at \a path, of which the server says whether its own clients
    /// may switch its policies; empty: none.
    void SetOwn(const QString& path);
    /// Why the server would refuse to switch them; empty if it would not, as far as anybody knows.
    QString GetLock() const;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void LockChanged();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void ShowLock();
    int RowsIn(int columns) const;
    int WidthOf(int columns) const;
    void LayOut(int columns);

    struct Switch {
        AskingCheckBox* box;
        QString policy;
    };

    AskingCheckBox::Question QuestionBefore(const QString& policy, const QString& caption) const;

    std::vector<Switch> m_switches;
    QGridLayout* m_layout;
    int m_mostColumns;
    int m_columns = 0;
    QString m_path;
    QString m_own;
    PathBinding m_lock;
};
