// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QLineEdit>

/// Takes any text for a frequency. Says what the operator does, and does nothing by itself: neither leaving
/// the field nor a step sends anything. GUI thread.
class FrequencyField : public QLineEdit {
    Q_OBJECT

  public:
    explicit FrequencyField(QWidget* parent = nullptr);

  Q_SIGNALS:
    /// Enter was pressed.
    void Confirmed();
    /// Escape was pressed.
    void TakenBack();
    /// By arrow keys, or the wheel while the field has the focus; down if \a count is negative.
    void Stepped(int count);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    int m_turned = 0;  ///< of the wheel, less than a step, in eighths of a degree
};
