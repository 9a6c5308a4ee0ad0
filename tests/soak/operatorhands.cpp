// SPDX-License-Identifier: Apache-2.0
#include <tests/soak/operatorhands.h>

#include <tests/soak/plant.h>
#include <tests/soak/witness.h>
#include <tests/soak/words.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <platform/widgets/standardnotification.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTreeWidget>

#include <algorithm>
#include <vector>

namespace soak {

namespace {

template <class W>
W* Child(QWidget* parent, const char* name) {
    W* const child = parent->findChild<W*>(QLatin1String(name));
    if (child == nullptr) qFatal("there is no %s", name);
    return child;
}

std::vector<StandardNotification*> Warnings() {
    std::vector<StandardNotification*> warnings;
    for (QWidget* const widget : QApplication::topLevelWidgets())
        if (auto* const warning = qobject_cast<StandardNotification*>(widget))
            if (warning->isVisible()) warnings.push_back(warning);
    return warnings;
}

}  // namespace

OperatorHands::OperatorHands(const OnError& onError)
    : m_onError(onError),
      m_display(std::make_unique<GTSDisplay>()),
      m_rows(Child<QTreeWidget>(m_display.get(), "dataModules")) {
    m_display->show();
    Watch();
}

OperatorHands::~OperatorHands() {
    CloseWarnings();
}

void OperatorHands::Leave() {
    m_rows = nullptr;
    m_display.reset();
}

/// Listens to the rows that are new.
void OperatorHands::Watch() {
    for (int row = 0; row < CountRows(); ++row) {
        auto* const module = dynamic_cast<DataModule*>(m_rows->topLevelItem(row));
        if (module->property("isWatched").toBool()) continue;
        module->setProperty("isWatched", true);
        QObject::connect(module, &DataModule::SignalError, m_display.get(),
                         [this](const QString&, const QString& address, int, const QString& text) {
                             m_onError(Plant::ModuleAt(address), text);
                         });
    }
}

int OperatorHands::CountRows() const {
    return m_rows != nullptr ? m_rows->topLevelItemCount() : 0;
}

DataModule* OperatorHands::Find(int module) const {
    for (int row = 0; row < CountRows(); ++row)
        if (m_rows->topLevelItem(row)->text(DataModule::AddressColumn) == Plant::AddressOf(module))
            return dynamic_cast<DataModule*>(m_rows->topLevelItem(row));
    return nullptr;
}

QString OperatorHands::Status(int module) const {
    const DataModule* const found = Find(module);
    return found != nullptr ? found->text(DataModule::StatusColumn) : QString();
}

void OperatorHands::ChooseConnection(int module) {
    if (m_isBusy) return;
    if (const DataModule* const found = Find(module))
        Choose(module, found->IsConnected() ? QStringLiteral("Disconnect") : QStringLiteral("Connect"));
}

void OperatorHands::Choose(int module, const QString& text) {
    DataModule* const row = Find(module);
    if (row == nullptr) return;
    m_rows->scrollToItem(row);
    const QPoint position = m_rows->visualItemRect(row).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, position);
    QApplication::sendEvent(m_rows->viewport(), &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) qFatal("no menu opens");
    const QList<QAction*> actions = menu->actions();
    const auto found = std::find_if(actions.begin(), actions.end(),
                                    [&](const QAction* action) { return action->text() == text; });
    if (found == actions.end()) qFatal("the menu has no %s", qPrintable(text));
    menu->close();
    // A dialog that opens is timed by itself.
    if (text == QLatin1String("Edit"))
        (*found)->trigger();
    else
        Time([&] { (*found)->trigger(); });
}

void OperatorHands::Edit(int module, int pollInterval) {
    if (m_isBusy || Find(module) == nullptr) return;
    WithDialog([=] { Choose(module, QStringLiteral("Edit")); },
               [=](QWidget& dialog) {
                   Child<QSpinBox>(&dialog, "pollInterval")->setValue(pollInterval);
                   Click(&dialog, "ok");
               });
}

void OperatorHands::Delete(int module) {
    if (!m_isBusy) Choose(module, QStringLiteral("Delete"));
}

void OperatorHands::Add(int module, int pollInterval) {
    if (m_isBusy || Find(module) != nullptr) return;
    WithDialog([this] { Child<QPushButton>(m_display.get(), "addModule")->click(); },
               [=](QWidget& dialog) {
                   Watch();
                   Child<QLineEdit>(&dialog, "address")->setText(Plant::AddressOf(module));
                   Child<QSpinBox>(&dialog, "pollInterval")->setValue(pollInterval);
                   Click(&dialog, "ok");
               });
}

void OperatorHands::AssignAll() {
    if (m_isBusy || CountRows() == 0) return;
    WithDialog([this] { Child<QPushButton>(m_display.get(), "assignInputs")->click(); },
               [this](QWidget& dialog) {
                   const auto* const table = Child<QTableWidget>(&dialog, "assignments");
                   for (int row = 0; row < CountRows(); ++row) {
                       const int module =
                           Plant::ModuleAt(m_rows->topLevelItem(row)->text(DataModule::AddressColumn));
                       for (int i = 0; i < words::Inputs; ++i)
                           table->item(row, i)->setText(
                               QString::number(Witness::FrequencyOf(module, i) * 1e-6, 'f', 3));
                   }
                   Click(&dialog, "ok");
               });
}

/// Opens a dialog, which waits for \a act to end it.
void OperatorHands::WithDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& act) {
    QTimer::singleShot(0, m_display.get(), [&] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) qFatal("no dialog opens");
        act(*dialog);
    });
    m_isBusy = true;
    open();
    m_isBusy = false;
}

void OperatorHands::Click(QWidget* dialog, const char* button) {
    Time([&] { Child<QPushButton>(dialog, button)->click(); });
}

void OperatorHands::Time(const std::function<void()>& action) {
    QElapsedTimer time;
    time.start();
    action();
    ++m_actions;
    m_longestMs = std::max(m_longestMs, static_cast<double>(time.nsecsElapsed()) * 1e-6);
}

int OperatorHands::CountWarnings() {
    return static_cast<int>(Warnings().size());
}

int OperatorHands::CloseWarnings() {
    const std::vector<StandardNotification*> warnings = Warnings();
    for (StandardNotification* const warning : warnings)
        warning->close();
    return static_cast<int>(warnings.size());
}

}  // namespace soak
