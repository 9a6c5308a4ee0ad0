// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/logtextedit.h>

#include <devicecontrol/multichannelserver/common/log/layoutcost.h>
#include <devicecontrol/multichannelserver/common/log/markuptext.h>
#include <devicecontrol/multichannelserver/common/log/readingcost.h>
#include <devicecontrol/multichannelserver/common/log/textcost.h>

#include <QtCore/QTimerEvent>
#include <QtGui/QImage>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QTextBlockFormat>
#include <QtGui/QTextDocument>
#include <QtWidgets/QScrollBar>

#include <limits>
#include <utility>

namespace {

// ns: a message costs no more than the sum.
constexpr qint64 MostReading = 75000000;
constexpr qint64 MostLayout = 105000000;
// A cut is the last resort: it is not made within the first 16 KiB.
constexpr int LeastBytes = 16384;
// ns for what is laid out in one frame, if it is more than one message.
constexpr qint64 MostInFrame = 10000000;
constexpr int ShortText = 256;           // characters: nothing is expensive about so few
constexpr qint64 ShortTextCost = 60000;  // ns
// Pixels: of more than 8,388,607 a document does not find the end any more.
constexpr double MostScrolledHeight = 4000000.0;

/// The first \a length characters of \a text, or one less where that would be half of one.
QString Beginning(const QString& text, int length) {
    return text.left(length < text.size() && text.at(length).isLowSurrogate() ? length - 1 : length);
}

qint64 CostOf(const QTextBlock& block) {
    return block.length() <= ShortText ? ShortTextCost : textcost::Of(block.text());
}

}  // namespace

LogTextEdit::LogTextEdit(QWidget* parent) : QTextEdit(parent), m_longLines(*this) {
    setUndoRedoEnabled(false);  // nobody takes a message back, and what could be would pile up
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
}

void LogTextEdit::AppendMessage(const QString& message) {
    OpenFrame();
    const QString text = Beginning(message, MaxLength);
    const bool isAll = Qt::mightBeRichText(text) ? AppendMarkup(text) : AppendPlain(text);
    if (!isAll || text.size() < message.size()) AppendNote(message.size());
}

bool LogTextEdit::AppendPlain(const QString& text) {
    const int length = textcost::LengthWithin(text, MostReading + MostLayout, LeastBytes);
    const QString shown = text.left(length);
    // It takes over how the paragraph before it is laid out: the lines may be far apart.
    const bool isUsual = shown.size() <= ShortText || textCursor().blockFormat() == QTextBlockFormat();
    constexpr qint64 anyTime = std::numeric_limits<qint64>::max();
    if (isUsual)
        append(shown);
    else if (!AppendChecked(shown, anyTime))
        return AppendAsText(text);
    return length == text.size();
}

bool LogTextEdit::AppendMarkup(const QString& html) {
    if (ReadingCost(html, MostReading).Get() > MostReading) return AppendAsText(markuptext::Of(html));
    QString text;
    return AppendChecked(html, MostLayout, &text) || AppendAsText(text);
}

/// Adds \a message, unless that would be out of proportion or take longer than \a budget; then \a text
/// becomes what people would read of it.
bool LogTextEdit::AppendChecked(const QString& message, qint64 budget, QString* text) {
    const bool isFirst = document()->isEmpty();
    const int firstBlock = isFirst ? 0 : document()->blockCount();
    const int end = isFirst ? 0 : document()->characterCount() - 1;
    append(message);
    const LayoutCost cost(*document(), firstBlock);
    if (!cost.IsInProportion() || cost.Get() > budget) {
        const QString read = TakeBackFrom(end);
        if (text != nullptr) *text = read;
        return false;
    }
    // While the frame is open, the document does not know that it has tables.
    if (cost.HasFrames()) CloseFrame(firstBlock);
    return true;
}

/// Adds what markup has become, without its formats and those of what was before.
bool LogTextEdit::AppendAsText(const QString& text) {
    const int length = textcost::LengthWithin(text, MostLayout, LeastBytes);
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    if (!document()->isEmpty()) end.insertBlock();
    end.setBlockFormat(QTextBlockFormat());
    end.setBlockCharFormat(QTextCharFormat());
    end.insertText(text.left(length), QTextCharFormat());
    return length == text.size();
}

void LogTextEdit::AppendNote(int length) {
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(tr("... [cut, %1 characters in all]").arg(length), QTextCharFormat());
}

/// Removes what was added from \a position on. \return its text, as it is read and saved.
QString LogTextEdit::TakeBackFrom(int position) {
    QTextCursor added(document());
    added.setPosition(position);
    added.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    QString text = added.selectedText();
    added.removeSelectedText();
    constexpr ushort beginOfFrame = 0xfdd0;  // as a document marks tables and cells
    constexpr ushort endOfFrame = 0xfdd1;
    for (const ushort separator : {ushort(QChar::ParagraphSeparator), beginOfFrame, endOfFrame})
        text.replace(QChar(separator), QLatin1Char('\n'));
    if (position > 0) text.remove(0, 1);  // what parted it from the message before
    return text;
}

