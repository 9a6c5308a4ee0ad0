// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QTextBlock>

#include <vector>

class QPainter;
class QRect;
class QTextEdit;
class QTextLine;

/// Draws the part that is in sight of paragraphs that are so long that drawing them whole, as a document
/// does, takes many times as long as all the rest of the window. GUI thread only.
class LongLines {
  public:
    /// \a edit outlives this, and lays out its lines without breaking them.
    explicit LongLines(const QTextEdit& edit) : m_edit(edit) {}

    /// Whether a paragraph, which stands in no frame, is to be drawn here: one of many characters, without
    /// decoration.
    static bool IsLong(const QTextBlock& block);

    /// To be called before \a block is laid out: what is found out then is not found out again.
    static void Prepare(QTextBlock block);
    /// To be called once it is laid out.
    void Add(QTextBlock block);
    /// Nothing is there any more.
    void Clear() { m_blocks.clear(); }

    /// Those that are in \a area, in coordinates of the viewport; they are laid out then.
    std::vector<QTextBlock> FindIn(const QRect& area) const;
    /// Draws what of \a block is in \a area.
    void Draw(QPainter& painter, const QTextBlock& block, const QRect& area) const;

  private:
    class Stops;
    /// Of a line, by characters of the paragraph.
    struct Piece {
        int from = 0;
        int to = 0;
        int pivot = 0;     ///< a character of which it is known
        qreal pivotX = 0;  ///< where it stands
    };

    QPoint Offset() const;
    QRectF RectOf(const QTextBlock& block) const;
    void DrawLine(QPainter& painter, const QTextBlock& block, const QTextLine& line, const QPointF& origin,
                  const QRect& area) const;
    Piece FindPiece(const QTextBlock& block, const QTextLine& line, qreal left, qreal right) const;
    static void Measure(QTextBlock block);

    const QTextEdit& m_edit;
    std::vector<QTextBlock> m_blocks;  ///< in the order of the document
};
