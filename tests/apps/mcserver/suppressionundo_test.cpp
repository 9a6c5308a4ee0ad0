// SPDX-License-Identifier: Apache-2.0
// What an operator does to a data module by its menu, and what is offered to undo it.
#include <apps/mcserver/suppression/suppressionundo.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QContextMenuEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTreeWidget>

#include <memory>

namespace {

class AnUndoOfModules : public testing::Test {
  protected:
    AnUndoOfModules() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
        m_module.Start();
        qputenv("MCS_MODBUS_PORT", QByteArray::number(m_module.Port()));
        m_display = std::make_unique<GTSDisplay>();
        m_display->show();
        m_display->AddModule(Settings(0));
        m_display->AddModule(Settings(1));
        m_undo = std::make_unique<SuppressionUndo>(*m_display, FrequencyRange{0.3e6, 3000e6});
        QObject::connect(m_undo.get(), &SuppressionUndo::Acted, m_display.get(),
                         [this](const QString& what, const std::function<void()>& undo) {
                             ++m_offers;
                             m_what = what;
                             m_takeBack = undo;
                         });
    }
    ~AnUndoOfModules() override {
        Close();
        // The warning of a module that was lost is nobody's, and stays until somebody closes it.
        for (QWidget* const widget : QApplication::topLevelWidgets())
            delete qobject_cast<QMessageBox*>(widget);
        qunsetenv("MCS_MODBUS_PORT");
        CfgCenter::Instance().SetStorePath(QString());
    }
    void Close() {
        m_undo.reset();
        m_display.reset();
    }

    static ModuleSettings Settings(int index) {
        ModuleSettings settings{index,
                                QStringLiteral("ADAM-6051"),
                                QStringLiteral("127.0.0.1"),
                                PollInterval(10),
                                std::vector<double>(12),
                                std::vector<QString>(12),
                                QString()};
        settings.label = QStringLiteral("Mast %1").arg(index);
        settings.labels[3] = QStringLiteral("Tower 1");
        settings.frequencies[3] = 121.5e6 + index * 1e6;
        return settings;
    }
    QTreeWidget& Rows() const { return *m_display->findChild<QTreeWidget*>(); }
    QString Status(int row) const { return Rows().topLevelItem(row)->text(4); }
    bool WaitForStatus(int row, const char* status) const {
        return WaitUntil([&] { return Status(row) == QLatin1String(status); });
    }
    void Choose(int row, const char* text) {
        const QPoint position = Rows().visualItemRect(Rows().topLevelItem(row)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, Rows().viewport()->mapToGlobal(position));
        QApplication::sendEvent(Rows().viewport(), &event);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* const action : menu->actions())
            if (action->text() == QLatin1String(text))
                return QTest::mouseClick(menu, Qt::LeftButton, Qt::KeyboardModifiers(),
                                         menu->actionGeometry(action).center());
        FAIL() << "no " << text << " in the menu";
    }

    QTemporaryDir m_directory;
    ModuleProcess m_module;
    values::Tree m_tree;
    std::unique_ptr<GTSDisplay> m_display;
    std::unique_ptr<SuppressionUndo> m_undo;
    int m_offers = 0;
    QString m_what;
    std::function<void()> m_takeBack;
};

TEST_F(AnUndoOfModules, AddsADeletedModuleAgainWithItsAssignments) {
    Choose(0, "Delete");
    ASSERT_TRUE(WaitUntil([this] { return m_offers == 1; }));
    EXPECT_EQ(m_what,
              QStringLiteral("The data module Mast 0 at 127.0.0.1 is deleted. Not supervised any more "
                             "(MHz): 121.500."));
    ASSERT_EQ(Rows().topLevelItemCount(), 1);
    m_takeBack();
    ASSERT_EQ(Rows().topLevelItemCount(), 2);
    EXPECT_EQ(m_display->GetPlant().GetSettings(), (std::vector<ModuleSettings>{Settings(1), Settings(0)}));
    EXPECT_TRUE(WaitForStatus(1, "Connected"));
    EXPECT_EQ(m_offers, 1);  // one that was just added was disconnected by nobody
}

