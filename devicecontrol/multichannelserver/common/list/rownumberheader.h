// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QHeaderView>

#include <functional>

/// The vertical header of a table whose model has nothing to say for it: shows the number of each row, from 1
/// on, as the header of a table does whose model answers with Qt's own row numbers.
///
/// Of rows that go one by one, Qt's header looks at all others for each. So rows that stand side by side are
/// gathered while more are about to go, and leave the header together: at the last of them, or when events
/// are handled before.
class RowNumberHeader final : public QHeaderView {
    Q_OBJECT

  public:
    /// \a willMoreGo tells, while the model tells of rows that went, whether it goes on to tell of more.
    RowNumberHeader(std::function<bool()> willMoreGo, QWidget* parent);
    ~RowNumberHeader() override;

    void setModel(QAbstractItemModel* model) override;
    void reset() override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int row) const override;
    QSize sectionSizeFromContents(int row) const override;

  private:
    void OnRowsRemoved(const QModelIndex& parent, int first, int last);
    void PassOnGone();

    std::function<bool()> m_willMoreGo;
    int m_firstGone = 0;
    int m_gone = 0;  ///< so many rows that the model has no more, and the header still has
};
