// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTabWidget>

/// The pages of the console. All tabs are seen at once, however many there are: what has no room for its
/// title has the beginning of it, and the whole in its tool tip. GUI thread.
class PageTabs : public QTabWidget {
    Q_OBJECT

  public:
    explicit PageTabs(QWidget* parent = nullptr);
    ~PageTabs() override;
};