TEST_F(AnUndoOfModules, AddsItWithAnotherIndexIfItsOwnIsTakenByNow) {
    Choose(0, "Delete");
    ASSERT_TRUE(WaitUntil([this] { return m_offers == 1; }));
    m_display->AddModule(Settings(0));
    m_takeBack();
    EXPECT_EQ(m_display->GetPlant().GetSettings().back().index, 2);
}

TEST_F(AnUndoOfModules, ConnectsADisconnectedModuleAgain) {
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    Choose(0, "Disconnect");
    ASSERT_TRUE(WaitUntil([this] { return m_offers == 1; }));
    EXPECT_EQ(m_what,
              QStringLiteral("The data module Mast 0 at 127.0.0.1 is disconnected. Not supervised any "
                             "more (MHz): 121.500."));
    EXPECT_EQ(Status(0), QStringLiteral("Disconnected"));
    m_takeBack();
    EXPECT_TRUE(WaitForStatus(0, "Connected"));
}

TEST_F(AnUndoOfModules, TakesBackWhatAnEditorHasChanged) {
    SuppressionPlant& plant = m_display->GetPlant();
    plant.SetFrequency(QStringLiteral("ADAM-6051-0"), 4, 5e12);  // what never blanks is no loss below
    m_undo->TakeAsKnown();
    const std::vector<ModuleSettings> before = plant.GetSettings();
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    plant.SetAddress(QStringLiteral("ADAM-6051-0"), QStringLiteral("127.0.0.2"));
    plant.SetFrequency(QStringLiteral("ADAM-6051-0"), 3, 0.0);
    plant.SetFrequency(QStringLiteral("ADAM-6051-0"), 4, 0.0);
    ASSERT_TRUE(WaitUntil([this] { return m_offers == 1; }));
    EXPECT_EQ(m_what,
              QStringLiteral("The data module Mast 0 at 127.0.0.2 is changed. Not supervised any more (MHz): "
                             "121.500."));
    m_takeBack();
    EXPECT_EQ(plant.GetSettings(), before);
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    RunTurns(3);
    EXPECT_EQ(m_offers, 1) << "what is undone needs no undo";
}

TEST_F(AnUndoOfModules, OffersNothingOfAModuleThatHasOtherInputsNow) {
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    auto* const module = dynamic_cast<DataModule*>(Rows().topLevelItem(0));
    ASSERT_NE(module, nullptr);
    module->Configure(QStringLiteral("ADAM-6060"), QStringLiteral("127.0.0.1"), PollInterval(10));
    ASSERT_TRUE(WaitUntil([this] { return Rows().topLevelItem(0)->text(1) == QLatin1String("ADAM-6060"); }));
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    RunTurns(3);
    EXPECT_EQ(m_offers, 0);
}

TEST_F(AnUndoOfModules, OffersNothingForWhatIsOfferedElsewhereAlready) {
    m_display->GetPlant().SetFrequency(QStringLiteral("ADAM-6051-0"), 3, 118e6);
    m_undo->TakeAsKnown();
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    RunTurns(3);
    EXPECT_EQ(m_offers, 0);
}

TEST_F(AnUndoOfModules, OffersNothingForAModuleThatIsLost) {
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    ASSERT_TRUE(WaitForStatus(1, "Connected"));
    m_module.Kill();
    ASSERT_TRUE(WaitForStatus(1, "Error"));
    EXPECT_EQ(m_offers, 0);
}

TEST_F(AnUndoOfModules, NamesNoLossOfAFrequencyThatAnotherModuleWatches) {
    m_display->GetPlant().SetFrequency(QStringLiteral("ADAM-6051-1"), 3, 121.5e6);
    m_undo->TakeAsKnown();
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    ASSERT_TRUE(WaitForStatus(1, "Connected"));
    Choose(0, "Disconnect");
    ASSERT_TRUE(WaitUntil([this] { return m_offers == 1; }));
    EXPECT_EQ(m_what, QStringLiteral("The data module Mast 0 at 127.0.0.1 is disconnected."));
}

TEST_F(AnUndoOfModules, OffersNothingWhenTheDisplayGoesOrIsGone) {
    Choose(1, "Delete");
    ASSERT_TRUE(WaitUntil([this] { return m_offers == 1; }));
    const std::function<void()> undo = m_takeBack;
    Close();
    EXPECT_EQ(m_offers, 1);
    undo();
}

}  // namespace
