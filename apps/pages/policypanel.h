// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/askingcheckbox.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <vector>

/// A switch for each policy of one MpxORV, which asks before it takes a right from the job master or from who
/// reads from its range. GUI thread.
class PolicyPanel : public QWidget {
    Q_OBJECT

  public:
    explicit PolicyPanel(QWidget* parent = nullptr);
    ~PolicyPanel() override;

    /// Shows the switches below the node of policies at \a path; empty: none.
    void Bind(const QString& path);

  private:
    struct Switch {
        AskingCheckBox* box;
        QString policy;
    };

    AskingCheckBox::Question QuestionBefore(const QString& policy, const QString& caption) const;

    std::vector<Switch> m_switches;
    QString m_path;
};
