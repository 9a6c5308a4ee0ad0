// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QCache>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QRegion>
#include <QtGui/QStaticText>
#include <QtWidgets/QStyledItemDelegate>

#include <optional>

/// Draws cells of one line of plain text that are the same over and over: what their letters look like is
/// worked out once per text and width. Cells in which more is to be seen, such as chosen ones, are left to
/// the style. GUI thread.
class EventsDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    explicit EventsDelegate(QObject* parent = nullptr);

    /// Until EndDrawing() cells outside of \a region are left as they are.
    void BeginDrawing(const QRegion& region) { m_region = region; }
    void EndDrawing() { m_region.reset(); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    const QStaticText& TextFor(const QString& text, int width, const QFont& font) const;

    std::optional<QRegion> m_region;  ///< none: all is drawn
    mutable QFont m_font;             ///< of the texts that are kept
    mutable QCache<QPair<QString, int>, QStaticText> m_texts;
};
