// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/steadylabel.h>

/// A line that counts: a label whose text is drawn without the formatting that labels offer, which costs more
/// than the letters. GUI thread.
class CountLine : public SteadyLabel {
    Q_OBJECT

  public:
    explicit CountLine(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};
