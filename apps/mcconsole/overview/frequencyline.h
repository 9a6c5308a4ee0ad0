// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/overview/drawnmark.h>
#include <apps/mcconsole/overview/frequencybands.h>
#include <apps/mcconsole/overview/frequencymark.h>

#include <qwt_plot.h>

#include <QtCore/QPoint>

#include <memory>
#include <optional>
#include <vector>

/// Who is where on the line of all frequencies. The wheel zooms around the pointer, dragging moves, Home
/// shows all; a click is somebody's wish for a frequency. GUI thread.
class FrequencyLine : public QwtPlot {
    Q_OBJECT

  public:
    explicit FrequencyLine(QWidget* parent = nullptr);
    ~FrequencyLine() override;

    /// In the order of their importance: where labels do not all fit, the first ones are seen.
    void ShowMarks(std::vector<FrequencyMark> marks);
    /// What lies behind the marks.
    void ShowBands(std::vector<FrequencyBand> bands);
    /// Whether what is shown is only what was last known.
    void ShowStale(bool isStale);
    /// All that there is, from now on also what comes.
    void ShowAll();
    /// \a factor is how much of what is seen is seen then, around \a mhz.
    void Zoom(double factor, double mhz);

    void replot() override;
    /// What is said of whatever is at \a position of the canvas; empty if nothing is.
    QString DetailAt(const QPoint& position) const;
    /// The pixel of the canvas at which \a hz is.
    double PixelOf(double hz) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// A click asks for \a hz.
    void Chosen(double hz);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowOther();
    void PlaceLabels();
    void ShowColours();
    void ShowFocus();
    void Fit();
    void SetRange(double lowest, double highest);
    void Move(double share);
    const FrequencyMark* NearestTo(int x) const;
    double FrequencyAt(int x) const;
    QString Summary() const;

    std::vector<FrequencyMark> m_marks;
    std::vector<std::unique_ptr<DrawnMark>> m_drawn;
    FrequencyBands m_bands;
    bool m_showsAll = true;
    bool m_isStale = false;
    std::optional<QPoint> m_pressed;  ///< where, while a button is down
};
