// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

class LogTextEdit;
class QHBoxLayout;

/// Shows log messages as they arrive at a text value of the tree. When there are more lines than the limit,
/// all of them go (fixed: clears-all-lines). GUI thread only.
class MCS_COMMON_EXPORT MCSLogDisplay : public QWidget, public IObserver {  // fixed: virtual-order
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)
    Q_PROPERTY(int maxMessages READ GetMaxMessages WRITE SetMaxMessages)

  public:
    /// \a name, the object name, is "MCSLogDisplay" if null.
    explicit MCSLogDisplay(QWidget* parent = nullptr, const char* name = nullptr,
                           Qt::WindowFlags flags = Qt::WindowFlags());
    ~MCSLogDisplay() override;

    /// Follows the text at \a path, which is shown at once if there is one; empty: none. The messages so far
    /// stay. \return whether a text is followed; one that is not there yet is not waited for.
    virtual bool SetLogMessage_ValuePath(const QString& path);
    /// A limit below 1 changes nothing.
    virtual void SetMaxMessages(int max);

  Q_SIGNALS:
    /// The display was shown or hidden.
    void SignalVisible(bool bVisible);

  public Q_SLOTS:
    virtual void SlotClear();  ///< Forgets the messages that are shown.
    /// Asks for a file and saves the messages there.
    virtual void SlotSaveLog();
    /// Writes the messages as plain text, whatever the name says; a file that cannot be written is left
    /// alone.
    virtual void SlotSaveLogToFile(QString sFileName);

  protected:
    virtual void Build();

  public:
    void Update(Observable* source, TChangeCode code) override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    // As forms have it, in UTF-8, which nobody translates: what comes to the path later is shown then.
    QByteArray GetValuePath() const;
    void SetValuePath(const QByteArray& path);
    int GetMaxMessages() const { return m_maxMessages; }

    void BuildButtons(QHBoxLayout& layout);
    void OnNewLogMessageArrived(const QString& text);
    void ClearExceedingLines();
    bool MayWrite(const QString& fileName);

    Observation<values::Value<QString>> m_pLogMessage;
    int m_maxMessages = 1000;
    LogTextEdit* m_textEdit = nullptr;
};
