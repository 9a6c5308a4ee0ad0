// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/log/longlines.h>

#include <QtCore/QBasicTimer>
#include <QtGui/QTextCursor>
#include <QtWidgets/QTextEdit>

/// Shows log messages, a paragraph each, and stays fast whatever they hold and however many come. Loads
/// nothing from outside.
///
/// A message is in the document at once. It is laid out and drawn with those that come in the same frame:
/// until then a block of edits stays open, in which the document changes and its layout does not know of it.
/// Whatever needs the layout ends the frame: every event that the text area gets, and Flush().
///
/// What would take too long even so is limited, in this order: formats that explode are left out, while the
/// text stays; of a long line only what is in sight is drawn; of many long messages some are laid out in the
/// next frames; and a message of more than MaxLength characters is cut, with a note of how long it was.
class LogTextEdit : public QTextEdit {
    Q_OBJECT

  public:
    static constexpr int MaxLength = 65536;  ///< characters of a message that are shown
    static constexpr int FrameTime = 33;     ///< ms for which a frame stays open at most

    explicit LogTextEdit(QWidget* parent = nullptr);

    /// Adds \a message at the end: plain text, or HTML if it looks like it.
    void AppendMessage(const QString& message);
    /// Removes everything. What was not laid out yet never is.
    void Clear();
    /// Lays out what has come: at least the oldest message that waits for it.
    void Flush();

    /// An empty picture or nothing, whatever is asked for.
    QVariant loadResource(int type, const QUrl& name) override;

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// What is laid out in a frame.
    struct Batch {
        std::vector<QTextBlock> longBlocks;
        int hiddenFrom = 0;  ///< position of those that were hidden
        int hiddenLength = 0;
    };

    void OpenFrame();
    void CloseFrame(int firstInTables);
    bool AppendPlain(const QString& text);
    bool AppendMarkup(const QString& html);
    bool AppendChecked(const QString& message, qint64 budget, QString* text = nullptr);
    bool AppendAsText(const QString& text);
    void AppendNote(int length);
    QString TakeBackFrom(int position);
    Batch RevealSome(int firstInTables);
    bool IsInTable(const QTextBlock& block) const;
    void HideBefore(int number);

    QTextCursor m_frame;  ///< null while none is open
    QBasicTimer m_timer;  ///< runs while something waits
    LongLines m_longLines;
    int m_waiting = 0;  ///< number of the first paragraph that is not laid out yet
};
