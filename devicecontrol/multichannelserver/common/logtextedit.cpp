// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/logtextedit.h>

#include <devicecontrol/multichannelserver/common/logmarkup.h>

#include <QtGui/QImage>
#include <QtGui/QTextBlockFormat>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtWidgets/QScrollBar>

LogTextEdit::LogTextEdit(QWidget* parent) : QTextEdit(parent) {
    setUndoRedoEnabled(false);  // nobody takes a message back, and what could be would pile up
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
}

void LogTextEdit::AppendMessage(const QString& message) {
    if (message.size() > MaxLineLength) {
        const int length = message.at(MaxLineLength).isLowSurrogate() ? MaxLineLength - 1 : MaxLineLength;
        AppendPlainText(message.left(length) + tr("... [cut, %1 characters in all]").arg(message.size()));
    } else if (Qt::mightBeRichText(message) && !logmarkup::IsHarmless(message)) {
        AppendPlainText(message);
    } else {
        append(message);
    }
}

// As append() does it, but for its look at what the text might be.
void LogTextEdit::AppendPlainText(const QString& text) {
    QScrollBar* const bar = verticalScrollBar();
    const bool isAtEnd = bar->value() >= bar->maximum();
    QTextCursor end(document());
    end.beginEditBlock();
    end.movePosition(QTextCursor::End);
    if (!document()->isEmpty()) end.insertBlock(QTextBlockFormat(), QTextCharFormat());
    end.insertText(text, QTextCharFormat());
    end.endEditBlock();
    if (isAtEnd) bar->setValue(bar->maximum());
}

// A null answer would let the document look for the file itself.
QVariant LogTextEdit::loadResource(int type, const QUrl& /*name*/) {
    if (type != QTextDocument::ImageResource) return QByteArray("");
    QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    return blank;
}
