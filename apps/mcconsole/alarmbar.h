// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/unsupervisedbar.h>

class Situation;

/// The bar of one station, whose server may be lost.
class AlarmBar : public UnsupervisedBar {
    Q_OBJECT

  public:
    /// \a situation is not owned and outlives the bar.
    explicit AlarmBar(const Situation& situation, QWidget* parent = nullptr);
};
