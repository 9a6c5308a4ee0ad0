// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/alarmbar.h>

#include <apps/mcconsole/session/situation.h>

AlarmBar::AlarmBar(const Situation& situation, QWidget* parent) : UnsupervisedBar(parent) {
    const auto show = [this, &situation] { ShowLost(situation.GetUnsupervised()); };
    connect(&situation, &Situation::Looked, this, show);
    show();
}
