// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

/// Lies over a widget whose content is not live, and dims and hatches it: so it looks the same everywhere,
/// and not by colour alone. Belongs to the widget, and lets everything through to it.
class StaleVeil : public QWidget {
  public:
    explicit StaleVeil(QWidget& veiled);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
