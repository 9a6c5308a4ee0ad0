// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>

#include <QtCore/QString>

#include <functional>
#include <memory>

class DataModule;
class QTreeWidget;
class StandardNotification;

namespace soak {

/// Works the display of the suppression as an operator does, by its menu, buttons and dialogs. Modules count
/// from 0 and are told apart by their addresses; what is done about one that has no row does nothing.
class OperatorHands {
  public:
    /// \a onError is told of each error, by module.
    using OnError = std::function<void(int module, const QString& text)>;
    OperatorHands(const OnError& onError);
    ~OperatorHands();

    /// Takes the display with all its modules away.
    void Leave();

    /// "Connected", "Disconnected" or "Error"; empty without a row.
    QString Status(int module) const;
    int CountRows() const;

    /// A dialog is open: nothing else can be done.
    bool IsBusy() const { return m_isBusy; }
    /// "Connect" or "Disconnect", whichever the menu offers.
    void ChooseConnection(int module);
    void Edit(int module, int pollInterval);
    void Delete(int module);
    void Add(int module, int pollInterval);
    /// Assigns every input of every module its frequency.
    void AssignAll();

    /// How many warnings are open; closes them.
    static int CloseWarnings();
    static int CountWarnings();
    /// The longest time in ms that one of these held the GUI up.
    double LongestMs() const { return m_longestMs; }
    qint64 Actions() const { return m_actions; }

  private:
    DataModule* Find(int module) const;
    void Watch();
    void Choose(int module, const QString& text);
    void FillEditor(int module, int pollInterval);
    void Click(QWidget* dialog, const char* button);
    void Time(const std::function<void()>& action);
    void WithDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& act);

    OnError m_onError;
    std::unique_ptr<GTSDisplay> m_display;
    QTreeWidget* m_rows;
    bool m_isBusy = false;
    double m_longestMs = 0.0;
    qint64 m_actions = 0;
};

}  // namespace soak
