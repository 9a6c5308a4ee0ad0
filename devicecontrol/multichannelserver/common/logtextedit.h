// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTextEdit>

/// Shows log messages, a paragraph each, and stays fast whatever they hold. Loads nothing from outside.
class LogTextEdit : public QTextEdit {
    Q_OBJECT

  public:
    /// Characters of a message that are shown. A window full of such lines is drawn in 8 ms (Latin letters)
    /// to 70 ms (letters that are composed); a message of a megabyte would take a second.
    static constexpr int MaxLineLength = 2000;

    explicit LogTextEdit(QWidget* parent = nullptr);

    /// Adds \a message at the end: plain text, or HTML if it looks like it. A long message is cut, and says
    /// so; HTML that might be costly to show, or asks for something from outside, is shown as its source.
    void AppendMessage(const QString& message);

    /// An empty picture or nothing, whatever is asked for.
    QVariant loadResource(int type, const QUrl& name) override;

  private:
    void AppendPlainText(const QString& text);
};
