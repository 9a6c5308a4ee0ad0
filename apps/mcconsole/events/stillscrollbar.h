// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QScrollBar>

/// A scroll bar that is drawn anew only when it would look different. A row more at the end of many moves its
/// slider by less than a pixel, and drawing it costs more than drawing the row. While it stays at its end it
/// is drawn every two seconds at most. GUI thread.
class StillScrollBar : public QScrollBar {
    Q_OBJECT

  public:
    explicit StillScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

  protected:
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Look {
        QRect slider;
        bool isAtBegin = false;
        bool isAtEnd = false;

        bool operator==(const Look& other) const {
            return slider == other.slider && isAtBegin == other.isAtBegin && isAtEnd == other.isAtEnd;
        }
    };

    Look LookOfNow() const;
    void DrawIfDifferent();

    Look m_drawn;
    QElapsedTimer m_sinceDrawn;
    QTimer m_soon;
};
