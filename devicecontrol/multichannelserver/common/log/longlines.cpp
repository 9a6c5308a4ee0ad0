// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/longlines.h>

#include <devicecontrol/multichannelserver/common/log/textcost.h>

#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>
#include <QtGui/QTextTable>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>

#include <algorithm>
#include <map>

namespace {

constexpr int LongestWhole = 4096;  // characters: drawn in a millisecond
constexpr int MostInSight = 4096;   // characters: more do not fit, unless they lie upon each other
// Characters between two stops. For each of them all runs of the line are looked through.
constexpr int LeastStep = 512;
constexpr int MostLooks = 500000;

/// What of a line is in sight, by numbers of stops.
struct Sight {
    int first = -1;  ///< the first one from which something is in sight
    int begin = 0;   ///< of what is drawn
    int end = 0;
};

Sight FindSight(const std::vector<qreal>& stops, int step, qreal left, qreal right) {
    const int count = static_cast<int>(stops.size());
    Sight sight;
    int last = 0;
    for (int i = 0; i + 1 < count; ++i) {
        const auto ends =
            std::minmax(stops[static_cast<std::size_t>(i)], stops[static_cast<std::size_t>(i) + 1]);
        if (ends.second < left || ends.first > right) continue;
        if (sight.first < 0) sight.first = i;
        last = i + 1;
    }
    sight.begin = qMax(0, sight.first - 1);
    sight.end = qMin(qMin(count - 1, last + 1), sight.begin + qMax(2, MostInSight / step));
    return sight;
}

QVector<QTextLayout::FormatRange> FormatsOf(const QTextBlock& block, int from, int to) {
    QVector<QTextLayout::FormatRange> formats;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
        const QTextFragment fragment = at.fragment();
        const int start = qMax(from, fragment.position() - block.position());
        const int end = qMin(to, fragment.position() - block.position() + fragment.length());
        if (start < end) formats.push_back({start - from, end - start, fragment.charFormat()});
    }
    return formats;
}

/// Where to begin with what is drawn from \a at on: behind a tabulator, so that all others stand where they
/// stood.
int BeginBefore(const QString& text, int at, int startOfLine) {
    const int tab = text.leftRef(at).lastIndexOf(QLatin1Char('\t'));
    int begin = tab >= startOfLine ? tab + 1 : at;
    if (at - begin > MostInSight) begin = at;
    return begin > startOfLine && text.at(begin).isLowSurrogate() ? begin - 1 : begin;
}

/// Whether a line of \a text is long.
bool HasLongLine(const QString& text) {
    int start = 0;
    while (text.size() - start > LongestWhole) {
        const int end = text.indexOf(QChar(QChar::LineSeparator), start);
        if (end < 0 || end - start > LongestWhole) return true;
        start = end + 1;
    }
    return false;
}

QVector<QTextLayout::FormatRange> SelectionOf(const QTextEdit& edit, const QTextBlock& block, int from,
                                              int to) {
    const QTextCursor cursor = edit.textCursor();
    const int start = qMax(from, cursor.selectionStart() - block.position());
    const int end = qMin(to, cursor.selectionEnd() - block.position());
    if (start >= end) return {};
    const QPalette::ColorGroup group = edit.hasFocus() ? QPalette::Active : QPalette::Inactive;
    QTextCharFormat format;
    format.setBackground(edit.palette().brush(group, QPalette::Highlight));
    format.setForeground(edit.palette().brush(group, QPalette::HighlightedText));
    return {{start - from, end - start, format}};
}

}  // namespace

/// Where some characters of the long lines stand, from the origin of the layout.
class LongLines::Stops : public QTextBlockUserData {
  public:
    std::map<int, std::vector<qreal>> ofLines;  ///< by their first characters
    int step = LeastStep;                       ///< characters from one to the next
    QFont font;                                 ///< of the document, with which they were measured
};

bool LongLines::IsLong(const QTextBlock& block) {
    if (block.length() <= LongestWhole || block.textList() != nullptr) return false;
    const QTextBlockFormat format = block.blockFormat();
    return !format.hasProperty(QTextFormat::BackgroundBrush) &&
           !format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth) && HasLongLine(block.text());
}

void LongLines::Prepare(QTextBlock block) {
    block.layout()->setCacheEnabled(true);
}

void LongLines::Add(QTextBlock block) {
    Measure(block);
    m_blocks.push_back(block);
}

