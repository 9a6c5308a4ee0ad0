// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QLabel>

/// A label for one line of plain text that changes often. It asks its layout for room only when a text needs
/// more of it, or much less: so a column of numbers does not jump with every digit, and a window of a
/// thousand labels is not laid out anew for each. What does not fit is marked by an ellipsis. GUI thread
/// only.
class MCS_WIDGETS_EXPORT SteadyLabel : public QLabel {
    Q_OBJECT

  public:
    /// Empty.
    explicit SteadyLabel(QWidget* parent = nullptr, Qt::WindowFlags windowFlags = Qt::WindowFlags());
    ~SteadyLabel() override;

    /// Shows \a text, and tells assistive technology.
    void ShowText(const QString& text);
    /// Whether all of the text can be read.
    bool Fits() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Measure();
    QSize Borders() const;
    QSize WithRoom(const QSize& hint, int maxWidth) const;

    int m_needed = 0;  ///< pixels, for the text as it is
    int m_room = 0;    ///< pixels, that the layout was asked for
};
