// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <vector>

class VCCheckBox;

/// A switch for each policy of one MpxORV. GUI thread.
class PolicyPanel : public QWidget {
    Q_OBJECT

  public:
    explicit PolicyPanel(QWidget* parent = nullptr);
    ~PolicyPanel() override;

    /// Shows the switches below the node of policies at \a path; empty: none.
    void Bind(const QString& path);

  private:
    struct Switch {
        VCCheckBox* box;
        QString policy;
    };

    std::vector<Switch> m_switches;
};