void LongLines::Measure(QTextBlock block) {
    QTextLayout* const layout = block.layout();
    auto* const stops = new Stops;  // belongs to the block
    stops->font = block.document()->defaultFont();
    const QString text = block.text();
    const int runs = textcost::CountRuns(text) + static_cast<int>(block.textFormats().size());
    stops->step = qMax(LeastStep, static_cast<int>(qint64(text.size()) * runs / MostLooks));
    for (int i = 0; i < layout->lineCount(); ++i) {
        const QTextLine line = layout->lineAt(i);
        if (line.textLength() <= LongestWhole) continue;
        std::vector<qreal>& ofLine = stops->ofLines[line.textStart()];
        for (int at = 0; at < line.textLength(); at += stops->step)
            ofLine.push_back(line.cursorToX(line.textStart() + at));
        ofLine.push_back(line.cursorToX(line.textStart() + line.textLength()));
    }
    block.setUserData(stops);
    // Gives back what the layout knows of each character: a layout does so when it is drawn, also out of
    // sight.
    layout->setCacheEnabled(false);
    QImage nowhere(1, 1, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&nowhere);
    layout->draw(&painter, QPointF(), {}, QRectF(0, -2, 1, 1));
}

QPoint LongLines::Offset() const {
    const QScrollBar& bar = *m_edit.horizontalScrollBar();
    return QPoint(m_edit.isRightToLeft() ? bar.maximum() - bar.value() : bar.value(),
                  m_edit.verticalScrollBar()->value());
}

/// In coordinates of the viewport.
QRectF LongLines::RectOf(const QTextBlock& block) const {
    return m_edit.document()->documentLayout()->blockBoundingRect(block).translated(-Offset());
}

std::vector<QTextBlock> LongLines::FindIn(const QRect& area) const {
    const auto isAbove = [this](const QTextBlock& block, int y) { return RectOf(block).bottom() < y; };
    std::vector<QTextBlock> found;
    for (auto block = std::lower_bound(m_blocks.begin(), m_blocks.end(), area.top(), isAbove);
         block != m_blocks.end() && RectOf(*block).top() <= area.bottom(); ++block)
        if (block->isVisible()) found.push_back(*block);
    return found;
}

void LongLines::Draw(QPainter& painter, const QTextBlock& block, const QRect& area) const {
    const auto* const stops = static_cast<const Stops*>(block.userData());
    if (stops->font != m_edit.document()->defaultFont()) Measure(block);
    const QPointF origin = RectOf(block).topLeft();
    const QTextLayout& layout = *block.layout();
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.setPen(m_edit.palette().color(QPalette::Text));
    for (int i = 0; i < layout.lineCount(); ++i) {
        const qreal top = origin.y() + layout.lineAt(i).y();
        if (top > area.bottom()) break;
        if (top + layout.lineAt(i).height() >= area.top())
            DrawLine(painter, block, layout.lineAt(i), origin, area);
    }
    painter.restore();
}

/// With as much on either side as changes how letters join.
LongLines::Piece LongLines::FindPiece(const QTextBlock& block, const QTextLine& line, qreal left,
                                      qreal right) const {
    const int start = line.textStart();
    const int end = start + line.textLength();
    const auto* const stops = static_cast<const Stops*>(block.userData());
    const auto found = stops->ofLines.find(start);
    if (found == stops->ofLines.end()) return {start, end, start, line.x()};
    const Sight sight = FindSight(found->second, stops->step, left, right);
    if (sight.first < 0) return Piece();
    Piece piece;
    piece.from = BeginBefore(block.text(), start + sight.begin * stops->step, start);
    piece.to = qMin(start + sight.end * stops->step, end);
    piece.pivot = start + sight.first * stops->step;
    piece.pivotX = found->second[static_cast<std::size_t>(sight.first)];
    return piece;
}

/// Lays out anew what is in sight.
void LongLines::DrawLine(QPainter& painter, const QTextBlock& block, const QTextLine& line,
                         const QPointF& origin, const QRect& area) const {
    const Piece piece = FindPiece(block, line, area.left() - origin.x(), area.right() - origin.x());
    if (piece.from >= piece.to) return;
    const QString text = block.text().mid(piece.from, piece.to - piece.from);
    QTextLayout layout(text, block.charFormat().font(), m_edit.viewport());
    layout.setCacheEnabled(true);
    layout.setFormats(FormatsOf(block, piece.from, piece.to));
    QTextOption option = block.layout()->textOption();
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine shown = layout.createLine();
    shown.setLeadingIncluded(true);
    shown.setLineWidth(QWIDGETSIZE_MAX);
    layout.endLayout();
    const QPointF offset(piece.pivotX - shown.cursorToX(piece.pivot - piece.from),
                         line.y() + line.ascent() - shown.ascent());
    layout.draw(&painter, origin + offset, SelectionOf(m_edit, block, piece.from, piece.to), area);
}
