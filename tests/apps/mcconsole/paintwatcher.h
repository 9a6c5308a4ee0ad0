// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QPaintEvent>
#include <QtGui/QRegion>
#include <QtWidgets/QWidget>

/// Which rectangles of a widget are painted.
class PaintWatcher : public QObject {
  public:
    explicit PaintWatcher(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        const QRegion& region = static_cast<QPaintEvent*>(event)->region();
        painted += region;
        ++times;
        for (const QRect& rect : region)
            heights += rect.height();
        return false;
    }

    QRegion painted;
    int times = 0;
    int heights = 0;  // of all rectangles that were painted, one after the other
};
