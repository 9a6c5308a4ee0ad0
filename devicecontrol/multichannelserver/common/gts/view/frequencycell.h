// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTableWidgetItem>

#include <utility>

/// A frequency in a table, as text. Knows whether somebody has set the text since it was taken over last,
/// also to what it was before: what is shown may be less than what is assigned.
class FrequencyCell final : public QTableWidgetItem {
  public:
    explicit FrequencyCell(const QString& text) : QTableWidgetItem(text) {}

    void setData(int role, const QVariant& value) override {
        if (role == Qt::EditRole || role == Qt::DisplayRole) m_isTouched = true;
        QTableWidgetItem::setData(role, value);
    }
    bool IsTouched() const { return m_isTouched; }
    void SetTakenOver() { m_isTouched = false; }

  private:
    bool m_isTouched = false;
};
