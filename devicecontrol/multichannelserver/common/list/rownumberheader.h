// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QHeaderView>

/// The vertical header of a table whose model has nothing to say for it: shows the number of each row, from 1
/// on, as the header of a table does whose model answers with Qt's own row numbers.
class RowNumberHeader final : public QHeaderView {
    Q_OBJECT

  public:
    explicit RowNumberHeader(QWidget* parent);
    ~RowNumberHeader() override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int row) const override;
    QSize sectionSizeFromContents(int row) const override;
};
