// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/pathbinding.h>

#include <QtWidgets/QFrame>

#include <set>
#include <vector>

class QLabel;
class QPushButton;
class VCPushButton;

/// Names the frequencies whose transmitters nobody watches now, until whoever sits here has acknowledged each
/// of them; also again, when one of them is lost once more. Hidden otherwise. GUI thread.
class UnsupervisedBar : public QFrame, private PathBinding::IListener {
    Q_OBJECT

  public:
    explicit UnsupervisedBar(QWidget* parent = nullptr);

    /// Connects modules anew by the command at \a path, where there is one that may be given.
    void BindReconnect(const QString& path);
    /// Nobody watches \a lost now, which are Hz; null: nobody knows, and others say so.
    void ShowLost(const std::vector<double>* lost);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void ShowColours();
    void Acknowledge();

    QLabel* m_icon;
    QLabel* m_text;
    VCPushButton* m_reconnect;
    QPushButton* m_acknowledge;
    PathBinding m_offer;              ///< of the command
    std::vector<double> m_lost;       ///< Hz, as known last
    std::set<double> m_acknowledged;  ///< of them
};