void LogTextEdit::Clear() {
    if (!m_frame.isNull()) {
        // Nothing of it is laid out.
        m_frame.select(QTextCursor::Document);
        m_frame.removeSelectedText();
        std::exchange(m_frame, QTextCursor()).endEditBlock();
    }
    m_timer.stop();
    m_longLines.Clear();
    m_waiting = 0;
    clear();
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void LogTextEdit::OpenFrame() {
    if (!m_frame.isNull()) return;
    if (!m_timer.isActive()) {
        m_timer.start(FrameTime, Qt::PreciseTimer, this);
        m_waiting = document()->isEmpty() ? 0 : document()->blockCount();
    }
    m_frame = QTextCursor(document());
    m_frame.beginEditBlock();
}

void LogTextEdit::Flush() {
    if (!m_frame.isNull()) CloseFrame(std::numeric_limits<int>::max());
}

/// The paragraphs from number \a firstInTables on may stand in tables.
void LogTextEdit::CloseFrame(int firstInTables) {
    QScrollBar& bar = *verticalScrollBar();
    const bool isAtEnd = bar.value() >= bar.maximum();  // who reads further up is not disturbed
    const int first = m_waiting;
    const Batch batch = RevealSome(firstInTables);
    std::exchange(m_frame, QTextCursor()).endEditBlock();
    if (batch.hiddenLength > 0) document()->markContentsDirty(batch.hiddenFrom, batch.hiddenLength);
    for (const QTextBlock& block : batch.longBlocks)
        if (!IsInTable(block)) m_longLines.Add(block);
    // Were it to come later, the width would change, and all of them would be laid out once more.
    if (!batch.longBlocks.empty()) setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    if (bar.maximum() > MostScrolledHeight) HideBefore(first);
    if (isAtEnd) bar.setValue(bar.maximum());
    if (m_waiting == document()->blockCount()) m_timer.stop();
}

/// Takes as many of the paragraphs that wait as there is time for, at least one, and hides the others.
LogTextEdit::Batch LogTextEdit::RevealSome(int firstInTables) {
    Batch batch;
    qint64 cost = 0;
    QTextBlock block = document()->findBlockByNumber(m_waiting);
    batch.hiddenFrom = block.position();
    for (const int first = m_waiting; block.isValid(); block = block.next()) {
        cost += CostOf(block);
        if (cost > MostInFrame && m_waiting > first) break;
        if (!block.isVisible()) batch.hiddenLength = block.position() + block.length() - batch.hiddenFrom;
        block.setVisible(true);
        if (LongLines::IsLong(block)) batch.longBlocks.push_back(block);
        m_waiting = block.blockNumber() + 1;
    }
    for (const QTextBlock& longBlock : batch.longBlocks)
        LongLines::Prepare(longBlock);
    // A table without its cells would be drawn as one.
    for (; block.isValid(); block = block.next())
        block.setVisible(block.blockNumber() >= firstInTables || IsInTable(block));
    return batch;
}

bool LogTextEdit::IsInTable(const QTextBlock& block) const {
    return document()->frameAt(block.position()) != document()->rootFrame();
}

/// A document that is too high cannot be shown at all: what is oldest remains in it, and is not shown any
/// more.
void LogTextEdit::HideBefore(int number) {
    const QTextBlock end = document()->findBlockByNumber(number);
    for (QTextBlock block = document()->begin(); block.isValid() && block != end; block = block.next())
        block.setVisible(false);
    document()->markContentsDirty(0, end.isValid() ? end.position() : document()->characterCount());
}

bool LogTextEdit::event(QEvent* event) {
    if (event->type() != QEvent::Timer) Flush();
    return QTextEdit::event(event);
}

bool LogTextEdit::viewportEvent(QEvent* event) {
    Flush();
    return QTextEdit::viewportEvent(event);
}

void LogTextEdit::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId()) {
        Flush();
        return QTextEdit::timerEvent(event);
    }
    OpenFrame();  // for those that wait since an earlier one
    Flush();
}

void LogTextEdit::paintEvent(QPaintEvent* event) {
    std::vector<QTextBlock> longBlocks = m_longLines.FindIn(event->rect());
    for (QTextBlock& block : longBlocks)
        block.setVisible(false);  // so that it is not drawn
    QTextEdit::paintEvent(event);
    if (longBlocks.empty()) return;
    QPainter painter(viewport());
    for (QTextBlock& block : longBlocks) {
        block.setVisible(true);
        m_longLines.Draw(painter, block, event->rect());
    }
}

// A null answer would let the document look for the file itself.
QVariant LogTextEdit::loadResource(int type, const QUrl& /*name*/) {
    if (type != QTextDocument::ImageResource) return QByteArray("");
    QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    return blank;
}
