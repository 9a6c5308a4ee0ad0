// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

#include <vector>

class QTableView;
class QWidget;

/// Hides columns of a table, the least important first, while the others would not have room beside them, so
/// that nobody has to scroll sideways; where that is not enough, the first one is narrower. All is back once
/// there is room. The last one that is seen is stretched. GUI thread.
class ColumnFit : public QObject {
    Q_OBJECT

  public:
    /// \a view, which has its model, owns this. \a leastImportant are those that may be hidden, in that
    /// order.
    ColumnFit(QTableView& view, std::vector<int> leastImportant);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Fit();
    static bool IsAnotherWidth(const QEvent& event);
    int WidthNeeded() const;
    void NarrowLast();

    QTableView& m_view;
    QWidget* const m_viewport;
    std::vector<int> m_leastImportant;
    int m_narrowed = -1;  ///< the column that is, or none
    int m_widthBefore = 0;
    bool m_isFitting = false;
};
